#include "editor/docks/details/ItemLines.h"

#include <QtCore/QHash>

#include <memory>
#include <utility>

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

/// Lines of several rules, one for all that are of the same number below the same one.
struct SharedLines
{
    struct Shared
    {
        ItemLine line;
        std::size_t lastRule = 0;
        std::shared_ptr<SharedLines> below; ///< null for none
    };

    Shared& Add(const ItemLine& line, std::size_t rule)
    {
        const auto key = std::pair(line.number, line.isForeign);
        const auto known = places.constFind(key);
        if (known == places.constEnd()) {
            places.insert(key, lines.size());
            return lines.emplace_back(Shared{line, rule, nullptr});
        }
        Shared& shared = lines[*known];
        shared.line.rules += shared.lastRule == rule ? 0 : 1;
        shared.lastRule = rule;
        shared.line.formulasDiffer |= shared.line.formula != line.formula;
        return shared;
    }

    std::vector<Shared> lines;
    QHash<std::pair<CString, bool>, std::size_t> places;
};

std::vector<ItemLine> LinesOfSeveral(const RulesInView& view, const ProjectFacts& facts)
{
    SharedLines all;
    for (std::size_t i = 0; i < view.Count(); ++i) {
        std::vector<ItemLine> lines;
        AddLines(lines, view.At(i), facts);
        SharedLines* list = &all;
        for (const ItemLine& line : lines) {
            SharedLines::Shared& shared = (line.place.IsBill() ? all : *list).Add(line, i);
            if (!line.place.IsBill()) continue;
            if (!shared.below) shared.below = std::make_shared<SharedLines>();
            list = shared.below.get();
        }
    }
    std::vector<ItemLine> lines;
    for (std::size_t i = 0; i < all.lines.size(); ++i) {
        const SharedLines::Shared& shared = all.lines[i];
        const int place = static_cast<int>(i);
        lines.push_back(shared.line);
        lines.back().place = shared.below ? ItemPlace{place, -1} : ItemPlace{-1, place};
        for (std::size_t j = 0; shared.below && j < shared.below->lines.size(); ++j) {
            lines.push_back(shared.below->lines[j].line);
            lines.back().place = {place, static_cast<int>(j)};
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
        lines = LinesOfSeveral(view, facts);
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
