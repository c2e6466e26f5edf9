#include "cli/printing/RuleText.h"

#include "cli/printing/TextTable.h"
#include "cli/reading/Failure.h"
#include "host/NvKtDataMng.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

bool Selects(const CString& filter, const SmallCategory& category)
{
    return filter.isEmpty() || category.text == filter || category.name == filter ||
           category.text.startsWith(filter + u'\\');
}

/// What an item is, with a remark when it is of another library than that in use: the dialogs do not show it.
CString Kind(const CString& word, const CString& library, const CString& inUse)
{
    const bool isInUse = library.compare(inUse, Qt::CaseInsensitive) == 0;
    return isInUse ? word : word + u"（其他库）"_s;
}

CStringArray QuotaCells(const CString& word, const DeStruct& de, const CString& inUse)
{
    return {Kind(word, de.strDeCode, inUse), de.strDeId, de.strName, de.strUnit, de.strFormula, de.strAnnex};
}

CArray<CStringArray> ItemRows(const ConfigNode& rule)
{
    const NvKtDataMng::CAtt libraries;
    CArray<CStringArray> rows;
    for (const QdNode* item : rule.GetQd()) {
        const QdStruct& qd = item->GetRecord();
        rows.append({Kind(u"清单"_s, qd.strQdCode, libraries.GetQdCode()), qd.strQdId, qd.strName, qd.strUnit,
                     qd.strFormula, qd.strAnnex});
        for (const DeNode* de : item->GetDe())
            rows.append(QuotaCells(u"└定额"_s, de->GetRecord(), libraries.GetQdDeCode()));
    }
    for (const DeNode* de : rule.GetDe())
        rows.append(QuotaCells(u"定额"_s, de->GetRecord(), libraries.GetDeCode()));
    return rows;
}

CStringArray ConditionRows(const ConfigNode& rule)
{
    if (rule.IfDefault()) return {rule.GetConditionString()};
    CStringArray rows;
    for (const ConditionNode* condition : rule.GetCondition())
        rows += condition->GetConditionString();
    return rows.isEmpty() ? CStringArray{u"（无条件）"_s} : rows;
}

void AddRule(TextTable& table, int position, const ConfigNode& rule)
{
    const CStringArray conditions = ConditionRows(rule);
    const CArray<CStringArray> items = ItemRows(rule);
    for (qsizetype i = 0; i < std::max(conditions.size(), items.size()); ++i) {
        CStringArray row = i > 0 ? CStringArray{{}, {}}
                                 : CStringArray{CString::number(position), CString::number(rule.GetId())};
        row += conditions.value(i);
        row += i == 0 && items.isEmpty() ? CStringArray{u"（未挂清单、定额）"_s} : items.value(i);
        table.AddRow(row);
    }
}

} // namespace

std::vector<CategoryRules> CollectRules(CQdDeConfigPresenter& presenter, const CString& spec,
                                        const CString& filter)
{
    std::vector<CategoryRules> selected;
    bool known = false;
    for (const BigCategory& big : ReadSpecialty(spec).big) {
        for (const SmallCategory& small : big.small) {
            if (filter != spec && !Selects(filter, small)) continue;
            known = true;
            CategoryRules category{small, {}};
            if (presenter.GetConfig(small.path, category.rules)) selected.push_back(std::move(category));
        }
    }
    if (!known) throw Refusal(u"专业“%1”中没有类别“%2”（其他专业用 --spec 指明）"_s.arg(spec, filter));
    if (selected.empty()) throw Refusal(u"规则文件里专业“%1”的 id 与程序的不一致，取不到规则"_s.arg(spec));
    return selected;
}

bool HoldsNothing(const CategoryRules& category)
{
    return category.rules.size() == 1 && category.rules[0]->IfDefault() &&
           category.rules[0]->GetQd().empty() && category.rules[0]->GetDe().empty();
}

CString RuleTable(const CategoryRules& category)
{
    TextTable table;
    table.AddRow({u"序号"_s, u"编号"_s, u"条件（同时满足）"_s, u"类别"_s, u"编码"_s, u"名称"_s, u"单位"_s,
                  u"工程量"_s, u"带管道配件"_s});
    int position = 0;
    for (const ConfigNode* rule : category.rules)
        AddRule(table, ++position, *rule);
    return u"%1（%2 条规则）\n"_s.arg(category.category.text).arg(category.rules.size()) + table.ToText(2);
}

} // namespace cli
