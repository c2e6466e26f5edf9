#include "rules/sql/RuleTests.h"

#include <algorithm>
#include <map>
#include <set>
#include <span>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// Rules of a block, blocks of a block.
constexpr std::size_t BlockSize = 16;
/// A guard that lists more values than this says too little.
constexpr std::size_t MostGuarded = 64;
/// Parts of one AND: a parser counts them as so many levels.
constexpr qsizetype PartsOfAnd = 100;

using Rules = std::span<const TestedRule>;

/// The parts joined by AND, in brackets of brackets where they are very many.
CString AllOf(const CStringArray& parts)
{
    if (parts.size() <= PartsOfAnd) return parts.join(u" AND "_s);
    CStringArray groups;
    for (qsizetype begin = 0; begin < parts.size(); begin += PartsOfAnd)
        groups.append(u'(' + parts.mid(begin, PartsOfAnd).join(u" AND "_s) + u')');
    return AllOf(groups);
}

/// The elementary ranges of a test, the first and the last.
struct Ranges
{
    std::size_t first = 0;
    std::size_t last = 0;
};

Ranges RangesOf(const CellTest& test, const Column& column)
{
    Ranges ranges{0, 2 * column.Bounds().size()};
    if (test.lower) ranges.first = column.RangeOf(test.lower->value) + (test.lower->isIn ? 0 : 1);
    if (test.upper) ranges.last = column.RangeOf(test.upper->value) - (test.upper->isIn ? 0 : 1);
    return ranges;
}

CString RangeText(const Ranges& ranges, const Column& column)
{
    const CString r = column.Named(u'r');
    if (ranges.first == ranges.last) return r + u" = "_s + CString::number(ranges.first);
    if (ranges.last == 2 * column.Bounds().size()) return r + u" >= "_s + CString::number(ranges.first);
    return r + u" BETWEEN "_s + CString::number(ranges.first) + u" AND "_s + CString::number(ranges.last);
}

/// What a test says in SQL.
CString TestText(const CellTest& test, const Column& column)
{
    const CString t = column.Named(u't');
    const CString n = column.Named(u'n');
    switch (test.form) {
    case CellTest::Form::Equal:
        if (test.number == 0) return t + u" = "_s + CString::number(test.text);
        if (test.text == 0) return n + u" = "_s + CString::number(test.number);
        return u'(' + t + u" = "_s + CString::number(test.text) + u" OR "_s + n + u" = "_s +
               CString::number(test.number) + u')';
    case CellTest::Form::Unequal: {
        CString text = t + u" >= 0"_s;
        if (test.text > 0) text += u" AND "_s + t + u" <> "_s + CString::number(test.text);
        if (test.number > 0) text += u" AND "_s + n + u" <> "_s + CString::number(test.number);
        return text;
    }
    case CellTest::Form::Range:
        break;
    }
    return RangeText(RangesOf(test, column), column);
}

/// Whether a test can hold at all.
bool CanHold(const CellTest& test, const std::vector<Column>& columns)
{
    if (test.form == CellTest::Form::Unequal) return true;
    if (test.form == CellTest::Form::Equal) return test.text > 0 || test.number > 0;
    const Ranges ranges = RangesOf(test, columns[test.column]);
    return ranges.first <= ranges.last;
}

CString RuleText(const TestedRule& rule, const std::vector<Column>& columns)
{
    CStringArray parts;
    for (const CellTest& test : rule.tests)
        parts.append(TestText(test, columns[test.column]));
    return parts.isEmpty() ? u"1 = 1"_s : AllOf(parts);
}

/// What the rules of a block ask of one column by ＝.
struct Guard
{
    std::set<std::size_t> texts;
    std::set<std::size_t> numbers;
    std::optional<Ranges> ranges; ///< the widest that any rule asks for
    std::size_t equal = 0;        ///< how many rules ask for a value
    std::size_t ranged = 0;       ///< how many ask for a range
};

void AddTo(std::map<std::size_t, Guard>& guards, const TestedRule& rule, const std::vector<Column>& columns)
{
    std::set<std::size_t> equal;
    std::set<std::size_t> ranged;
    for (const CellTest& test : rule.tests) {
        Guard& guard = guards[test.column];
        // Of several tests of one column in one rule the first is enough.
        if (test.form == CellTest::Form::Equal && equal.insert(test.column).second) {
            ++guard.equal;
            if (test.text > 0) guard.texts.insert(test.text);
            if (test.number > 0) guard.numbers.insert(test.number);
        }
        if (test.form == CellTest::Form::Range && ranged.insert(test.column).second) {
            ++guard.ranged;
            const Ranges asked = RangesOf(test, columns[test.column]);
            const Ranges known = guard.ranges.value_or(asked);
            guard.ranges = {std::min(known.first, asked.first), std::max(known.last, asked.last)};
        }
    }
}

CString OneOf(const CString& name, const std::set<std::size_t>& numbers)
{
    CStringArray texts;
    for (const std::size_t number : numbers)
        texts.append(CString::number(number));
    return texts.size() == 1 ? name + u" = "_s + texts.first()
                             : name + u" IN ("_s + texts.join(u", "_s) + u')';
}

/// What every rule of a block asks for; empty when there is nothing.
CString GuardText(Rules rules, const std::vector<Column>& columns)
{
    std::map<std::size_t, Guard> guards;
    for (const TestedRule& rule : rules)
        AddTo(guards, rule, columns);
    CStringArray parts;
    for (const auto& [index, guard] : guards) {
        const Column& column = columns[index];
        if (guard.ranged == rules.size()) parts.append(RangeText(*guard.ranges, column));
        if (guard.equal < rules.size() || guard.texts.size() + guard.numbers.size() > MostGuarded) continue;
        CStringArray either;
        if (!guard.texts.empty()) either.append(OneOf(column.Named(u't'), guard.texts));
        if (!guard.numbers.empty()) either.append(OneOf(column.Named(u'n'), guard.numbers));
        parts.append(either.size() == 1 ? either.first() : u'(' + either.join(u" OR "_s) + u')');
    }
    return AllOf(parts);
}

CString BlockText(Rules rules, const std::vector<Column>& columns)
{
    if (rules.size() <= BlockSize) {
        CString text = u"CASE"_s;
        for (const TestedRule& rule : rules)
            text += u"\n      WHEN "_s + RuleText(rule, columns) + u" THEN "_s + CString::number(rule.key);
        return text + u" END"_s;
    }
    std::size_t size = BlockSize;
    while (size * BlockSize < rules.size())
        size *= BlockSize;
    CStringArray blocks;
    for (; !rules.empty(); rules = rules.subspan(std::min(size, rules.size()))) {
        const Rules block = rules.first(std::min(size, rules.size()));
        const CString guard = GuardText(block, columns);
        const CString text = BlockText(block, columns);
        blocks.append(guard.isEmpty() ? text : u"CASE WHEN "_s + guard + u" THEN "_s + text + u" END"_s);
    }
    return u"coalesce("_s + blocks.join(u",\n    "_s) + u')';
}

} // namespace

CString ChoiceOf(const std::vector<TestedRule>& rules, const std::vector<Column>& columns,
                 const CString& otherwise)
{
    std::vector<TestedRule> candidates;
    for (const TestedRule& rule : rules)
        if (std::all_of(rule.tests.begin(), rule.tests.end(),
                        [&](const CellTest& test) { return CanHold(test, columns); }))
            candidates.push_back(rule);
    if (candidates.empty()) return otherwise;
    return u"coalesce("_s + BlockText(candidates, columns) + u", "_s + otherwise + u')';
}

} // namespace rules
