#include "rules/sql/Dialect.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// PostgreSQL cuts longer names without an error, so that two of them may become one.
constexpr qsizetype PostgreSqlNameBytes = 63;
/// SQLite refuses patterns of more than 50,000 bytes; a place takes some 100 bytes.
constexpr qsizetype PlacesOfPattern = 200;

/// ASCII and the unified ideographs.
const CString SettledRange = u"[^ -~\u4E00-\u9FFF]"_s;

CString Quoted(const CString& text, QChar quote)
{
    CString doubled = text;
    doubled.replace(quote, CString(2, quote));
    return quote + doubled + quote;
}

/// The place as a regular expression. Other ways to write a character are never of ASCII, so that only the
/// first character of a place may mean something to the pattern.
CString RegularExpressionOf(const CString& place)
{
    const QChar first = place[0];
    const bool isSpecial = u"\\^$.|?*+()[]{}"_s.contains(first);
    const CString plain = isSpecial ? u'\\' + CString(first) : CString(first);
    const CString others = place.mid(1);
    if (!isSpecial) return others.isEmpty() ? plain : u'[' + place + u']';
    return others.isEmpty() ? plain : u"(?:"_s + plain + u"|["_s + others + u"])"_s;
}

/// The place as SQLite's GLOB has it: a class of characters, in which only ^ at the start, ] behind it and -
/// between two characters mean something.
CString GlobOf(const CString& place)
{
    if (place == u"^") return place; // outside of a class it is itself
    if (place.startsWith(u'^')) return u'[' + place.mid(1) + u"^]"_s;
    return u'[' + place + u']';
}

} // namespace

bool Dialect::CanHold(QStringView text)
{
    return text.isValidUtf16() && !text.contains(QChar(u'\0'));
}

CString Dialect::Literal(const CString& text) const
{
    CString quoted = Quoted(text, u'\'');
    if (m_dialect != SqlDialect::PostgreSql || !text.contains(u'\\')) return quoted;
    // Whether a backslash means something in plain quotes is a setting of the server. Here it always does.
    return u'E' + quoted.replace(u'\\', u"\\\\"_s);
}

CString Dialect::Codes(const CString& text) const
{
    CStringArray codes;
    for (const QChar c : text)
        codes.append(CString::number(c.unicode()));
    if (m_dialect == SqlDialect::Sqlite) return u"char("_s + codes.join(u", "_s) + u')';
    return u"chr("_s + codes.join(u") || chr("_s) + u')';
}

CString Dialect::Name(const CString& name) const
{
    return Quoted(name, u'"');
}

CString Dialect::NameForm(const CString& name) const
{
    return m_dialect == SqlDialect::PostgreSql ? CutName(name, 0) : name.toCaseFolded();
}

CString Dialect::CutName(const CString& name, qsizetype room) const
{
    if (m_dialect != SqlDialect::PostgreSql || name.toUtf8().size() + room <= PostgreSqlNameBytes)
        return name;
    CString cut = name;
    while (cut.toUtf8().size() + room > PostgreSqlNameBytes)
        cut.chop(cut.size() > 1 && cut.back().isLowSurrogate() ? 2 : 1);
    return cut;
}

CString Dialect::AsText(const CString& column) const
{
    switch (m_dialect) {
    case SqlDialect::PostgreSql:
        return u"CAST(%1 AS text) COLLATE \"C\""_s.arg(column);
    case SqlDialect::Sqlite:
        return u"CAST(%1 AS TEXT) COLLATE BINARY"_s.arg(column);
    case SqlDialect::DuckDb:
        break;
    }
    return u"CAST(%1 AS VARCHAR)"_s.arg(column);
}

CString Dialect::IsSettled(const CString& text) const
{
    switch (m_dialect) {
    case SqlDialect::PostgreSql:
        return text + u" !~ '"_s + SettledRange + u'\'';
    case SqlDialect::Sqlite:
        return text + u" NOT GLOB '*"_s + SettledRange + u"*'"_s;
    case SqlDialect::DuckDb:
        break;
    }
    return u"NOT regexp_matches("_s + text + u", '"_s + SettledRange + u"')"_s;
}

CString Dialect::Pattern(const CStringArray& places) const
{
    CString pattern;
    for (const CString& place : places)
        pattern += m_dialect == SqlDialect::Sqlite ? GlobOf(place) : RegularExpressionOf(place);
    return m_dialect == SqlDialect::PostgreSql ? u'^' + pattern + u'$' : pattern;
}

CString Dialect::Matches(const CString& text, const CStringArray& places) const
{
    const auto matches = [&](const CString& part, const CString& pattern) {
        if (m_dialect == SqlDialect::Sqlite) return part + u" GLOB "_s + Literal(pattern);
        if (m_dialect == SqlDialect::PostgreSql) return part + u" ~ "_s + Literal(pattern);
        return u"regexp_full_match("_s + part + u", "_s + Literal(pattern) + u')';
    };
    if (places.size() <= PlacesOfPattern) return matches(text, Pattern(places));
    CStringArray parts{u"length(%1) = %2"_s.arg(text).arg(places.size())};
    for (qsizetype begin = 0; begin < places.size(); begin += PlacesOfPattern)
        parts.append(matches(u"substr(%1, %2, %3)"_s.arg(text).arg(begin + 1).arg(PlacesOfPattern),
                             Pattern(places.mid(begin, PlacesOfPattern))));
    return parts.join(u" AND "_s);
}

CString Dialect::EndOfStep() const
{
    switch (m_dialect) {
    case SqlDialect::PostgreSql:
        return u" OFFSET 0"_s;
    case SqlDialect::Sqlite:
        return u" LIMIT -1"_s;
    case SqlDialect::DuckDb:
        break;
    }
    return {}; // it keeps the steps apart by itself
}

} // namespace rules
