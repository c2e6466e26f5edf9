#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `write-head`: finishes a rule file by head and wrapping.
class WriteHeadCommand final : public Command
{
public:
    WriteHeadCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
