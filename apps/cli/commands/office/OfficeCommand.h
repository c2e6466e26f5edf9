#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `office`: creates an office on a server, looks at it, brings it to the schema of this program.
class OfficeCommand final : public Command
{
public:
    OfficeCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
