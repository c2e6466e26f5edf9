#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `catalog`: prints specialties, categories and attributes of the host.
class CatalogueCommand final : public Command
{
public:
    CatalogueCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
