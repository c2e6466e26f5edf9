#include "editor/docks/details/ItemLines.h"

#include <algorithm>

namespace editor {

namespace {

bool SameCode(const CString& a, const CString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

template <typename Record>
ItemLine LineOf(const Record& record, int id, const CString& number)
{
    ItemLine line;
    line.id = id;
    line.number = number;
    line.name = record.strName;
    line.unit = record.strUnit;
    line.formula = record.strFormula;
    line.annex = record.strAnnex;
    return line;
}

/// Adds the lines of one rule. The module leaves the quota items of a foreign bill item out with it.
void AddLines(std::vector<ItemLine>& lines, const rules::Rule& rule, const ProjectFacts& facts)
{
    const auto addQuotas = [&](const std::vector<rules::QuotaItem>& quotas, int bill, bool isForeign) {
        for (std::size_t i = 0; i < quotas.size(); ++i) {
            ItemLine line = LineOf(quotas[i].record, quotas[i].id, quotas[i].record.strDeId);
            line.place = {bill, static_cast<int>(i)};
            line.isForeign = isForeign || !SameCode(quotas[i].record.strDeCode, facts.pricing.quotaLibrary);
            lines.push_back(line);
        }
    };
    if (!facts.isBillMode) return addQuotas(rule.quotas, -1, false);
    for (std::size_t i = 0; i < rule.bills.size(); ++i) {
        const rules::BillItem& bill = rule.bills[i];
        ItemLine line = LineOf(bill.record, bill.id, bill.record.strQdId);
        line.place = {static_cast<int>(i), -1};
        line.isForeign = !SameCode(bill.record.strQdCode, facts.pricing.billLibrary);
        lines.push_back(line);
        addQuotas(bill.quotas, line.place.bill, line.isForeign);
    }
}

/// One line of all that are of the same number below the same one.
struct SharedLine
{
    ItemLine line;
    std::size_t lastRule = 0;
    std::vector<SharedLine> below;
};

SharedLine& Share(std::vector<SharedLine>& shared, const ItemLine& line, std::size_t rule)
{
    const auto found = std::find_if(shared.begin(), shared.end(), [&](const SharedLine& one) {
        return one.line.number == line.number && one.line.isForeign == line.isForeign;
    });
    if (found == shared.end()) return shared.emplace_back(SharedLine{line, rule, {}});
    found->line.rules += found->lastRule == rule ? 0 : 1;
    found->lastRule = rule;
    found->line.formulasDiffer |= found->line.formula != line.formula;
    return *found;
}

std::vector<ItemLine> SharedLines(const RulesInView& view, const ProjectFacts& facts)
{
    std::vector<SharedLine> shared;
    for (std::size_t i = 0; i < view.Count(); ++i) {
        std::vector<ItemLine> lines;
        AddLines(lines, view.At(i), facts);
        SharedLine* bill = nullptr;
        for (const ItemLine& line : lines) {
            if (line.place.IsBill())
                bill = &Share(shared, line, i);
            else
                Share(bill == nullptr ? shared : bill->below, line, i);
        }
    }
    std::vector<ItemLine> lines;
    for (std::size_t i = 0; i < shared.size(); ++i) {
        ItemLine& line = lines.emplace_back(shared[i].line);
        line.place =
            line.place.IsBill() ? ItemPlace{static_cast<int>(i), -1} : ItemPlace{-1, static_cast<int>(i)};
        for (std::size_t j = 0; j < shared[i].below.size(); ++j) {
            lines.push_back(shared[i].below[j].line);
            lines.back().place = {static_cast<int>(i), static_cast<int>(j)};
        }
    }
    return lines;
}

template <typename Items>
auto ItemAt(Items& items, int index) -> decltype(items.data())
{
    return index >= 0 && index < static_cast<int>(items.size()) ? &items[static_cast<std::size_t>(index)]
                                                                : nullptr;
}

} // namespace

std::vector<ItemLine> LinesOf(const RulesInView& view, const ProjectFacts& facts)
{
    std::vector<ItemLine> lines;
    if (view.IsSingle())
        AddLines(lines, view.At(0), facts);
    else if (!view.IsEmpty())
        lines = SharedLines(view, facts);
    return lines;
}

rules::BillItem* BillAt(rules::Rule& rule, const ItemPlace& place)
{
    return ItemAt(rule.bills, place.bill);
}

std::vector<rules::QuotaItem>* QuotasAt(rules::Rule& rule, const ItemPlace& place)
{
    if (place.bill < 0) return &rule.quotas;
    rules::BillItem* const bill = BillAt(rule, place);
    return bill == nullptr ? nullptr : &bill->quotas;
}

rules::QuotaItem* QuotaAt(rules::Rule& rule, const ItemPlace& place)
{
    std::vector<rules::QuotaItem>* const quotas = QuotasAt(rule, place);
    return quotas == nullptr ? nullptr : ItemAt(*quotas, place.quota);
}

} // namespace editor
