#include "cli/reading/Overwriting.h"

#include "cli/reading/Arguments.h"
#include "cli/reading/Failure.h"
#include "platform/Files.h"
#include "platform/Paths.h"

using namespace Qt::StringLiterals;

namespace cli {

void RefuseToOverwrite(const Arguments& arguments, const CString& path)
{
    if (platform::Files().Exists(path) && !arguments.Has(u"force"_s))
        throw Refusal(u"%1 已经存在，覆盖请加 --force"_s.arg(platform::ToNative(path)));
}

} // namespace cli
