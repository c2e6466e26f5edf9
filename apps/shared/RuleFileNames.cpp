#include "shared/RuleFileNames.h"

using namespace Qt::StringLiterals;

namespace shared {

bool NamesPath(const QString& text)
{
    return text.contains(u'/') || text.contains(u'\\') || text.endsWith(u".xml"_s, Qt::CaseInsensitive);
}

CString RuleFileIn(const CString& folder, const CString& configuration)
{
    return folder + u'\\' + configuration + u".xml"_s;
}

} // namespace shared
