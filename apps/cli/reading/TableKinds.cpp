#include "cli/reading/TableKinds.h"

#include "cli/reading/Failure.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

struct NamedKind
{
    QStringView word;
    embedded::TableKind kind;
};

constexpr NamedKind Kinds[] = {
    {u"catalog", embedded::TableKind::Catalogue},  {u"attributes", embedded::TableKind::Attributes},
    {u"bill", embedded::TableKind::Bill},          {u"quota", embedded::TableKind::Quota},
    {u"guide", embedded::TableKind::Guide},        {u"calc", embedded::TableKind::Calc},
    {u"libraries", embedded::TableKind::Libraries}};

} // namespace

CString TableKindWords()
{
    CStringArray words;
    for (const NamedKind& kind : Kinds)
        words += kind.word.toString();
    return words.join(u'|');
}

Option LibraryOption()
{
    return {
        u"library"_s, u"CODE"_s, u"bill、quota、guide 的库，见 ktqdde library；不写时为工程正在使用的"_s, {}};
}

embedded::TableKind NamedTableKind(const Arguments& arguments)
{
    const CString word = arguments.Positional()[0];
    const auto named = std::find_if(std::begin(Kinds), std::end(Kinds),
                                    [&](const NamedKind& candidate) { return candidate.word == word; });
    if (named == std::end(Kinds))
        throw UsageError(u"没有“%1”这种数据，只有 %2"_s.arg(word, TableKindWords()));
    if (arguments.Has(u"library"_s) && !embedded::IsOfALibrary(named->kind))
        throw UsageError(u"--library 只用于 bill、quota、guide"_s);
    return named->kind;
}

} // namespace cli
