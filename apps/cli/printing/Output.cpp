#include "cli/printing/Output.h"

#include "cli/reading/Failure.h"
#include "platform/Console.h"

#include <cerrno>

using namespace Qt::StringLiterals;

namespace cli {

void WriteText(const CString& text)
{
    errno = 0;
    if (platform::WriteOut(text)) return;
    if (errno == EPIPE) throw NobodyListens();
    throw Refusal(u"标准输出写不进去"_s);
}

} // namespace cli
