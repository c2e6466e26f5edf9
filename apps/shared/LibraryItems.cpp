#include "shared/LibraryItems.h"

#include "embedded/data/catalogue/CatalogueData.h"
#include "embedded/data/catalogue/LibraryContents.h"
#include "host/NvQdInfo.h"
#include "presenter/PickedItems.h"
#include "shared/GatherPricingFacts.h"

using namespace Qt::StringLiterals;

namespace shared {

namespace {

BillNumbers BillsOf(const embedded::EmbeddedHost& host)
{
    int length = -1;
    int suffixLength = -1;
    NvQdInfo::IBillLib::GetEnCodeRule(length, suffixLength);
    return {host.Contents(), length, suffixLength};
}

} // namespace

LibraryItems::LibraryItems(const embedded::EmbeddedHost& host, bool isBillMode)
    : m_isBillMode(isBillMode), m_catalogue(host.CatalogueContents()),
      m_billLibrary(host.LibraryInUse(embedded::LibraryRole::Bill)),
      m_quotaLibrary(
          host.LibraryInUse(isBillMode ? embedded::LibraryRole::QuotaOfBills : embedded::LibraryRole::Quota)),
      m_bills(BillsOf(host)), m_measures(MeasuresOf(m_catalogue))
{
    for (const embedded::QuotaSection& section : host.Contents().quotas)
        for (const embedded::QuotaItem& item : section.items)
            if (!m_quotas.contains(item.record.strNumber))
                m_quotas.insert(item.record.strNumber, item.record);
}

rules::SheetItems LibraryItems::Items() const
{
    const auto none = [](const CString&, const CString&) { return std::optional<DeStruct>(); };
    const auto quota = [this](const CString& number, const CString& category) {
        return Quota(number, category);
    };
    rules::SheetItems items;
    items.bill = [this](const CString& number, const CString& category) { return Bill(number, category); };
    items.quotaOfBills = none;
    items.quota = none;
    (m_isBillMode ? items.quotaOfBills : items.quota) = quota;
    return items;
}

/// As the dialogs give it to a picked item.
CString LibraryItems::FormulaOf(const CString& category) const
{
    const auto measure = m_measures.find(category);
    return measure == m_measures.end() ? CString() : m_catalogue.rules.value(measure->second.item).strRule;
}

std::optional<QdStruct> LibraryItems::Bill(const CString& number, const CString& category) const
{
    const SQdInfo* const found = m_bills.Find(number);
    if (found == nullptr) return std::nullopt;
    return RecordOf(*found, number, m_billLibrary, FormulaOf(category));
}

std::optional<DeStruct> LibraryItems::Quota(const CString& number, const CString& category) const
{
    const auto found = m_quotas.constFind(number);
    if (found == m_quotas.constEnd()) return std::nullopt;
    return RecordOf(*found, m_quotaLibrary, FormulaOf(category));
}

} // namespace shared
