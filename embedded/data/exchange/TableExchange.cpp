#include "embedded/data/exchange/TableExchange.h"

#include "embedded/data/exchange/AttributeExchange.h"
#include "embedded/data/exchange/CalculationExchange.h"
#include "embedded/data/exchange/CatalogExchange.h"
#include "embedded/data/exchange/GuideExchange.h"
#include "embedded/data/exchange/LibraryExchange.h"
#include "embedded/data/exchange/LibraryListExchange.h"

namespace embedded {

using namespace Qt::StringLiterals;

TableExchange::~TableExchange() = default;

void TableExchange::Prepare(Database& /*database*/) {}

void SeenKeys::Take(const CString& key, int line)
{
    const auto seen = m_seen.constFind(key);
    if (seen != m_seen.constEnd()) throw RowRefused(u"与第 %1 行重复"_s.arg(seen->line));
    m_seen.insert(key, {{}, line});
}

void SeenKeys::Agree(const CString& key, const CString& value, int line)
{
    const auto seen = m_seen.constFind(key);
    if (seen == m_seen.constEnd()) {
        m_seen.insert(key, {value, line});
    } else if (seen->value != value) {
        throw RowRefused(
            u"与第 %1 行矛盾：“%2”在那里是“%3”，这里是“%4”"_s.arg(seen->line).arg(key, seen->value, value));
    }
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

std::unique_ptr<TableExchange> MakeExchange(TableKind kind, const LibraryScope& scope)
{
    switch (kind) {
    case TableKind::Catalog:
        return std::make_unique<CatalogExchange>();
    case TableKind::Attributes:
        return std::make_unique<AttributeExchange>();
    case TableKind::Bill:
        return std::make_unique<LibraryExchange>(LibraryForm::Bill(), scope);
    case TableKind::Quota:
        return std::make_unique<LibraryExchange>(LibraryForm::Quota(), scope);
    case TableKind::Guide:
        return std::make_unique<GuideExchange>(scope);
    case TableKind::Libraries:
        return std::make_unique<LibraryListExchange>();
    case TableKind::Calc:
        break;
    }
    return std::make_unique<CalculationExchange>();
}

} // namespace embedded
