#include "cli/pricing/TakeoffRun.h"

#include "cli/reading/Failure.h"
#include "platform/Paths.h"

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// How many components are priced between two looks at the progress.
constexpr std::uint64_t TellEvery = 256;

std::vector<std::size_t> ColumnsOf(const CStringArray& names, const rules::TakeoffReader& reader)
{
    std::vector<std::size_t> columns;
    for (const CString& name : names) {
        const auto column = reader.ColumnOf(name);
        if (!column)
            throw Refusal(u"表里没有列“%1”，现有的列：%2"_s.arg(name, reader.Headers().join(u"、"_s)));
        columns.push_back(*column);
    }
    return columns;
}

bool IsSameBill(const rules::Bill& a, const rules::Bill& b)
{
    return a.totals == b.totals && std::equal(a.rows.begin(), a.rows.end(), b.rows.begin(), b.rows.end(),
                                              [](const rules::BillRow& one, const rules::BillRow& other) {
                                                  return one.number == other.number &&
                                                         one.components == other.components &&
                                                         one.missing == other.missing && one.sum == other.sum;
                                              });
}

} // namespace

rules::Bill PriceTakeoff(const TakeoffJob& job, const embedded::Progress& progress,
                         const PricedRowVisitor& visit)
{
    rules::TakeoffReader reader(job.table,
                                {.sheet = job.sheet, .pulse = [&] { embedded::Tell(progress, 0); }});
    rules::BillBuilder builder(job.configuration, job.facts, reader.Headers(),
                               ColumnsOf(job.groupBy, reader));
    rules::TakeoffRow row;
    std::uint64_t read = 0;
    while (reader.Next(row)) {
        if (read++ % TellEvery == 0) embedded::Tell(progress, static_cast<int>(100 * reader.Progress()));
        const rules::TakeoffComponent component{row.id, row.category, row.name, row.cells};
        const rules::ComponentResult result = builder.Add(component);
        if (visit) visit({row, component, result, builder});
    }
    embedded::Tell(progress, 100); // an interrupt among the last components counts, too
    rules::Bill bill = builder.Finish();
    if (bill.totals.in != read) throw std::logic_error("components are lost between table and bill");
    return bill;
}

void PriceAgain(const TakeoffJob& job, const rules::Bill& before, const embedded::Progress& progress,
                const PricedRowVisitor& visit)
{
    if (!IsSameBill(PriceTakeoff(job, progress, visit), before))
        throw Refusal(u"%1 在计算期间变了，没有写出，请再运行一次"_s.arg(platform::ToNative(job.table)));
}

} // namespace cli
