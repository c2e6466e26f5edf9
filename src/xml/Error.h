#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

#include <stdexcept>

namespace xml {

/// An operation of the XML layer could not be carried out: an invalid name, a character that no XML file can
/// hold, a second document element, a file that cannot be written. The text is ready to be shown to a person.
class KTQDDE_EXPORT Error : public std::runtime_error
{
public:
    explicit Error(const CString& message);
    ~Error() override;
    /// The text, as `what()` gives it in UTF-8.
    CString Message() const;
};

/// A null handle was used where a node is needed.
class KTQDDE_EXPORT PointerError : public Error
{
public:
    explicit PointerError(const CString& operation);
    ~PointerError() override;
};

} // namespace xml
