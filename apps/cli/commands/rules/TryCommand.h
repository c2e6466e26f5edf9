#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `try`: which rule a component gets, what it is priced with, and why.
class TryCommand final : public Command
{
public:
    TryCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
