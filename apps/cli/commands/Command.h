#pragma once

#include "cli/reading/Arguments.h"

#include <utility>

namespace cli {

/// What the help texts say about a command and what its command line may hold.
struct CommandInfo
{
    CString name;        ///< the verb
    CString syntax;      ///< what may follow the verb, in one line
    CString summary;     ///< one line for the list of commands
    CString description; ///< what a person needs to know before using it
    int minPositional = 0;
    int maxPositional = 0;
    CArray<Option> options;
    bool needsProject = true;
};

/// One verb of the program. Holds nothing between runs.
class Command
{
public:
    explicit Command(CommandInfo info) : m_info(std::move(info)) {}
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    const CommandInfo& Info() const noexcept { return m_info; }

    /// Does the work. `arguments` fit `Info()`, the option "project" included. Raises `UsageError` when the
    /// values of the command line make no sense, and `Refusal` or an error of the layers below when the work
    /// cannot be done.
    virtual void Run(const Arguments& arguments) const = 0;

private:
    CommandInfo m_info;
};

} // namespace cli
