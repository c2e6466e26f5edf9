#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `ktqdde compare`: what differs between two rule files, rule by rule, and which components that concerns.
class CompareCommand final : public Command
{
public:
    CompareCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
