#include "xml/Error.h"

using namespace Qt::StringLiterals;

namespace xml {

Error::Error(const CString& message) : std::runtime_error(message.toStdString()) {}

Error::~Error() = default;

CString Error::Message() const
{
    return CString::fromUtf8(what());
}

PointerError::PointerError(const CString& operation) : Error(u"XML 操作“%1”没有可用的节点"_s.arg(operation))
{
}

PointerError::~PointerError() = default;

} // namespace xml
