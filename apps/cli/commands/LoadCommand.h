#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `load`: makes a rule file the current configuration.
class LoadCommand final : public Command
{
public:
    LoadCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
