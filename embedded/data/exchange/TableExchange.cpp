#include "embedded/data/exchange/TableExchange.h"

#include <utility>

namespace embedded {

TableExchange::TableExchange(CArray<ImportColumn> columns) : m_columns(std::move(columns)) {}

TableExchange::~TableExchange() = default;

void TableExchange::Prepare(Database& /*database*/) {}

void TableExchange::RequireTarget() const {}

void TableExchange::Begin(bool replace)
{
    RequireTarget();
    m_replaces = replace;
    if (replace) Clear();
}

void Count(KeyedTable::Change change, ImportReport& report)
{
    if (change == KeyedTable::Change::Added) ++report.added;
    if (change == KeyedTable::Change::Changed) ++report.changed;
}

KeyedTable::Change Stronger(KeyedTable::Change left, KeyedTable::Change right)
{
    return left == KeyedTable::Change::None ? right : left;
}

} // namespace embedded
