#pragma once

#include "platform/Text.h"

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

/// A database had to be written and its file or folder is read-only.
class ReadOnlyError : public Error
{
public:
    using Error::Error;
    ~ReadOnlyError() override;
};

} // namespace embedded
