#pragma once

#include "embedded/data/host/EmbeddedHost.h"
#include "rules/bill/Coverage.h"
#include "rules/sheet/SheetItems.h"
#include "shared/BillNumbers.h"

#include <QtCore/QHash>

namespace shared {

/// The items of the project's libraries in use as records of rules, by their numbers, as the dialogs make
/// them of picked ones. The host must be installed and outlive this.
class LibraryItems
{
public:
    LibraryItems(const embedded::EmbeddedHost& host, bool isBillMode);

    /// What lines of a table ask for. Must not outlive this.
    rules::SheetItems Items() const;

private:
    CString FormulaOf(const CString& category) const;
    std::optional<QdStruct> Bill(const CString& number, const CString& category) const;
    std::optional<DeStruct> Quota(const CString& number, const CString& category) const;

    bool m_isBillMode;
    const embedded::CatalogueData& m_catalogue;
    CString m_billLibrary;
    CString m_quotaLibrary;
    BillNumbers m_bills;
    rules::Measures m_measures;
    QHash<CString, SPickedDe> m_quotas;
};

} // namespace shared
