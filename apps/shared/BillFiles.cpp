#include "shared/BillFiles.h"

#include "shared/BillListing.h"
#include "shared/Outcomes.h"
#include "shared/PricingText.h"
#include "tables/CreateTable.h"

#include <map>
#include <utility>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

using tables::ColumnKind;

const CString BillSheet = u"工程量清单"_s;

/// Where the lines of a bill stand in its sheet and which number they have there.
struct Place
{
    int serial = 0;
    qint64 sheetRow = 0;
};

void PutNumber(tables::TableWriter& writer, const CString& text)
{
    const auto number = rules::Decimal::Parse(text);
    number ? writer.Number(number->ToText()) : writer.Empty();
}

CArray<tables::Column> BillColumns(const CStringArray& groupBy)
{
    CArray<tables::Column> columns;
    for (const CString& name : groupBy)
        columns.append({.heading = name});
    columns += {{.heading = billheading::Serial.toString(), .kind = ColumnKind::Number, .width = 6},
                {.heading = billheading::Number.toString(), .width = 16},
                {.heading = billheading::Name.toString(), .width = 30},
                {.heading = billheading::Features.toString(), .width = 40},
                {.heading = billheading::Unit.toString(), .width = 10},
                {.heading = billheading::Quantity.toString(), .kind = ColumnKind::Number, .width = 14},
                {.heading = u"类型"_s, .width = 6},
                {.heading = u"构件数"_s, .kind = ColumnKind::Number, .width = 8},
                {.heading = u"缺工程量的构件数"_s, .kind = ColumnKind::Number, .width = 18},
                {.heading = u"专业"_s, .width = 10},
                {.heading = billheading::Note.toString(), .width = 24}};
    return columns;
}

/// Writes the sheet of the bill; `digits` keeps the zeros behind the point that tell the precision.
std::map<std::uint32_t, Place> PutBill(tables::TableWriter& writer, const rules::Bill& bill,
                                       const rules::TakeoffJob& job, bool digits)
{
    std::map<std::uint32_t, Place> places;
    qint64 sheetRow = 1; // the headings
    writer.BeginSheet(BillSheet, BillColumns(job.groupBy));
    for (const BillLine& line : LinesOf(bill, job.facts.mode)) {
        ++sheetRow;
        const rules::BillRow& row = *line.row;
        const rules::BillRow& top = bill.rows[line.index];
        for (const CString& cell : top.group)
            writer.Text(cell);
        if (line.serial > 0) {
            places[line.index] = {line.serial, sheetRow};
            writer.Number(CString::number(line.serial));
        } else
            writer.Empty();
        writer.Text(row.number);
        writer.Text(row.name);
        writer.Text(row.FeatureText());
        writer.Text(row.unit);
        // A negative number as text would be guarded like a formula.
        digits && !row.quantity.startsWith(u'-') ? writer.Text(row.quantity)
                                                 : PutNumber(writer, row.quantity);
        writer.Text(line.isQuota ? u"定额"_s : u"清单"_s);
        writer.Number(CString::number(row.components));
        writer.Number(CString::number(row.missing));
        writer.Text(top.specialty);
        writer.Text(line.note);
        writer.EndRow();
    }
    return places;
}

CArray<tables::Column> ComponentColumns()
{
    return {{.heading = u"行"_s, .kind = ColumnKind::Number, .width = 8},
            {.heading = u"构件编号"_s, .width = 16},
            {.heading = u"具体构件"_s, .width = 24},
            {.heading = u"类别"_s, .width = 28}};
}

/// The first cells of a row about a component.
void PutComponent(tables::TableWriter& writer, const rules::PricedRow& priced)
{
    writer.Number(CString::number(priced.row.line));
    writer.Text(priced.row.id);
    writer.Text(priced.row.name);
    writer.Text(priced.row.category);
    writer.Text(OutcomeText(priced.result.outcome));
}

void PutRule(tables::TableWriter& writer, const rules::ComponentResult& result)
{
    if (result.rule == rules::NoRule) {
        writer.Empty();
        writer.Empty();
        return;
    }
    writer.Number(CString::number(result.rule + 1));
    writer.Text(result.category->rules[static_cast<std::size_t>(result.rule)].Text());
}

/// One row for each row of the bill that a component has a part in; one for a component without.
class ComponentSheet
{
public:
    ComponentSheet(tables::TableWriter& writer, const rules::Bill& bill,
                   std::map<std::uint32_t, Place> places)
        : m_writer(writer), m_bill(bill), m_places(std::move(places))
    {
    }

    void Begin()
    {
        m_writer.BeginSheet(
            u"构件"_s,
            ComponentColumns() +
                CArray<tables::Column>{
                    {.heading = u"结果"_s, .width = 10},
                    {.heading = u"规则"_s, .kind = ColumnKind::Number, .width = 6},
                    {.heading = u"规则内容"_s, .width = 40},
                    {.heading = u"清单序号"_s, .width = 10},
                    {.heading = billheading::Number.toString(), .width = 16},
                    {.heading = billheading::Quantity.toString(), .kind = ColumnKind::Number, .width = 14},
                    {.heading = u"缺工程量的原因"_s, .width = 30}});
    }

    void Put(const rules::PricedRow& priced) const
    {
        if (priced.result.lines.empty()) {
            PutComponent(m_writer, priced);
            PutRule(m_writer, priced.result);
            m_writer.EndRow();
        }
        for (const rules::ItemLine& line : priced.result.lines) {
            PutComponent(m_writer, priced);
            PutRule(m_writer, priced.result);
            const Place& place = m_places.at(line.row);
            m_writer.Link(CString::number(place.serial), BillSheet, place.sheetRow);
            m_writer.Text(m_bill.rows[line.row].number);
            PutNumber(m_writer, QuantityIn(line.quantity, m_bill.rows[line.row].unit));
            m_writer.Text(FaultText(line.quantity));
            m_writer.EndRow();
        }
    }

private:
    tables::TableWriter& m_writer;
    const rules::Bill& m_bill;
    std::map<std::uint32_t, Place> m_places;
};

} // namespace

void WriteBillCsv(const CString& path, const rules::Bill& bill, const rules::TakeoffJob& job)
{
    const auto writer = tables::CreateTable(path);
    PutBill(*writer, bill, job, true);
    writer->Finish();
}

void WriteBillWorkbook(const CString& path, rules::TakeoffPricing& pricing,
                       const embedded::Progress& progress,
                       const std::function<void(tables::TableWriter&)>& putMore)
{
    const auto writer = tables::CreateTable(path);
    const rules::Bill& bill = pricing.Result();
    ComponentSheet components(*writer, bill, PutBill(*writer, bill, pricing.Job(), false));
    components.Begin();
    pricing.PriceAgain(WatchFor(progress, [&](const rules::PricedRow& priced) { components.Put(priced); }));
    writer->BeginSheet(u"未套价及核对"_s,
                       ComponentColumns() + CArray<tables::Column>{{.heading = u"结果"_s, .width = 10},
                                                                   {.heading = u"原因"_s, .width = 80}});
    pricing.PriceAgain(WatchFor(progress, [&](const rules::PricedRow& priced) {
        const CStringArray told = ToldOf(priced.row, priced.component, priced.result, priced.builder);
        if (told.isEmpty()) return;
        PutComponent(*writer, priced);
        writer->Text(told.join(u'；'));
        writer->EndRow();
    }));
    if (putMore) putMore(*writer);
    writer->Finish();
}

} // namespace shared
