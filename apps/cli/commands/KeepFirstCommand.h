#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `keep-first`: takes the further elements of specialties that stand twice out of a rule file, which every
/// command that writes refuses.
class KeepFirstCommand final : public Command
{
public:
    KeepFirstCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
