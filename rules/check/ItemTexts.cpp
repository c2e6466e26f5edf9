#include "rules/check/ItemTexts.h"

#include "rules/bill/Formula.h"
#include "rules/bill/Units.h"

#include <algorithm>
#include <array>

namespace rules {

namespace {

/// The unit without the number that it begins with, in plain letters.
CString BaseOf(const CString& unit)
{
    CString text = unit.trimmed().normalized(CString::NormalizationForm_KC);
    while (!text.isEmpty() && text.front() >= u'0' && text.front() <= u'9')
        text.remove(0, 1);
    return text.trimmed().toLower();
}

/// What a unit counts; `Unknown` for those that count anything, such as 项.
Dimension DimensionOf(const CString& unit)
{
    struct Known
    {
        QStringView base;
        Dimension dimension;
    };
    constexpr std::array Units{
        Known{u"m", Dimension::Length},   Known{u"km", Dimension::Length},    Known{u"米", Dimension::Length},
        Known{u"m2", Dimension::Area},    Known{u"m3", Dimension::Volume},    Known{u"kg", Dimension::Weight},
        Known{u"t", Dimension::Weight},   Known{u"吨", Dimension::Weight},    Known{u"", Dimension::Unknown},
        Known{u"项", Dimension::Unknown}, Known{u"系统", Dimension::Unknown},
    };
    const CString base = BaseOf(unit);
    const auto found =
        std::find_if(Units.begin(), Units.end(), [&](const Known& known) { return known.base == base; });
    return found == Units.end() ? Dimension::Count : found->dimension;
}

} // namespace

const ItemTexts::Unit& ItemTexts::UnitOf(const CString& text)
{
    const auto [place, isNew] = m_units.try_emplace(text);
    if (isNew) place->second = {UnitOfMeasure::Of(text).multiple, DimensionOf(text)};
    return place->second;
}

const ItemTexts::FormulaText& ItemTexts::FormulaOf(const CString& text)
{
    const auto [place, isNew] = m_formulas.try_emplace(text);
    if (isNew) place->second = Read(text);
    return place->second;
}

ItemTexts::FormulaText ItemTexts::Read(const CString& text) const
{
    FormulaText read;
    if (text.trimmed().isEmpty()) return read;
    const std::optional<Formula> formula = Formula::Parse(text);
    read.state = formula ? FormulaText::State::Good : FormulaText::State::Bad;
    if (!formula) return read;
    for (const CString& name : formula->Names())
        if (!m_facts.calculationItems.contains(name) && !m_facts.names.contains(name))
            read.furtherNames.append(name);
    read.dimension = Counted(text.trimmed());
    return read;
}

Dimension ItemTexts::Counted(const CString& formula) const
{
    auto counted = m_facts.dimensions.find(formula);
    if (counted == m_facts.dimensions.end()) {
        const auto written = std::find_if(m_facts.calculationItems.begin(), m_facts.calculationItems.end(),
                                          [&](const auto& entry) { return entry.second == formula; });
        if (written == m_facts.calculationItems.end()) return Dimension::Unknown;
        counted = m_facts.dimensions.find(written->first);
    }
    return counted == m_facts.dimensions.end() ? Dimension::Unknown : counted->second;
}

} // namespace rules
