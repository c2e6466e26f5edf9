#pragma once

#include "embedded/data/sqlite/Progress.h"
#include "rules/bill/BillBuilder.h"
#include "rules/takeoff/TakeoffReader.h"

#include <functional>

namespace cli {

/// A take-off table and what it is priced by.
struct TakeoffJob
{
    CString table;        ///< path text
    CString sheet;        ///< of a workbook; empty for the first one
    CStringArray groupBy; ///< columns by which the bill is divided
    rules::ConfigurationPtr configuration;
    rules::PricingFacts facts;
};

/// What is told of one component while a table is priced.
struct PricedRow
{
    const rules::TakeoffRow& row;
    const rules::TakeoffComponent& component;
    const rules::ComponentResult& result;
    rules::BillBuilder& builder;
};
using PricedRowVisitor = std::function<void(const PricedRow&)>;

/// Reads the table once and prices it, in memory that grows with the bill and the ids alone. Raises
/// `tables::TableError` when it cannot be read, `Refusal` when it has no column of `groupBy`,
/// `embedded::Cancelled` when `progress` asks for it, and `std::logic_error` when not every component read is
/// accounted for.
rules::Bill PriceTakeoff(const TakeoffJob& job, const embedded::Progress& progress,
                         const PricedRowVisitor& visit = {});

/// The same a second time, for what is written of each component. Raises `Refusal` when the table is another
/// one than that of `before`.
void PriceAgain(const TakeoffJob& job, const rules::Bill& before, const embedded::Progress& progress,
                const PricedRowVisitor& visit);

} // namespace cli
