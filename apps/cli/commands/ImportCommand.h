#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `import`: takes a table of one's own into the project's catalogue.
class ImportCommand final : public Command
{
public:
    ImportCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
