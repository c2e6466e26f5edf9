#pragma once

#include "cli/pricing/ComparisonReport.h"
#include "tables/TableWriter.h"

#include <functional>
#include <utility>

/// A bill by two configurations: the second one is priced along with the first.
namespace cli {

/// The second configuration and what came of it.
struct BillChange
{
    BillChange(const rules::TakeoffJob& job, rules::ConfigurationPtr other, CString first, CString second)
        : comparison(std::move(other), job.facts), beforeFile(std::move(first)), afterFile(std::move(second))
    {
    }

    rules::BillComparison comparison;
    CString beforeFile; ///< native paths
    CString afterFile;
    ChangedComponents components;      ///< the first of them
    std::uint64_t componentsCount = 0; ///< all that change
    rules::Bill after;
    std::vector<rules::RowChange> rows;
};

/// Prices the table by both. Raises what `rules::TakeoffPricing` raises.
void PriceBoth(rules::TakeoffPricing& pricing, BillChange& change, const embedded::Progress& progress,
               const std::function<void(const rules::PricedRow&)>& take = {},
               const std::function<void()>& begin = {});

/// Which components and rows change, as a terminal shows it; that nothing does, where that is so.
CString ChangeText(const BillChange& change, const rules::TakeoffPricing& pricing);

/// The same with every component, as a JSON object. Reads the table again.
void PutBillChange(JsonWriter& json, BillChange& change, rules::TakeoffPricing& pricing,
                   const embedded::Progress& progress);
/// That object as a text of its own.
CString ChangeJson(BillChange& change, rules::TakeoffPricing& pricing, const embedded::Progress& progress);

/// Adds two sheets to a workbook: the rows that change and the components that do. Reads the table again.
void PutChangeSheets(tables::TableWriter& writer, BillChange& change, rules::TakeoffPricing& pricing,
                     const embedded::Progress& progress);

} // namespace cli
