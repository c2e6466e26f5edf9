#pragma once

#include "cli/Command.h"

namespace cli {

/// `catalog`: prints specialties, categories and attributes of the host.
class CatalogCommand final : public Command
{
public:
    CatalogCommand();
    void Run(const Arguments& arguments) const override;
};

} // namespace cli
