#include "embedded/data/engine/Error.h"

namespace embedded {

using namespace Qt::StringLiterals;

Error::Error(const CString& message) : std::runtime_error(message.toStdString()) {}

Error::~Error() = default;

ReadOnlyError::~ReadOnlyError() = default;

BusyError::~BusyError() = default;

UnreachableError::~UnreachableError() = default;

UnansweredError::UnansweredError(const UnreachableError& error)
    : UnreachableError(error.Message() + u"，要做的可能已经完成，请连上以后查看"_s), m_reason(error.Message())
{
}

UnansweredError::~UnansweredError() = default;

void AskToWrite(const std::function<void()>& ask)
{
    try {
        ask();
    } catch (const UnreachableError& error) {
        throw UnansweredError(error);
    }
}

RightsError::~RightsError() = default;

CString Error::Message() const
{
    return CString::fromUtf8(what());
}

} // namespace embedded
