#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `check`: what is wrong with the rules of a configuration.
class CheckCommand final : public Command
{
public:
    CheckCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
