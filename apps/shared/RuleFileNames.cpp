#include "shared/RuleFileNames.h"

using namespace Qt::StringLiterals;

namespace shared {

bool NamesPath(const QString& text)
{
    return text.contains(u'/') || text.contains(u'\\') || text.endsWith(u".xml"_s, Qt::CaseInsensitive);
}

} // namespace shared
