#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `coverage`: what the rules catch of a take-off table, and what they leave to default rules.
class CoverageCommand final : public Command
{
public:
    CoverageCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
