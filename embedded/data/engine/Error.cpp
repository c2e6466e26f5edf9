#include "embedded/data/engine/Error.h"

namespace embedded {

Error::Error(const CString& message) : std::runtime_error(message.toStdString()) {}

Error::~Error() = default;

ReadOnlyError::~ReadOnlyError() = default;

BusyError::~BusyError() = default;

UnreachableError::~UnreachableError() = default;

RightsError::~RightsError() = default;

CString Error::Message() const
{
    return CString::fromUtf8(what());
}

} // namespace embedded
