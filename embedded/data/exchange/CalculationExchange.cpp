#include "embedded/data/exchange/CalculationExchange.h"

#include "embedded/data/catalogue/FormulaChecker.h"
#include "embedded/data/exchange/SharedColumns.h"

#include <QtCore/QSet>
#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString Item = u"item"_s;
const CString Rule = u"rule"_s;
const CString List = u"list"_s;

constexpr int FirstKind = 1;
constexpr int LastKind = 5;

/// The table's words for the two lists of a category, and those of people.
CArray<CStringArray> Lists()
{
    return {{u"main"_s, u"主要"_s}, {u"other"_s, u"其他"_s}};
}

/// Refuses an expression that the calculator would not take. Names are free: they are told by the host.
void RefuseFault(const ImportRow& row, const CString& expression)
{
    if (const auto fault = CheckFormula(expression, [](const CString&) { return true; }))
        row.Refuse(Rule, u"：第 %1 个字符：%2"_s.arg(fault->position + 1).arg(fault->text));
}

/// Calculation items with their rules, one a row for every small category that an item serves, or one without
/// a category.
class CalculationExchange final : public TableExchange
{
public:
    CalculationExchange();
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    void Clear() override;

    KeyedTable::Change TakeRule(const ImportRow& row, const CString& item);
    KeyedTable::Change TakePlace(const ImportRow& row, const CString& item, const CString& category);

    KeyedTable m_rules;
    KeyedTable m_places;
    QSet<CString> m_categories;
    QHash<CString, CString> m_itemOfCode;
    SeenKeys m_seen;
    SeenKeys m_agreed;
};

CalculationExchange::CalculationExchange()
    : TableExchange({{Item, u"计算项目"_s, true, true},
                     {Code, u"代码"_s},
                     {Kind, u"类型"_s},
                     {Rule, u"计算规则"_s},
                     {Category, u"类别"_s, false, true},
                     {List, u"列表"_s}}),
      m_rules(u"calculation_rules"_s, {Item, Code, Kind, Rule}, 1),
      m_places(u"calculation_items"_s, {Category, Item, u"list_name"_s}, 2)
{
}

void CalculationExchange::Load(Database& database)
{
    m_rules.Load(database);
    m_places.Load(database);
    for (const CStringArray& rule : m_rules.Rows())
        m_itemOfCode.insert(rule[1], rule[0]);
    KeyedTable smalls(u"small_categories"_s, {u"specialty"_s, u"big_category"_s, u"name"_s}, 3);
    smalls.Load(database);
    for (const CStringArray& small : smalls.Rows())
        m_categories.insert(small.join(u'\\'));
}

QList<CStringArray> CalculationExchange::Rows() const
{
    QList<CStringArray> rows;
    QSet<CString> placed;
    for (const CStringArray& place : m_places.Rows()) {
        const CStringArray rule = m_rules.Find({place[1]});
        const CString list = place[2] == Lists()[0][0] ? Lists()[0][1] : Lists()[1][1];
        rows.append({place[1], rule.value(1), rule.value(2), rule.value(3), place[0], list});
        placed.insert(place[1]);
    }
    for (const CStringArray& rule : m_rules.Rows()) {
        if (!placed.contains(rule[0])) rows.append(rule + CStringArray{CString(), CString()});
    }
    return rows;
}

void CalculationExchange::Clear()
{
    m_rules.Clear();
    m_places.Clear();
    m_itemOfCode.clear();
}

void CalculationExchange::Take(const ImportRow& row, ImportReport& report)
{
    const CString item = row.Key(Item);
    const CString category = row.Word(Category);
    m_seen.Take(item + u'\n' + category, row.Line());
    const auto change = TakeRule(row, item);
    Count(Stronger(change, category.isEmpty() ? change : TakePlace(row, item, category)), report);
}

KeyedTable::Change CalculationExchange::TakeRule(const ImportRow& row, const CString& item)
{
    const CStringArray loaded = m_rules.FindLoaded({item});
    CStringArray rule{item, row.Word(Code, loaded.value(1)),
                      row.Number(Kind, FirstKind, LastKind, loaded.value(2), {}),
                      row.Text(Rule, loaded.value(3))};
    const auto missing = std::count(rule.begin(), rule.end(), CString());
    if (missing == rule.size() - 1) {
        // The row only names an item that is known.
        if (m_rules.Has({item})) return KeyedTable::Change::None;
        if (loaded.isEmpty()) row.Refuse(Item, u"：没有“%1”，新项目要写明代码、类型和计算规则"_s.arg(item));
        rule = loaded;
    } else if (missing > 0) {
        row.Refuse(Item, u"“%1”的代码、类型和计算规则要都写明或都不写"_s.arg(item));
    } else {
        if (rule[3] != loaded.value(3)) RefuseFault(row, rule[3]);
        m_agreed.Agree(item, rule.mid(1).join(u' '), row.Line());
    }
    const CString owner = m_itemOfCode.value(rule[1], item);
    if (owner != item) row.Refuse(Code, u"“%1”已属于“%2”"_s.arg(rule[1], owner));
    m_itemOfCode.insert(rule[1], item);
    return m_rules.Put(rule);
}

KeyedTable::Change CalculationExchange::TakePlace(const ImportRow& row, const CString& item,
                                                  const CString& category)
{
    if (!m_categories.contains(category)) row.Refuse(Category, u"：没有小类“%1”"_s.arg(category));
    const CString usual = m_places.FindLoaded({category, item}).value(2, Lists()[0][0]);
    return m_places.Put({category, item, row.Choice(List, Lists(), usual, usual)});
}

void CalculationExchange::Finish(ImportReport& report)
{
    if (Replaces()) report.removed = m_rules.CountVanished() + m_places.CountVanished();
}

QList<const KeyedTable*> CalculationExchange::Tables() const
{
    return {&m_rules, &m_places};
}

} // namespace

std::unique_ptr<TableExchange> MakeCalculationExchange()
{
    return std::make_unique<CalculationExchange>();
}

} // namespace embedded
