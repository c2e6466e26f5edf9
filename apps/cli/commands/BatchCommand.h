#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `batch`: runs presenter operations that stand as JSON objects one on a line.
class BatchCommand final : public Command
{
public:
    BatchCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
