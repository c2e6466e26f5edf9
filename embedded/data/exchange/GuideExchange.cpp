#include "embedded/data/exchange/GuideExchange.h"

#include "embedded/data/exchange/GuideTable.h"

#include <QtCore/QSet>
#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString Bill = u"bill"_s;
const CString Quota = u"quota"_s;

CString Pair(const CString& bill, const CString& quota)
{
    return bill + u'\n' + quota;
}

/// Which items of a quota library go with an item of the bill library that its guide speaks of, one pair a
/// row.
class GuideExchange final : public TableExchange
{
public:
    explicit GuideExchange(LibraryScope scope);
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    void RequireTarget() const override;
    void Clear() override;

    LibraryScope m_scope;
    KeyedTable m_bills;
    KeyedTable m_quotas;
    QHash<CString, CStringArray> m_billsOfQuota;
    QSet<CString> m_loaded; ///< pairs
    QSet<CString> m_pairs;
    SeenKeys m_seen;
};

GuideExchange::GuideExchange(LibraryScope scope)
    : TableExchange({{Bill, u"清单编号"_s, true, true}, {Quota, u"定额编号"_s, true, true}}),
      m_scope(std::move(scope)), m_bills(u"bill_items"_s, {u"number"_s}, 1), m_quotas(GuideTable())
{
}

void GuideExchange::Load(Database& database)
{
    if (!m_scope.bills.isEmpty()) m_bills.Load(database, m_scope.bills);
    m_quotas.Load(database, m_scope.library.items);
    for (const CStringArray& quota : m_quotas.Rows()) {
        const CStringArray bills = BillsOf(quota);
        m_billsOfQuota.insert(quota.first(), bills);
        for (const CString& bill : bills)
            m_pairs.insert(Pair(bill, quota.first()));
    }
    m_loaded = m_pairs;
}

QList<CStringArray> GuideExchange::Rows() const
{
    QList<CStringArray> rows;
    for (const CStringArray& quota : m_quotas.Rows()) {
        for (const CString& bill : m_billsOfQuota.value(quota.first()))
            rows.append({bill, quota.first()});
    }
    return rows;
}

void GuideExchange::RequireTarget() const
{
    if (m_scope.bills.isEmpty())
        throw RowRefused(u"定额库“%1”没有写明它的指引用哪个清单库的编号"_s.arg(m_scope.library.name.code));
}

void GuideExchange::Clear()
{
    m_pairs.clear();
    m_billsOfQuota.clear();
}

void GuideExchange::Take(const ImportRow& row, ImportReport& report)
{
    const CString bill = row.Key(Bill);
    const CString quota = row.Key(Quota);
    if (!m_bills.Has({bill})) row.Refuse(Bill, u"：清单库中没有“%1”"_s.arg(bill));
    if (!m_quotas.Has({quota})) row.Refuse(Quota, u"：定额库中没有“%1”"_s.arg(quota));
    const CString pair = Pair(bill, quota);
    m_seen.Take(pair, row.Line());
    if (m_pairs.contains(pair)) return;
    m_pairs.insert(pair);
    m_billsOfQuota[quota].append(bill);
    if (!m_loaded.contains(pair)) ++report.added;
}

void GuideExchange::Finish(ImportReport& report)
{
    const QList<CStringArray> quotas = m_quotas.Rows();
    for (CStringArray quota : quotas) {
        quota.last() = m_billsOfQuota.value(quota.first()).join(u',');
        m_quotas.Put(quota);
    }
    report.removed = static_cast<int>((m_loaded - m_pairs).size());
}

QList<const KeyedTable*> GuideExchange::Tables() const
{
    return {&m_quotas};
}

} // namespace

std::unique_ptr<TableExchange> MakeGuideExchange(LibraryScope scope)
{
    return std::make_unique<GuideExchange>(std::move(scope));
}

} // namespace embedded
