#include "rules/sql/ReadingSteps.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

const CString CellStep = u"cell"_s;
const CString SettledStep = u"settled"_s;
const CString FormStep = u"number_form"_s;
const CString SignedStep = u"signed_number"_s;
const CString UnsignedStep = u"unsigned_number"_s;
const CString DigitsStep = u"digits"_s;
const CString KeyStep = u"sort_key"_s;
const CString KindStep = u"kind"_s;

/// Calls within calls that one step makes; SQLite's parser has no room for many.
constexpr std::size_t CallsOfStep = 12;

constexpr char16_t FullWidthOffset = u'！' - u'!';
const CString NumberCharacters = u"0123456789."_s;
const CString Digits = u"'0123456789'"_s;

CString ReplacedStep(std::size_t pass)
{
    return u"replaced_%1"_s.arg(pass + 1);
}

std::size_t PassesFor(const std::vector<Replacement>& replacements)
{
    return (replacements.size() + CallsOfStep - 1) / CallsOfStep;
}

/// Characters that stand for several: what must be replaced before the values are compared place by place.
std::vector<Replacement> TextReplacements(const Column& column)
{
    std::set<Replacement> all;
    for (const Column::Value& value : column.Values())
        all.insert(value.forms.replacements.begin(), value.forms.replacements.end());
    return {all.begin(), all.end()};
}

/// Full-width forms of all that a number of the column may be written with.
std::vector<Replacement> NumberReplacements(const Column& column)
{
    CString known = NumberCharacters + u"+-"_s;
    for (const Column::NumberForm& form : column.NumberForms())
        known += form.before + form.behind;
    std::set<Replacement> all;
    for (const QChar c : known)
        if (c >= u'!' && c <= u'~')
            all.emplace(QChar(static_cast<char16_t>(c.unicode() + FullWidthOffset)), c);
    return {all.begin(), all.end()};
}

/// All characters that are blanks around a text.
CString Blanks()
{
    CString blanks;
    for (char32_t c = 1; c <= 0xFFFF; ++c)
        if (QChar::isSpace(c)) blanks += QChar(static_cast<char16_t>(c));
    return blanks;
}

CString Trimmed(const CString& text, const Dialect& dialect)
{
    static const CString Around = Blanks();
    const CString blanks = dialect.Codes(Around);
    return u"ltrim(rtrim("_s + text + u", "_s + blanks + u"), "_s + blanks + u')';
}

void AddReplacementSteps(StepList& steps, const Column& column, QChar kind,
                         const std::vector<Replacement>& replacements, const Dialect& dialect)
{
    const CString name = column.Named(kind);
    const CString settled = column.Named(u's');
    for (std::size_t pass = 0; pass < PassesFor(replacements); ++pass) {
        const CString before = pass == 0 ? column.Named(u'x') : name;
        CString replaced = before;
        const std::size_t end = std::min(replacements.size(), (pass + 1) * CallsOfStep);
        for (std::size_t i = pass * CallsOfStep; i < end; ++i)
            replaced = u"replace("_s + replaced + u", "_s + dialect.Literal(replacements[i].first) + u", "_s +
                       dialect.Literal(replacements[i].second) + u')';
        steps.Define(ReplacedStep(pass), name,
                     u"CASE WHEN "_s + settled + u" THEN "_s + before + u" ELSE "_s + replaced + u" END"_s,
                     {settled, before});
    }
}

/// A condition that the number stands in this form, supposing that it does in no longer one.
CString FormTest(const Column::NumberForm& form, const CString& y, const Dialect& dialect)
{
    const qsizetype before = form.before.toUcs4().size();
    const qsizetype behind = form.behind.toUcs4().size();
    CStringArray parts{u"length(%1) > %2"_s.arg(y).arg(before + behind)};
    if (before > 0) parts.append(u"substr(%1, 1, %2) = "_s.arg(y).arg(before) + dialect.Literal(form.before));
    if (behind > 0)
        parts.append(u"substr(%1, length(%1) - %2) = "_s.arg(y).arg(behind - 1) +
                     dialect.Literal(form.behind));
    const CString next = u"substr(%1, %2, 1)"_s.arg(y).arg(before + 1);
    // A point right before a digit and a sign right before the number belong to the number.
    if (form.before.endsWith(u'.')) parts.append(u"ltrim(%1, %2) <> ''"_s.arg(next, Digits));
    if (form.before == u"+" || form.before == u"-")
        parts.append(u"ltrim(%1, '0123456789.') <> ''"_s.arg(next));
    // So does a point right behind the digits, when it is the only one.
    if (form.behind.startsWith(u'.')) {
        const qsizetype points = form.before.count(u'.') + form.behind.count(u'.');
        parts.append(
            u"(ltrim(substr(%1, length(%1) - %2, 1), %3) <> '' OR length(%1) - length(replace(%1, '.', '')) > %4)"_s
                .arg(y)
                .arg(behind)
                .arg(Digits)
                .arg(points));
    }
    if (!form.isOfAll) {
        CStringArray numbers;
        for (const std::size_t category : form.categories)
            numbers.append(CString::number(category));
        parts.append(CategoryName + u" IN ("_s + numbers.join(u", "_s) + u')');
    }
    return parts.join(u" AND "_s);
}

