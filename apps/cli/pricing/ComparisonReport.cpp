#include "cli/pricing/ComparisonReport.h"

#include "shared/PricingText.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// How many changed components the terminal shows.
constexpr std::uint64_t ChangesShown = 40;

/// One side of a row: its quantity, or what stands in its place.
CString QuantityOf(const std::optional<rules::BillRow>& row)
{
    if (!row) return u"—"_s;
    return row->quantity.isEmpty() ? u"缺"_s : row->quantity;
}

CString CountOf(const std::optional<rules::BillRow>& row)
{
    return row ? CString::number(row->components) : u"—"_s;
}

/// `groups` is how many columns divide the bill; quota rows leave them empty.
void AddRows(TextTable& table, const std::vector<rules::RowChange>& rows, bool isBelow, qsizetype groups)
{
    for (const rules::RowChange& change : rows) {
        const rules::BillRow& row = change.Either();
        CStringArray cells(isBelow ? groups : 0);
        if (!isBelow) cells.append(CStringArray(row.group.begin(), row.group.end()));
        cells += {KindOf(change),
                  isBelow ? u"  "_s + row.number : row.number,
                  row.name,
                  row.unit,
                  QuantityOf(change.before),
                  QuantityOf(change.after),
                  CountOf(change.before),
                  CountOf(change.after),
                  RemarkOf(change)};
        table.AddRow(cells);
        AddRows(table, change.quotas, true, groups);
    }
}

void PutSide(JsonWriter& json, const rules::ComparedSide& side)
{
    json.BeginObject();
    json.Key(u"rule").Number(side.rule + 1);
    json.Key(u"text").Text(side.ruleText);
    json.Key(u"refusal").Text(shared::RefusalText(side.refusal));
    json.Key(u"items").BeginArray();
    for (const rules::ComparedItem& item : side.items) {
        json.BeginObject();
        json.Key(u"kind").Text(item.isBelow ? u"quota" : u"item");
        json.Key(u"number").Text(item.number);
        json.Key(u"name").Text(item.name);
        json.Key(u"unit").Text(item.unit);
        json.Key(u"quantity").Text(shared::QuantityIn(item.quantity, item.unit));
        json.Key(u"fault").Text(shared::FaultText(item.quantity));
        json.EndObject();
    }
    json.EndArray().EndObject();
}

void PutRowSide(JsonWriter& json, QStringView key, const std::optional<rules::BillRow>& row)
{
    if (!row) return;
    json.Key(key).BeginObject();
    json.Key(u"quantity").Text(row->quantity);
    json.Key(u"components").Number(static_cast<qint64>(row->components));
    json.Key(u"missing").Number(static_cast<qint64>(row->missing));
    json.Key(u"withFittings").Bool(row->withFittings);
    json.Key(u"features").BeginObject();
    for (const rules::Feature& feature : row->features)
        json.Key(feature.attribute).Text(feature.text);
    json.EndObject().EndObject();
}

} // namespace

CString RuleOf(const rules::ComparedSide& side)
{
    if (side.refusal != rules::Refusal::None && side.rule == rules::NoRule)
        return shared::RefusalText(side.refusal);
    const CString rule = u"第 %1 条 %2"_s.arg(side.rule + 1).arg(side.ruleText);
    return side.refusal == rules::Refusal::None ? rule
                                                : rule + u'（' + shared::RefusalText(side.refusal) + u'）';
}

CString ItemsOf(const rules::ComparedSide& side)
{
    CStringArray items;
    for (const rules::ComparedItem& item : side.items)
        items.append(item.number + u' ' +
                     (item.quantity.IsKnown()
                          ? shared::QuantityIn(item.quantity, item.unit) + u' ' + item.unit
                          : u"缺"_s));
    return items.isEmpty() ? u"没有项"_s : items.join(u'；');
}

