#include "cli/pricing/BillChange.h"
#include "cli/pricing/PricingJson.h"
#include "platform/Paths.h"
#include "shared/Outcomes.h"
#include "shared/PricingText.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using tables::ColumnKind;

/// The components once more, with what changes for each.
void PriceBothAgain(rules::TakeoffPricing& pricing, BillChange& change, const embedded::Progress& progress,
                    const std::function<void(const rules::PricedRow&, const rules::ComponentChange&)>& take)
{
    change.comparison.Begin();
    pricing.PriceAgain(shared::WatchFor(progress, [&](const rules::PricedRow& priced) {
        if (const auto changed = change.comparison.Take(priced)) take(priced, *changed);
    }));
}

void PutNumber(tables::TableWriter& writer, const CString& text)
{
    const auto number = rules::Decimal::Parse(text);
    number ? writer.Number(number->ToText()) : writer.Empty();
}

void PutSide(tables::TableWriter& writer, const std::optional<rules::BillRow>& row)
{
    if (!row) {
        for (int cell = 0; cell < 3; ++cell)
            writer.Empty();
        return;
    }
    PutNumber(writer, row->quantity);
    writer.Number(CString::number(row->components));
    writer.Text(row->FeatureText());
}

void PutRowLines(tables::TableWriter& writer, const std::vector<rules::RowChange>& rows, bool isBelow,
                 qsizetype groups)
{
    for (const rules::RowChange& change : rows) {
        const rules::BillRow& row = change.Either();
        for (qsizetype i = 0; i < groups; ++i)
            isBelow ? writer.Empty() : writer.Text(row.group[static_cast<std::size_t>(i)]);
        writer.Text(KindOf(change));
        writer.Text(isBelow ? u"定额"_s : u"项"_s);
        writer.Text(row.number);
        writer.Text(row.name);
        writer.Text(row.unit);
        PutSide(writer, change.before);
        PutSide(writer, change.after);
        const CString remark = RemarkOf(change);
        remark.isEmpty() ? writer.Empty() : writer.Text(remark);
        writer.EndRow();
        PutRowLines(writer, change.quotas, true, groups);
    }
}

void PutTotals(JsonWriter& json, QStringView key, const CString& file, const rules::Totals& totals)
{
    json.Key(key).BeginObject();
    json.Key(u"config").Text(file);
    PutTotals(json, totals);
    json.EndObject();
}

} // namespace

void PriceBoth(rules::TakeoffPricing& pricing, BillChange& change, const embedded::Progress& progress,
               const std::function<void(const rules::PricedRow&)>& take, const std::function<void()>& begin)
{
    const auto both = [&](const rules::PricedRow& priced) {
        if (take) take(priced);
        if (const auto changed = change.comparison.Take(priced)) change.components.Take(priced, *changed);
    };
    const auto anew = [&] {
        if (begin) begin();
        change.comparison.Begin();
        change.components.Clear();
    };
    pricing.Price(shared::WatchFor(progress, both, anew));
    change.componentsCount = change.comparison.ChangedComponents();
    change.after = change.comparison.After();
    change.rows = change.comparison.Rows(pricing.Result(), change.after);
}

CString ChangeText(const BillChange& change, const rules::TakeoffPricing& pricing)
{
    const rules::Totals& before = pricing.Result().totals;
    const CString files = u"原：%1\n改：%2\n\n"_s.arg(change.beforeFile, change.afterFile);
    if (change.componentsCount == 0 && change.rows.empty())
        return files + u"没有变化：%1 个构件套的规则和项都相同，清单 %2 行都相同。\n"_s.arg(before.in).arg(
                           pricing.Result().rows.size());
    return files + ChangedRowsText(change.rows, pricing.Job().groupBy) + change.components.Text() +
           u"变化的构件 %1 个，变化的清单行 %2 行\n原：%3\n改：%4\n"_s.arg(
               CString::number(change.componentsCount), CString::number(change.rows.size()),
               shared::TotalsText(before), shared::TotalsText(change.after.totals));
}

void PutBillChange(JsonWriter& json, BillChange& change, rules::TakeoffPricing& pricing,
                   const embedded::Progress& progress)
{
    json.BeginObject();
    json.Key(u"table").Text(platform::ToNative(pricing.Job().table));
    PutTotals(json, u"before", change.beforeFile, pricing.Result().totals);
    PutTotals(json, u"after", change.afterFile, change.after.totals);
    json.Key(u"changedComponents").Number(static_cast<qint64>(change.componentsCount));
    json.Key(u"rows");
    PutRows(json, change.rows, pricing.Job().groupBy);
    json.Key(u"components").BeginArray();
    PriceBothAgain(pricing, change, progress, [&](const rules::PricedRow& priced, const auto& changed) {
        PutChange(json, priced, changed);
    });
    json.EndArray().EndObject();
}

CString ChangeJson(BillChange& change, rules::TakeoffPricing& pricing, const embedded::Progress& progress)
{
    JsonWriter json(JsonWriter::Style::Indented);
    PutBillChange(json, change, pricing, progress);
    return json.Result();
}

void PutChangeSheets(tables::TableWriter& writer, BillChange& change, rules::TakeoffPricing& pricing,
                     const embedded::Progress& progress)
{
    CArray<tables::Column> columns;
    for (const CString& name : pricing.Job().groupBy)
        columns.append({.heading = name});
    columns += {{.heading = u"变化"_s, .width = 6},
                {.heading = u"类型"_s, .width = 6},
                {.heading = u"项目编码"_s, .width = 16},
                {.heading = u"项目名称"_s, .width = 30},
                {.heading = u"计量单位"_s, .width = 10},
                {.heading = u"原工程量"_s, .kind = ColumnKind::Number, .width = 14},
                {.heading = u"原构件数"_s, .kind = ColumnKind::Number, .width = 10},
                {.heading = u"原项目特征"_s, .width = 30},
                {.heading = u"新工程量"_s, .kind = ColumnKind::Number, .width = 14},
                {.heading = u"新构件数"_s, .kind = ColumnKind::Number, .width = 10},
                {.heading = u"新项目特征"_s, .width = 30},
                {.heading = u"备注"_s, .width = 30}};
    writer.BeginSheet(u"清单变化"_s, columns);
    PutRowLines(writer, change.rows, false, pricing.Job().groupBy.size());
    writer.BeginSheet(u"构件变化"_s, {{.heading = u"行"_s, .kind = ColumnKind::Number, .width = 8},
                                      {.heading = u"构件编号"_s, .width = 16},
                                      {.heading = u"类别"_s, .width = 28},
                                      {.heading = u"原规则"_s, .width = 40},
                                      {.heading = u"新规则"_s, .width = 40},
                                      {.heading = u"原套项"_s, .width = 40},
                                      {.heading = u"新套项"_s, .width = 40}});
    PriceBothAgain(pricing, change, progress, [&](const rules::PricedRow& priced, const auto& changed) {
        writer.Number(CString::number(priced.row.line));
        writer.Text(priced.row.id);
        writer.Text(priced.row.category);
        writer.Text(RuleOf(changed.before));
        writer.Text(RuleOf(changed.after));
        writer.Text(ItemsOf(changed.before));
        writer.Text(ItemsOf(changed.after));
        writer.EndRow();
    });
}

} // namespace cli
