#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `save-as`: saves the current configuration under another name, too.
class SaveAsCommand final : public Command
{
public:
    SaveAsCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
