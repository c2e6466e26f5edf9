#include "cli/reading/TextFiles.h"

#include "cli/reading/Failure.h"
#include "platform/Encoding.h"
#include "platform/Files.h"
#include "platform/Paths.h"

using namespace Qt::StringLiterals;

namespace cli {

CStringArray LinesOf(const CString& path)
{
    return TextOf(platform::Files().ReadWhole(path), platform::ToNative(path)).split(u'\n');
}

CString TextOf(const QByteArray& bytes, const CString& name)
{
    const auto text = platform::Decode(bytes, platform::GuessEncoding(bytes));
    if (!text) throw Refusal(name + u"：不是文本，显示不了"_s);
    return *text;
}

} // namespace cli
