#pragma once

#include "cli/printing/JsonWriter.h"
#include "cli/printing/TextTable.h"
#include "rules/bill/BillComparison.h"
#include "shared/TakeoffRun.h"

/// What two configurations make of one table, for people and programs.
namespace cli {

/// A rule with its place and text, or why there is none: 第 3 条 材质＝钢管.
CString RuleOf(const rules::ComparedSide& side);

/// The items of a component in one line, with their quantities.
CString ItemsOf(const rules::ComparedSide& side);

/// Gathers the first changed components, for the terminal.
class ChangedComponents
{
public:
    void Clear() { *this = {}; }
    void Take(const rules::PricedRow& priced, const rules::ComponentChange& change);
    CString Text() const;

private:
    TextTable m_table;
    std::uint64_t m_count = 0;
};

/// Which rows of the bill change, as a table. Empty when none does.
CString ChangedRowsText(const std::vector<rules::RowChange>& rows, const CStringArray& groupBy);

/// What a changed row is: 新增, 取消 or 变化.
CString KindOf(const rules::RowChange& row);

/// What changes of a row that stays, beyond quantity and number of components; empty for nothing.
CString RemarkOf(const rules::RowChange& row);

/// One changed component as a JSON object.
void PutChange(JsonWriter& json, const rules::PricedRow& priced, const rules::ComponentChange& change);
/// The changed rows as a JSON list.
void PutRows(JsonWriter& json, const std::vector<rules::RowChange>& rows, const CStringArray& groupBy);

} // namespace cli
