#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `apply`: the bill of quantities of a take-off table.
class ApplyCommand final : public Command
{
public:
    ApplyCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
