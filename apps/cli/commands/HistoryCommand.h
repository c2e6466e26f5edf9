#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `history`: lists, shows, compares and gives back the dated copies of rule files.
class HistoryCommand final : public Command
{
public:
    HistoryCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
