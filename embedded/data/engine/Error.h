#pragma once

#include "platform/Text.h"

#include <functional>
#include <stdexcept>

namespace embedded {

/// A project could not be created, opened or changed: no project at the place, a damaged or locked database,
/// a newer one, an unknown name. The text names the file and the reason, ready to be shown to a person.
class Error : public std::runtime_error
{
public:
    explicit Error(const CString& message);
    ~Error() override;
    /// The text, as `what()` gives it in UTF-8.
    CString Message() const;
};

/// A database had to be written and its file or folder, or the server, is read-only.
class ReadOnlyError : public Error
{
public:
    using Error::Error;
    ~ReadOnlyError() override;
};

/// Another program holds a database, for longer than one waits for it.
class BusyError : public Error
{
public:
    using Error::Error;
    ~BusyError() override;
};

/// A server could not be reached, or has gone in the middle: what was asked for is not done.
class UnreachableError : public Error
{
public:
    using Error::Error;
    ~UnreachableError() override;
};

/// A server has gone while it was asked to do something for good: that may be done. The text says so.
class UnansweredError : public UnreachableError
{
public:
    explicit UnansweredError(const UnreachableError& error);
    ~UnansweredError() override;

    /// Why there was no answer; it does not say that.
    const CString& Reason() const noexcept { return m_reason; }

private:
    CString m_reason;
};

/// Asks a server by `ask` for a change that is there for good once the server has made it: the
/// `UnreachableError` that comes of it is raised as `UnansweredError`.
void AskToWrite(const std::function<void()>& ask);

/// The server refuses what the connected user has no right to.
class RightsError : public Error
{
public:
    using Error::Error;
    ~RightsError() override;
};

} // namespace embedded
