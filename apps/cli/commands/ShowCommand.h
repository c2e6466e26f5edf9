#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `show`: prints the rules of a rule file as tables or as JSON.
class ShowCommand final : public Command
{
public:
    ShowCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
