#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `cloud`: the configurations that a project's office has published.
class CloudCommand final : public Command
{
public:
    CloudCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
