#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `attr-config`: rebuilds the attribute configuration file.
class AttrConfigCommand final : public Command
{
public:
    AttrConfigCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
