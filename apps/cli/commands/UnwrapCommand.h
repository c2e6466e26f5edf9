#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `unwrap`: takes the rule file out of a wrapped file again.
class UnwrapCommand final : public Command
{
public:
    UnwrapCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
