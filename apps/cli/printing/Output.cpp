#include "cli/printing/Output.h"

#include "cli/reading/Failure.h"
#include "platform/Console.h"

#include <cerrno>
#include <system_error>

using namespace Qt::StringLiterals;

namespace cli {

void WriteText(const CString& text)
{
    errno = 0;
    if (platform::WriteOut(text)) return;
    const int error = errno;
    if (error == EPIPE) throw NobodyListens();
    const CString reason =
        CString::fromLocal8Bit(QByteArray::fromStdString(std::generic_category().message(error)));
    throw Refusal(u"标准输出写不进去："_s + reason);
}

} // namespace cli
