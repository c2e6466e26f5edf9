#include "rules/compare/Content.h"
#include "rules/sheet/ConditionCell.h"
#include "rules/sheet/ItemCell.h"
#include "rules/sheet/RuleSheet.h"
#include "rules/sheet/SheetColumns.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// Whether an attribute's name can head a column and be known again.
bool CanHead(const CString& attribute)
{
    return !attribute.isEmpty() && attribute == attribute.trimmed() && !sheet::IsFixed(attribute);
}

CStringArray AttributesOf(const std::vector<SmallCategoryPtr>& categories, const CatalogueFacts& facts)
{
    CStringArray attributes;
    const auto add = [&](const CString& name) {
        if (CanHead(name) && !attributes.contains(name)) attributes.append(name);
    };
    for (const SmallCategoryPtr& category : categories) {
        const auto known = facts.find(category->text);
        if (known == facts.end()) continue;
        for (const AttributeFacts& attribute : known->second)
            add(attribute.name);
    }
    for (const SmallCategoryPtr& category : categories)
        for (const Rule& rule : category->rules)
            for (const Condition& condition : rule.conditions)
                add(condition.attribute);
    return attributes;
}

/// Conditions on one attribute stand below each other in its cell.
bool PutConditions(const Rule& rule, const CStringArray& headings, CStringArray& cells)
{
    for (const Condition& condition : rule.conditions) {
        const auto text = CellOf(condition);
        const qsizetype column = headings.indexOf(condition.attribute);
        if (!text || text->isEmpty() || !CanHead(condition.attribute) || column < 0) return false;
        CString& cell = cells[column];
        if (!cell.isEmpty()) cell += u'\n';
        cell += *text;
    }
    return true;
}

} // namespace

RuleSheet MakeSheet(const std::vector<SmallCategoryPtr>& categories, const CatalogueFacts& facts,
                    const SheetItems& items, std::vector<SheetFault>& faults)
{
    RuleSheet sheet;
    sheet.headings = CStringArray{sheet::CategoryColumn, sheet::DefaultColumn} +
                     AttributesOf(categories, facts) + CStringArray{sheet::BillColumn, sheet::QuotaColumn};
    for (const SmallCategoryPtr& category : categories) {
        for (std::size_t i = 0; i < category->rules.size(); ++i) {
            const Rule& rule = category->rules[i];
            if (i + 1 == category->rules.size() && IsBareDefault(rule)) break;
            CStringArray cells(sheet.headings.size());
            cells[0] = category->text;
            cells[1] = rule.isDefault ? sheet::Yes : CString();
            const auto bills = BillCell(rule.bills, category->text, items);
            const auto quotas = QuotaCell(rule.quotas, category->text, items);
            if (!PutConditions(rule, sheet.headings, cells) || !bills || !quotas) {
                faults.push_back({0, u"%1 第 %2 条 %3：有表格写不出的内容"_s.arg(category->text)
                                         .arg(i + 1)
                                         .arg(rule.Text())});
                continue;
            }
            cells[cells.size() - 2] = *bills;
            cells[cells.size() - 1] = *quotas;
            sheet.rows.push_back({0, cells});
        }
    }
    return sheet;
}

} // namespace rules
