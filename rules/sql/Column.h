#pragma once

#include "rules/match/CellText.h"
#include "rules/sql/CompatibleForms.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace rules {

/// One column of the components table and all that conditions of any category compare its cells with.
class Column
{
public:
    /// `name` is that in the table, `index` what its columns in the query are numbered with.
    Column(CString name, std::size_t index) : m_name(std::move(name)), m_index(index) {}

    const CString& Name() const noexcept { return m_name; }
    /// The name of a column of the query that comes of this one: 'x' gives x7.
    CString Named(QChar kind) const { return kind + CString::number(m_index); }

    /// Takes in a value of ＝ or ≠, which is given normalised, not empty and such that a database can hold
    /// it; gives its number, the first is 1. May raise as `CompatibleFormsOf` does.
    std::size_t AddText(const CString& normalised);
    /// The same with the number that a value is.
    std::size_t AddNumber(const Decimal& number);
    /// Notes that there are conditions of ＝ or ≠, even if without a value.
    void AddValueForm() { m_hasValues = true; }
    /// Notes that a category tests ranges, and how it reads numbers.
    void AddRanges(std::size_t category, const NumberReader& numbers);
    void AddBound(const Decimal& bound) { m_bounds.insert(bound); }

    /// A value with all texts that are equal to it.
    struct Value
    {
        CString text;
        CompatibleForms forms;
    };
    /// A way to write a number, and the categories that read it.
    struct NumberForm
    {
        CString before;
        CString behind;
        std::set<std::size_t> categories;
        bool isOfAll = false; ///< of all categories that test ranges
    };

    bool HasValues() const noexcept { return m_hasValues; }
    bool HasRanges() const noexcept { return !m_rangeCategories.empty(); }
    bool ReadsNumbers() const noexcept { return HasRanges() || !m_numbers.empty(); }
    /// The value of number i at index i - 1.
    const std::vector<Value>& Values() const noexcept { return m_values; }
    const std::map<Decimal, std::size_t>& Numbers() const noexcept { return m_numbers; }
    const std::set<Decimal>& Bounds() const noexcept { return m_bounds; }
    /// The elementary range of one of the bounds, bound i having 2i+1.
    std::size_t RangeOf(const Decimal& bound) const;
    /// The longest first, so that the first that fits is the one that the number stands in.
    std::vector<NumberForm> NumberForms() const;

private:
    CString m_name;
    std::size_t m_index;
    bool m_hasValues = false;
    std::map<CString, std::size_t> m_texts;
    std::vector<Value> m_values;
    std::map<Decimal, std::size_t> m_numbers;
    std::set<Decimal> m_bounds;
    std::map<std::pair<CString, CString>, std::set<std::size_t>> m_numberForms;
    std::set<std::size_t> m_rangeCategories;
};

} // namespace rules
