#include "embedded/data/exchange/SeenKeys.h"

#include "embedded/data/exchange/ImportRow.h"

namespace embedded {

using namespace Qt::StringLiterals;

void SeenKeys::Take(const CString& key, int line)
{
    const auto seen = m_seen.constFind(key);
    if (seen != m_seen.constEnd()) throw RowRefused(u"与第 %1 行重复"_s.arg(seen->line));
    m_seen.insert(key, {{}, line});
}

void SeenKeys::Agree(const CString& key, const CString& value, int line)
{
    const auto seen = m_seen.constFind(key);
    if (seen == m_seen.constEnd()) {
        m_seen.insert(key, {value, line});
    } else if (seen->value != value) {
        throw RowRefused(
            u"与第 %1 行矛盾：“%2”在那里是“%3”，这里是“%4”"_s.arg(seen->line).arg(key, seen->value, value));
    }
}

} // namespace embedded