/// The step that finds the form of the number, and the one that takes the number out of it. Gives the name of
/// the column that has the number with its sign.
CString AddFormSteps(StepList& steps, const Column& column, const Dialect& dialect)
{
    CString y = column.Named(u'y');
    const std::vector<Column::NumberForm> forms = column.NumberForms();
    if (forms.empty()) return y;
    CString choice = u"CASE"_s;
    CString number = u"CASE "_s + column.Named(u'f');
    CStringArray uses{y};
    for (std::size_t i = 0; i < forms.size(); ++i) {
        choice += u" WHEN "_s + FormTest(forms[i], y, dialect) + u" THEN "_s + CString::number(i + 1);
        const qsizetype before = forms[i].before.toUcs4().size();
        const qsizetype around = before + forms[i].behind.toUcs4().size();
        // Behind another text a sign is no sign: with one put before it, it makes the number none.
        number += u" WHEN %1 THEN "_s.arg(i + 1) + (before > 0 ? u"'+' || "_s : CString()) +
                  Trimmed(u"substr(%1, %2, length(%1) - %3)"_s.arg(y).arg(before + 1).arg(around), dialect);
        if (!forms[i].isOfAll) uses.append(CategoryName);
    }
    steps.Define(FormStep, column.Named(u'f'), choice + u" ELSE 0 END"_s, uses);
    steps.Define(SignedStep, column.Named(u'm'), number + u" ELSE "_s + y + u" END"_s,
                 {y, column.Named(u'f')});
    return column.Named(u'm');
}

/// From the text that may be a number to a text by which numbers are in their order, null for what is none.
void AddNumberSteps(StepList& steps, const Column& column, const Dialect& dialect)
{
    AddReplacementSteps(steps, column, u'y', NumberReplacements(column), dialect);
    const CString number = AddFormSteps(steps, column, dialect);
    const CString u = column.Named(u'u');
    const CString z = column.Named(u'z');
    steps.Define(UnsignedStep, u,
                 u"CASE WHEN substr(%1, 1, 1) IN ('+', '-') THEN substr(%1, 2) ELSE %1 END"_s.arg(number),
                 {number});
    steps.Define(DigitsStep, z,
                 u"CASE WHEN %1 IN ('', '.') OR ltrim(%1, '0123456789.') <> '' OR "
                 "length(%1) - length(replace(%1, '.', '')) > 1 THEN NULL "
                 "WHEN replace(%1, '.', '') <> %1 THEN rtrim(rtrim(ltrim(%1, '0'), '0'), '.') "
                 "ELSE ltrim(%1, '0') END"_s.arg(u),
                 {u});
    steps.Define(
        KeyStep, column.Named(u'k'),
        u"CASE WHEN substr(%1, 1, 1) = '-' AND %2 <> '' THEN '-' ELSE '' END || "
        "CAST(1000000000 + length(%2) - length(ltrim(%2, %3)) AS VARCHAR(20)) || %2"_s.arg(number, z, Digits),
        {number, z});
}

/// The same text of a number that is known: digits before the point, counted in ten places, and the digits.
CString KeyOf(const Decimal& number)
{
    constexpr qsizetype Base = 1'000'000'000;
    CString text = number.ToText();
    const bool isNegative = text.startsWith(u'-');
    if (isNegative) text.remove(0, 1);
    if (text.startsWith(u'0')) text.remove(0, 1);
    const qsizetype point = text.indexOf(u'.');
    const qsizetype whole = point < 0 ? text.size() : point;
    return (isNegative ? u"'-"_s : u"'"_s) + CString::number(Base + whole) + text + u'\'';
}

