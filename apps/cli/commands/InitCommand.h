#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `init`: makes a project with its application folder and ini file.
class InitCommand final : public Command
{
public:
    InitCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
