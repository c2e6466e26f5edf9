#include "cli/Output.h"

#include "cli/Failure.h"
#include "platform/Console.h"

using namespace Qt::StringLiterals;

namespace cli {

void WriteText(const CString& text)
{
    if (!platform::WriteOut(text)) throw Refusal(u"标准输出写不进去"_s);
}

} // namespace cli
