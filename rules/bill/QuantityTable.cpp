#include "rules/bill/QuantityTable.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

QuantityTable::QuantityTable(const CStringArray& headers, const CategoryFacts& facts,
                             const CalculationItems& items)
    : m_items(items)
{
    for (qsizetype i = 0; i < headers.size(); ++i)
        m_columns.try_emplace(Normalised(headers[i]), static_cast<std::size_t>(i));
    for (const AttributeFacts& fact : facts)
        m_attributes.try_emplace(Normalised(fact.name),
                                 Attribute{Normalised(fact.unit) == u"mm"_s, fact.code, fact.unit,
                                           std::make_shared<const NumberReader>(fact.valueList)});
}

QuantityTable::~QuantityTable() = default;

std::size_t QuantityTable::Add(const CString& text)
{
    const auto [place, isNew] = m_formulaByText.try_emplace(text, m_formulas.size());
    const std::size_t index = place->second;
    if (!isNew) return index;
    m_formulas.push_back({text, Formula::Parse(text), {}});
    if (!m_formulas[index].formula) return index;
    // Known by its text before its names are looked up, so that items which come to themselves again end
    // here.
    const CStringArray names = m_formulas[index].formula->Names();
    std::vector<std::size_t> sources;
    for (const CString& name : names)
        sources.push_back(SourceOf(name));
    m_formulas[index].sources = std::move(sources);
    return index;
}

std::size_t QuantityTable::SourceOf(const CString& name)
{
    const auto [place, isNew] = m_sourceByName.try_emplace(Normalised(name), m_sources.size());
    const std::size_t index = place->second;
    if (!isNew) return index;
    Source& made = m_sources.emplace_back();
    made.name = name;
    made.column = ColumnOf(name);
    const auto item = m_items.find(name);
    if (item != m_items.end()) {
        const std::size_t rule = Add(item->second); // may add sources
        m_sources[index].rule = rule;
        return index;
    }
    const auto attribute = m_attributes.find(place->first);
    if (attribute != m_attributes.end()) {
        Source& source = m_sources[index];
        source.inMillimetres = attribute->second.inMillimetres;
        source.numbers = attribute->second.numbers;
        if (!source.column && !attribute->second.code.isEmpty())
            source.column = ColumnOf(attribute->second.code);
        if (!source.column && !attribute->second.unit.isEmpty())
            source.column = ColumnOf(WithUnit(name, attribute->second.unit));
    }
    return index;
}

std::optional<std::size_t> QuantityTable::ColumnOf(const CString& header) const
{
    const auto found = m_columns.find(Normalised(header));
    if (found == m_columns.end()) return std::nullopt;
    return found->second;
}

Quantity QuantityTable::Evaluate(std::size_t index, const CellsView& cells)
{
    Begin(cells);
    return Of(index);
}

void QuantityTable::Begin(const CellsView& cells)
{
    m_cells = cells;
    ++m_component;
}

const Quantity& QuantityTable::Of(std::size_t index)
{
    if (m_formulas[index].knownFor == m_component) return m_formulas[index].value;
    ++m_asking;
    Quantity result = Compute(index);
    Prepared& prepared = m_formulas[index];
    prepared.value = std::move(result);
    prepared.knownFor = m_component;
    return prepared.value;
}

Quantity QuantityTable::Compute(std::size_t index)
{
    const Prepared& prepared = m_formulas[index];
    if (!prepared.formula) {
        const bool isEmpty = WithoutBlanks(prepared.text).isEmpty();
        return {{}, isEmpty ? QuantityFault::EmptyFormula : QuantityFault::BadFormula, prepared.text};
    }
    // Captures so little that the function needs no memory of its own.
    Quantity result = prepared.formula->Evaluate(
        [this, &prepared](std::size_t name) { return ValueOf(prepared.sources[name]); }, m_stack);
    if (!result.IsKnown() && result.subject.isEmpty()) result.subject = prepared.text;
    return result;
}

Quantity QuantityTable::ValueOf(std::size_t index)
{
    Source& source = m_sources[index];
    if (source.column && *source.column < m_cells.size()) {
        const QStringView cell = m_cells[*source.column];
        if (!WithoutBlanks(cell).isEmpty()) return Read(source, cell);
    }
    if (!source.rule) return {{}, QuantityFault::NameWithoutValue, source.name};
    // Items that stand on one another are worked out once.
    if (source.knownFor == m_component && (source.value.IsKnown() || source.askedFor == m_asking))
        return source.value;
    if (source.isBeingAsked) return {{}, QuantityFault::Circular, source.name};
    source.isBeingAsked = true;
    Quantity result = Compute(*source.rule);
    source.isBeingAsked = false;
    if (result.fault == QuantityFault::EmptyFormula)
        result = {{}, QuantityFault::NameWithoutValue, source.name};
    source.value = result;
    source.knownFor = m_component;
    source.askedFor = m_asking;
    return result;
}

/// The number in a cell, in metres where the attribute counts in millimetres.
Quantity QuantityTable::Read(const Source& source, QStringView cell)
{
    const std::optional<Decimal> number = source.numbers ? source.numbers->Read(cell) : PlainNumber(cell);
    if (!number) return {{}, QuantityFault::ValueNotANumber, source.name};
    if (*number < Decimal()) AddRemark(m_remarks, {RemarkKind::Negative, source.name, cell.toString()});
    if (source.rule) AddRemark(m_remarks, {RemarkKind::InPlaceOfRule, source.name, cell.toString()});
    static const Decimal Metres = *Decimal::Parse(u"0.001");
    return {source.inMillimetres ? *number * Metres : *number};
}

} // namespace rules
