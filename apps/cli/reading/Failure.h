#pragma once

#include "platform/Text.h"

#include <stdexcept>

namespace cli {

/// What the program ends with.
enum ExitStatus {
    Done = 0,
    Refused = 1,    ///< or failed, with the reason on standard error
    WrongUsage = 2, ///< with the usage line on standard error
    InConflict = 3, ///< somebody has published against it, and nobody has answered; nothing was published
    Waiting = 4,    ///< not published yet, since the office cannot be reached; it is sent when it can
};

/// A command was refused or failed. The text is the reason, ready to be shown to a person; the program ends
/// with `status`.
class Refusal : public std::runtime_error
{
public:
    explicit Refusal(const CString& reason, ExitStatus status = Refused)
        : std::runtime_error(reason.toStdString()), m_status(status)
    {
    }

    ExitStatus Status() const noexcept { return m_status; }

private:
    ExitStatus m_status;
};

/// Nobody takes what the command writes to standard output any more, as behind `| head`. The program ends
/// with 1, without a word.
class NobodyListens : public std::runtime_error
{
public:
    NobodyListens() : std::runtime_error("nobody listens") {}
};

/// The command line does not fit the command. The program shows the text and the usage line and ends with 2.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const CString& reason) : std::runtime_error(reason.toStdString()) {}
};

} // namespace cli
