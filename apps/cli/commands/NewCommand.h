#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `new`: makes a configuration from the template and makes it the current one.
class NewCommand final : public Command
{
public:
    NewCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
