#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `where`: which rules of which configurations give an item.
class WhereCommand final : public Command
{
public:
    WhereCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
