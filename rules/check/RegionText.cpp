#include "rules/check/RegionText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

using Attribute = CellSpace::Attribute;
using Step = CellSpace::Step;

constexpr std::size_t MostShown = 3;

/// Consecutive steps as a condition.
CString RunText(const CString& name, const Step& first, const Step& last)
{
    if (first.isPoint && first.from == last.to && last.isPoint) return name + u'＝' + first.from.ToText();
    CString text;
    if (!first.isFirst) text += first.from.ToText() + (first.isPoint ? u'≤' : u'＜');
    text += name;
    if (!last.isLast) text += (last.isPoint ? u'≤' : u'＜') + last.to.ToText();
    return text;
}

/// The conditions of all runs of numbers whose cells are in the set, or out of it.
CStringArray RunsText(const Attribute& attribute, const CellSet& cells, bool isIn)
{
    CStringArray runs;
    const std::vector<Step>& numbers = attribute.numbers;
    for (std::size_t i = 0; i < numbers.size();) {
        if (cells.Has(numbers[i].cell) != isIn) {
            ++i;
            continue;
        }
        std::size_t end = i;
        while (end + 1 < numbers.size() && cells.Has(numbers[end + 1].cell) == isIn)
            ++end;
        if (numbers[i].isFirst && numbers[end].isLast)
            runs.append(attribute.name + u"为数字"_s);
        else
            runs.append(RunText(attribute.name, numbers[i], numbers[end]));
        i = end + 1;
    }
    return runs;
}

CStringArray TextsOf(const Attribute& attribute, const CellSet& cells, bool isIn)
{
    CStringArray texts;
    for (const auto& [text, cell] : attribute.texts)
        if (cells.Has(cell) == isIn) texts.append(text);
    return texts;
}

/// Cells among which there is the text that nobody names: told by what they leave out.
CString ComplementText(const Attribute& attribute, const CellSet& cells)
{
    CStringArray parts;
    const CStringArray texts = TextsOf(attribute, cells, false);
    if (!texts.isEmpty()) parts.append(u"%1不是%2"_s.arg(attribute.name, texts.join(u"、"_s)));
    for (const CString& run : RunsText(attribute, cells, false))
        parts.append(u"不满足 "_s + run);
    CString text = parts.join(u"，且"_s);
    if (!cells.Has(CellSpace::Missing)) return text.isEmpty() ? attribute.name + u"已填写"_s : text;
    return text.isEmpty() ? CString() : text + u"（包括没有填写的）"_s;
}

} // namespace

CString CellsText(const Attribute& attribute, const CellSet& cells)
{
    if (cells.Has(attribute.other)) return ComplementText(attribute, cells);
    CStringArray parts;
    const CStringArray texts = TextsOf(attribute, cells, true);
    if (!texts.isEmpty()) parts.append(u"%1＝%2"_s.arg(attribute.name, texts.join(u"或"_s)));
    parts += RunsText(attribute, cells, true);
    if (cells.Has(CellSpace::Missing)) parts.append(attribute.name + u"没有填写"_s);
    return parts.join(u"或 "_s);
}

CString RegionText(const CellSpace& space, const Region& region)
{
    CStringArray parts;
    for (std::size_t i = 0; i < region.size(); ++i)
        if (const CString text = CellsText(space.Attributes()[i], region[i]); !text.isEmpty())
            parts.append(text);
    return parts.isEmpty() ? u"全部构件"_s : parts.join(u"，且"_s);
}

CString RegionsText(const CellSpace& space, const std::vector<Region>& regions, bool isAll)
{
    CStringArray texts;
    for (const Region& region : regions) {
        if (texts.size() == static_cast<qsizetype>(MostShown)) break;
        texts.append(RegionText(space, region));
    }
    CString text = texts.join(u"；"_s);
    if (!isAll || regions.size() > MostShown) text += u"；等等"_s;
    return text;
}

CString GapText(const Attribute& attribute, std::size_t first, std::size_t last)
{
    if (!attribute.hasList) return RunText(attribute.name, attribute.line[first], attribute.line[last]);
    CStringArray numbers;
    for (std::size_t i = first; i <= last; ++i)
        numbers.append(attribute.line[i].from.ToText());
    return attribute.name + u'＝' + numbers.join(u"、"_s);
}

} // namespace rules
