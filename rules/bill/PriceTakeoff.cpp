#include "rules/bill/PriceTakeoff.h"

#include "platform/Paths.h"
#include "rules/takeoff/TakeoffAhead.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// How many components are priced between two looks at the progress.
constexpr std::uint64_t TellEvery = 256;

std::vector<std::size_t> ColumnsOf(const CStringArray& names, const TakeoffReader& reader)
{
    std::vector<std::size_t> columns;
    for (const CString& name : names) {
        const auto column = reader.ColumnOf(name);
        if (!column)
            throw NoSuchColumn(u"表里没有列“%1”，现有的列：%2"_s.arg(name, reader.Headers().join(u"、"_s)));
        columns.push_back(*column);
    }
    return columns;
}

void Tell(const TakeoffWatch& watch, double progress)
{
    if (watch.progress) watch.progress(progress);
}

/// Goes over the table once.
Bill Run(const TakeoffJob& job, const TakeoffWatch& watch, IdCheck& ids)
{
    TakeoffReader reader(job.table, {.sheet = job.sheet, .pulse = [&] { Tell(watch, 0); }});
    BillBuilder builder(job.configuration, job.facts, reader.Headers(), ColumnsOf(job.groupBy, reader));
    builder.CheckIdsBy(ids);
    if (watch.begin) watch.begin();
    ComponentResult result;
    std::uint64_t read = 0;
    TakeoffAhead ahead(reader);
    while (const TakeoffRow* const row = ahead.Next()) {
        if (read++ % TellEvery == 0) Tell(watch, ahead.Progress());
        const TakeoffComponent component{row->id, row->category, row->name, row->cells};
        builder.Add(component, result);
        if (watch.take) watch.take({*row, component, result, builder});
    }
    Tell(watch, 1); // an interrupt among the last components counts, too
    Bill bill = builder.Finish();
    if (bill.totals.in != read) throw std::logic_error("components are lost between table and bill");
    return bill;
}

bool IsSameBill(const Bill& a, const Bill& b)
{
    return a.totals == b.totals && std::equal(a.rows.begin(), a.rows.end(), b.rows.begin(), b.rows.end(),
                                              [](const BillRow& one, const BillRow& other) {
                                                  return one.number == other.number &&
                                                         one.components == other.components &&
                                                         one.missing == other.missing && one.sum == other.sum;
                                              });
}

} // namespace

NoSuchColumn::NoSuchColumn(const CString& reason) : std::runtime_error(reason.toStdString()) {}
NoSuchColumn::~NoSuchColumn() = default;

TakeoffChanged::TakeoffChanged(const CString& reason) : std::runtime_error(reason.toStdString()) {}
TakeoffChanged::~TakeoffChanged() = default;

TakeoffPricing::TakeoffPricing(TakeoffJob job) : m_job(std::move(job)) {}
TakeoffPricing::~TakeoffPricing() = default;

const Bill& TakeoffPricing::Price(const TakeoffWatch& watch)
{
    HashedIds hashed;
    m_bill = Run(m_job, watch, hashed);
    m_repeated = hashed.Repeated();
    if (!m_repeated.empty()) {
        SuspectedIds suspected(m_repeated);
        m_bill = Run(m_job, watch, suspected);
    }
    return m_bill;
}

void TakeoffPricing::PriceAgain(const TakeoffWatch& watch)
{
    SuspectedIds suspected(m_repeated);
    if (!IsSameBill(Run(m_job, watch, suspected), m_bill))
        throw TakeoffChanged(
            u"%1 在计算期间变了，没有写出，请再运行一次"_s.arg(platform::ToNative(m_job.table)));
}

} // namespace rules