void DefineTextKind(StepList& steps, const Column& column, const Dialect& dialect)
{
    const CString x = column.Named(u'x');
    const CString s = column.Named(u's');
    const std::vector<Replacement> replacements = TextReplacements(column);
    AddReplacementSteps(steps, column, u'd', replacements, dialect);
    const CString d = replacements.empty() ? x : column.Named(u'd');
    CString same;
    CString others;
    for (std::size_t i = 0; i < column.Values().size(); ++i) {
        const Column::Value& value = column.Values()[i];
        const CString then = u" THEN "_s + CString::number(i + 1);
        same += u" WHEN "_s + dialect.Literal(value.text) + then;
        if (!value.forms.hasOthers) continue;
        for (const CStringArray& places : value.forms.forms)
            others += u" WHEN "_s + dialect.Matches(d, places) + then;
    }
    CStringArray uses{x};
    CString otherwise = u"0"_s;
    if (!others.isEmpty()) {
        otherwise = u"CASE WHEN "_s + s + u" THEN 0"_s + others + u" ELSE 0 END"_s;
        uses += {s, d};
    }
    const CString found =
        same.isEmpty() ? u"0"_s : u"CASE "_s + x + same + u" ELSE "_s + otherwise + u" END"_s;
    steps.Define(KindStep, column.Named(u't'),
                 u"CASE WHEN "_s + x + u" = '' THEN -1 ELSE "_s + found + u" END"_s, uses);
}

void DefineNumberKind(StepList& steps, const Column& column)
{
    const CString k = column.Named(u'k');
    CString choice = u"CASE "_s + k;
    for (const auto& [number, index] : column.Numbers())
        choice += u" WHEN "_s + KeyOf(number) + u" THEN "_s + CString::number(index);
    choice += u" ELSE 0 END"_s;
    if (column.NumberForms().empty()) return steps.Define(KindStep, column.Named(u'n'), choice, {k});
    // DN50 is a number for ranges only.
    steps.Define(KindStep, column.Named(u'n'),
                 u"CASE WHEN "_s + column.Named(u'f') + u" > 0 THEN 0 ELSE "_s + choice + u" END"_s,
                 {k, column.Named(u'f')});
}

void DefineRangeKind(StepList& steps, const Column& column)
{
    const CString k = column.Named(u'k');
    CString below;
    CString above;
    std::size_t place = 0;
    std::size_t firstAbove = 0;
    for (const Decimal& bound : column.Bounds()) {
        const bool isNegative = bound < Decimal();
        // Of negative numbers the larger text is the smaller number.
        const CString side = isNegative ? u" > "_s : u" < "_s;
        CString& choice = isNegative ? below : above;
        choice += u" WHEN "_s + k + side + KeyOf(bound) + u" THEN "_s + CString::number(place) + u" WHEN "_s +
                  k + u" = "_s + KeyOf(bound) + u" THEN "_s + CString::number(place + 1);
        place += 2;
        if (isNegative) firstAbove = place;
    }
    const auto chosen = [](const CString& choice, std::size_t otherwise) {
        const CString last = CString::number(otherwise);
        return choice.isEmpty() ? last : u"CASE"_s + choice + u" ELSE "_s + last + u" END"_s;
    };
    steps.Define(KindStep, column.Named(u'r'),
                 u"CASE WHEN "_s + k + u" IS NULL THEN -1 WHEN substr("_s + k + u", 1, 1) = '-' THEN "_s +
                     chosen(below, firstAbove) + u" ELSE "_s + chosen(above, place) + u" END"_s,
                 {k});
}

} // namespace

CString CellExpression(const CString& column, const Dialect& dialect)
{
    const CString text = dialect.AsText(SourceName + u'.' + dialect.Name(column));
    return u"coalesce("_s + Trimmed(text, dialect) + u", '')"_s;
}

CStringArray ReadingStepNames(const std::vector<Column>& columns)
{
    std::size_t passes = 0;
    for (const Column& column : columns)
        passes = std::max({passes, PassesFor(TextReplacements(column)),
                           column.ReadsNumbers() ? PassesFor(NumberReplacements(column)) : 0});
    CStringArray names{CellStep, SettledStep};
    for (std::size_t pass = 0; pass < passes; ++pass)
        names.append(ReplacedStep(pass));
    return names + CStringArray{FormStep, SignedStep, UnsignedStep, DigitsStep, KeyStep, KindStep};
}

void AddReadingSteps(StepList& steps, const Column& column, const Dialect& dialect)
{
    const CString x = column.Named(u'x');
    steps.Define(CellStep, x, CellExpression(column.Name(), dialect));
    steps.Define(SettledStep, column.Named(u's'), dialect.IsSettled(x), {x});
    if (column.HasValues()) DefineTextKind(steps, column, dialect);
    if (column.ReadsNumbers()) AddNumberSteps(steps, column, dialect);
    if (!column.Numbers().empty()) DefineNumberKind(steps, column);
    if (column.HasRanges()) DefineRangeKind(steps, column);
}

} // namespace rules
