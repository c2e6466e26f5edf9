#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `refresh`: the module entry by which a host names the rule file in force.
class RefreshCommand final : public Command
{
public:
    RefreshCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
