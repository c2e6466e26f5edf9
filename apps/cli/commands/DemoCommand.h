#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `demo`: shows the whole way of a rule on a sample project.
class DemoCommand final : public Command
{
public:
    DemoCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
