#pragma once

#include "rules/bill/Formula.h"
#include "rules/bill/Remark.h"
#include "rules/match/CellText.h"
#include "rules/match/CellsView.h"
#include "rules/model/Facts.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace rules {

/// What the catalogue knows of quantities: each calculation item's expression by the item's name.
using CalculationItems = std::map<CString, CString>;

/// Works out quantities for the components of one small category of one take-off table. Where the value of
/// each name comes from is found once for a formula. For one thread.
class KTQDDE_RULES_EXPORT QuantityTable
{
public:
    /// `headers` are those of the table. The items must outlive this, the others are needed during the call
    /// only.
    QuantityTable(const CStringArray& headers, const CategoryFacts& facts, const CalculationItems& items);
    ~QuantityTable();

    /// A formula to be asked with `Evaluate`, of equal texts the same number.
    std::size_t Add(const CString& formula);

    /// What the formula gives for a component, given its cells beside the headers.
    Quantity Evaluate(std::size_t formula, const CellsView& cells);

    /// The same for several formulas of one component: what they have in common is worked out once. The cells
    /// must stay until the next call.
    void Begin(const CellsView& cells);
    /// What a formula gives for the component of `Begin`. Stands until the next call of any operation.
    const Quantity& Of(std::size_t formula);

    /// What was worth telling in the evaluations since the last call, each once.
    std::vector<Remark> TakeRemarks() { return std::exchange(m_remarks, {}); }

private:
    /// Where the value of a name comes from: its column, if that is filled; else the rule of the calculation
    /// item.
    struct Source
    {
        CString name;
        std::optional<std::size_t> column;
        bool inMillimetres = false;
        std::shared_ptr<const NumberReader> numbers; ///< of an attribute; null otherwise
        std::optional<std::size_t> rule;             ///< index in m_formulas
        bool isBeingAsked = false;
        std::uint64_t knownFor = 0; ///< the number of the component for which `value` is known
        std::uint64_t askedFor = 0; ///< that of the asking: a fault may depend on where the asking began
        Quantity value{};
    };
    struct Prepared
    {
        CString text;
        std::optional<Formula> formula;
        std::vector<std::size_t> sources; ///< beside its names
        std::uint64_t knownFor = 0;       ///< the number of the component for which `value` is known
        Quantity value{};
    };
    struct Attribute
    {
        bool inMillimetres = false;
        CString code;
        CString unit;
        std::shared_ptr<const NumberReader> numbers;
    };

    std::size_t SourceOf(const CString& name);
    std::optional<std::size_t> ColumnOf(const CString& header) const;
    Quantity Compute(std::size_t formula);
    Quantity ValueOf(std::size_t source);
    Quantity Read(const Source& source, QStringView cell);

    const CalculationItems& m_items;
    std::map<CString, std::size_t> m_columns;
    std::map<CString, Attribute> m_attributes;
    std::map<CString, std::size_t> m_sourceByName;
    std::vector<Source> m_sources;
    std::map<CString, std::size_t> m_formulaByText;
    std::vector<Prepared> m_formulas;
    CellsView m_cells;             ///< of the component at hand
    std::uint64_t m_component = 0; ///< its number
    std::uint64_t m_asking = 0;
    std::vector<Decimal> m_stack;
    std::vector<Remark> m_remarks;
};

} // namespace rules
