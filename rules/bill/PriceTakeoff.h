#pragma once

#include "rules/bill/BillBuilder.h"
#include "rules/takeoff/TakeoffReader.h"

#include <functional>
#include <stdexcept>

namespace rules {

/// A take-off table and what it is priced by.
struct TakeoffJob
{
    CString table;        ///< path text
    CString sheet;        ///< of a workbook; empty for the first one
    CStringArray groupBy; ///< columns by which the bill is divided
    ConfigurationPtr configuration;
    PricingFacts facts;
};

/// What is told of one component while a table is priced.
struct PricedRow
{
    const TakeoffRow& row;
    const TakeoffComponent& component;
    const ComponentResult& result;
    BillBuilder& builder;
};

/// Whoever looks on while a table is priced; any of them may be empty.
struct TakeoffWatch
{
    /// Before the first component. Once more when two ids are the same: what was told of components so far
    /// does not count then, all are told again.
    std::function<void()> begin{};
    /// Of every component, in the order of the table.
    std::function<void(const PricedRow&)> take{};
    /// Every few hundred components and while a workbook is made ready, with how much of the work is done,
    /// from 0 to 1. What it raises travels on and ends the work.
    std::function<void(double)> progress{};
};

/// A column by which a bill is to be divided is not in the table. The text names it and those that are.
class KTQDDE_RULES_EXPORT NoSuchColumn : public std::runtime_error
{
public:
    explicit NoSuchColumn(const CString& reason);
    ~NoSuchColumn() override;
};

/// A table is another one than a moment ago. The text tells it to a person.
class KTQDDE_RULES_EXPORT TakeoffChanged : public std::runtime_error
{
public:
    explicit TakeoffChanged(const CString& reason);
    ~TakeoffChanged() override;
};

/// Reads a table and prices it, in memory that grows with the rows of the bill and the ids that come twice,
/// not with the components. Every operation raises `tables::TableError` when the table cannot be read,
/// `NoSuchColumn`, `platform::FileError` when the hashes of more than a million ids find no room in a
/// temporary file, and `std::logic_error` when not every component is accounted for.
class KTQDDE_RULES_EXPORT TakeoffPricing
{
public:
    explicit TakeoffPricing(TakeoffJob job);
    ~TakeoffPricing();
    TakeoffPricing(const TakeoffPricing&) = delete;
    TakeoffPricing& operator=(const TakeoffPricing&) = delete;

    const TakeoffJob& Job() const noexcept { return m_job; }

    /// Prices the table. It is read once, and a second time when ids come twice.
    const Bill& Price(const TakeoffWatch& watch = {});
    /// The bill of `Price`.
    const Bill& Result() const noexcept { return m_bill; }
    /// Prices the table once more, for what is written of each component: `Price` has kept the bill alone.
    /// Raises `TakeoffChanged` when it comes to another bill.
    void PriceAgain(const TakeoffWatch& watch);

private:
    TakeoffJob m_job;
    Bill m_bill;
    IdHashes m_repeated; ///< of the ids that come more than once
};

} // namespace rules
