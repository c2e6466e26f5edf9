#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `export`: writes a table of the project's catalogue to a file that `import` takes.
class ExportCommand final : public Command
{
public:
    ExportCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
