#pragma once

#include "cli/commands/Command.h"

namespace cli {

/// `library`: lists the libraries of a project, and chooses one.
class LibraryCommand final : public Command
{
public:
    LibraryCommand();
    void Run(const Arguments& arguments) const override;

private:
    static CommandInfo Describe();
};

} // namespace cli
