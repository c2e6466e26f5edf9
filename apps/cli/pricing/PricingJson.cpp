#include "cli/pricing/PricingJson.h"

#include "platform/Paths.h"
#include "shared/BillListing.h"
#include "shared/Outcomes.h"
#include "shared/PricingText.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

void PutRow(JsonWriter& json, const shared::BillLine& line, const rules::BillRow& top,
            const CStringArray& groupBy)
{
    const rules::BillRow& row = *line.row;
    json.BeginObject();
    json.Key(u"kind").Text(line.isQuota ? u"quota"_s : u"bill"_s);
    if (line.serial > 0) json.Key(u"serial").Number(line.serial);
    if (!groupBy.isEmpty()) {
        json.Key(u"group").BeginObject();
        for (qsizetype i = 0; i < groupBy.size(); ++i)
            json.Key(groupBy[i]).Text(top.group[static_cast<std::size_t>(i)]);
        json.EndObject();
    }
    json.Key(u"spec").Text(top.specialty);
    json.Key(u"number").Text(row.number);
    json.Key(u"name").Text(row.name);
    json.Key(u"features").BeginObject();
    for (const rules::Feature& feature : row.features)
        json.Key(feature.attribute).Text(feature.text);
    json.EndObject();
    json.Key(u"unit").Text(row.unit);
    json.Key(u"quantity").Text(row.quantity);
    json.Key(u"components").Number(static_cast<qint64>(row.components));
    json.Key(u"missing").Number(static_cast<qint64>(row.missing));
    json.Key(u"numberRepeated").Bool(row.numberRepeated);
    json.Key(u"withFittings").Bool(row.withFittings);
    json.EndObject();
}

void PutTold(JsonWriter& json, const rules::PricedRow& priced)
{
    const CStringArray told = shared::ToldOf(priced.row, priced.component, priced.result, priced.builder);
    if (told.isEmpty()) return;
    json.BeginObject();
    json.Key(u"line").Number(priced.row.line);
    json.Key(u"id").Text(priced.row.id);
    json.Key(u"category").Text(priced.row.category);
    json.Key(u"outcome").Text(shared::OutcomeWord(priced.result.outcome));
    json.Key(u"told").BeginArray();
    for (const CString& text : told)
        json.Text(text);
    json.EndArray().EndObject();
}

void PutQuantity(JsonWriter& json, const rules::BillRow& row, const rules::Quantity& quantity)
{
    json.Key(u"number").Text(row.number);
    json.Key(u"name").Text(row.name);
    json.Key(u"unit").Text(row.unit);
    json.Key(u"quantity").Text(shared::QuantityIn(quantity, row.unit));
    json.Key(u"fault").Text(shared::FaultText(quantity));
}

void PutItems(JsonWriter& json, const rules::ComponentResult& result, const rules::Bill& bill)
{
    json.Key(u"items").BeginArray();
    for (const rules::ItemLine& line : result.lines) {
        const rules::BillRow& row = bill.rows[line.row];
        json.BeginObject();
        PutQuantity(json, row, line.quantity);
        json.Key(u"quotas").BeginArray();
        for (const rules::ItemLine& quota : line.quotas) {
            json.BeginObject();
            PutQuantity(json, row.quotas[quota.row], quota.quantity);
            json.EndObject();
        }
        json.EndArray().EndObject();
    }
    json.EndArray();
}

void PutMisses(JsonWriter& json, const rules::Trace& trace, const rules::SmallCategory& category)
{
    json.Key(u"before").BeginArray();
    for (const rules::RuleTrace* const miss : shared::NearestFirst(trace, category)) {
        const rules::Rule& rule = category.rules[static_cast<std::size_t>(miss->rule)];
        json.BeginObject();
        json.Key(u"rule").Number(miss->rule + 1);
        json.Key(u"text").Text(rule.Text());
        json.Key(u"holding").Number(miss->holding);
        json.Key(u"conditions").Number(static_cast<qint64>(rule.conditions.size()));
        json.Key(u"why").Text(shared::MissText(*miss, category));
        json.EndObject();
    }
    json.EndArray();
}

} // namespace

CString BillJson(rules::TakeoffPricing& pricing, const embedded::Progress& progress)
{
    const rules::Bill& bill = pricing.Result();
    const rules::TakeoffJob& job = pricing.Job();
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"table").Text(platform::ToNative(job.table));
    json.Key(u"mode").Text(job.facts.mode == rules::PricingMode::Bill ? u"bill"_s : u"quota"_s);
    json.Key(u"totals").BeginObject();
    PutTotals(json, bill.totals);
    json.EndObject();
    json.Key(u"rows").BeginArray();
    for (const shared::BillLine& line : shared::LinesOf(bill, job.facts.mode))
        PutRow(json, line, bill.rows[line.index], job.groupBy);
    json.EndArray();
    json.Key(u"told").BeginArray();
    pricing.PriceAgain(
        shared::WatchFor(progress, [&](const rules::PricedRow& priced) { PutTold(json, priced); }));
    json.EndArray().EndObject();
    return json.Result();
}

CString TrialJson(const rules::TakeoffComponent& component, const rules::ComponentResult& result,
                  const rules::Trace& trace, const rules::Bill& bill)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"category").Text(component.category);
    json.Key(u"outcome").Text(shared::OutcomeWord(result.outcome));
    if (result.rule != rules::NoRule) {
        json.Key(u"rule").Number(result.rule + 1);
        json.Key(u"text").Text(result.category->rules[static_cast<std::size_t>(result.rule)].Text());
    }
    json.Key(u"refusal").Text(shared::RefusalText(result.refusal));
    PutItems(json, result, bill);
    json.Key(u"told").BeginArray();
    for (const rules::Remark& remark : result.remarks)
        json.Text(rules::Describe(remark));
    json.EndArray();
    PutMisses(json, trace, *result.category);
    json.EndObject();
    return json.Result();
}

void PutTotals(JsonWriter& json, const rules::Totals& totals)
{
    json.Key(u"components").Number(static_cast<qint64>(totals.in));
    for (const shared::OutcomeCount& outcome : shared::CountsOf(totals))
        json.Key(outcome.word).Number(static_cast<qint64>(outcome.count));
}

} // namespace cli
