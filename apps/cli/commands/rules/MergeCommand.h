#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `ktqdde merge`: brings two states of a rule file together that come from one.
class MergeCommand final : public Command
{
public:
    MergeCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