void ChangedComponents::Take(const rules::PricedRow& priced, const rules::ComponentChange& change)
{
    if (m_count++ >= ChangesShown) return;
    const CString place = u"第 %1 行"_s.arg(priced.row.line);
    m_table.AddRow({place, priced.row.id.toString(), u"原"_s, RuleOf(change.before), ItemsOf(change.before)});
    m_table.AddRow({CString(), CString(), u"改"_s, RuleOf(change.after), ItemsOf(change.after)});
}

CString ChangedComponents::Text() const
{
    if (m_count == 0) return {};
    CString text = u"变化的构件：\n"_s + m_table.ToText(2);
    if (m_count > ChangesShown)
        text += u"  另有 %1 个，全部见工作簿（-o 清单.xlsx）或 --json。\n"_s.arg(m_count - ChangesShown);
    return text + u'\n';
}

CString KindOf(const rules::RowChange& row)
{
    return !row.before ? u"新增"_s : !row.after ? u"取消"_s : u"变化"_s;
}

CString RemarkOf(const rules::RowChange& row)
{
    if (!row.before || !row.after) return {};
    const rules::BillRow& before = *row.before;
    const rules::BillRow& after = *row.after;
    const auto yesNo = [](bool is) { return is ? u"是"_s : u"否"_s; };
    CStringArray remarks;
    if (before.features != after.features) remarks.append(u"项目特征不同"_s);
    if (before.withFittings != after.withFittings)
        remarks.append(u"带管道配件：%1→%2"_s.arg(yesNo(before.withFittings), yesNo(after.withFittings)));
    if (before.missing != after.missing)
        remarks.append(u"缺工程量的构件：%1→%2"_s.arg(before.missing).arg(after.missing));
    if (before.quantity == after.quantity && before.sum != after.sum) remarks.append(u"取位前的工程量不同"_s);
    return remarks.join(u"；"_s);
}

CString ChangedRowsText(const std::vector<rules::RowChange>& rows, const CStringArray& groupBy)
{
    if (rows.empty()) return {};
    TextTable table;
    table.AddRow(groupBy + CStringArray{u"变化"_s, u"项目编码"_s, u"项目名称"_s, u"计量单位"_s, u"原工程量"_s,
                                        u"新工程量"_s, u"原构件数"_s, u"新构件数"_s, u"备注"_s});
    AddRows(table, rows, false, groupBy.size());
    return u"变化的清单行：\n"_s + table.ToText(2) + u'\n';
}

void PutChange(JsonWriter& json, const rules::PricedRow& priced, const rules::ComponentChange& change)
{
    json.BeginObject();
    json.Key(u"line").Number(priced.row.line);
    json.Key(u"id").Text(priced.row.id);
    json.Key(u"category").Text(priced.row.category);
    json.Key(u"before");
    PutSide(json, change.before);
    json.Key(u"after");
    PutSide(json, change.after);
    json.EndObject();
}

void PutRows(JsonWriter& json, const std::vector<rules::RowChange>& rows, const CStringArray& groupBy)
{
    json.BeginArray();
    for (const rules::RowChange& change : rows) {
        const rules::BillRow& row = change.Either();
        json.BeginObject();
        if (!groupBy.isEmpty() && !row.group.empty()) {
            json.Key(u"group").BeginObject();
            for (qsizetype i = 0; i < groupBy.size(); ++i)
                json.Key(groupBy[i]).Text(row.group[static_cast<std::size_t>(i)]);
            json.EndObject();
        }
        json.Key(u"number").Text(row.number);
        json.Key(u"name").Text(row.name);
        json.Key(u"unit").Text(row.unit);
        PutRowSide(json, u"before", change.before);
        PutRowSide(json, u"after", change.after);
        json.Key(u"remark").Text(RemarkOf(change));
        json.Key(u"quotas");
        PutRows(json, change.quotas, {});
        json.EndObject();
    }
    json.EndArray();
}

} // namespace cli
