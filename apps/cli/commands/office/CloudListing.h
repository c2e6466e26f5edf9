#pragma once

#include "shared/OfficeFiles.h"

/// What an office has published, as tables and as JSON.
namespace cli {

CString EntryTable(const CArray<shared::OfficeEntry>& entries);
CString EntryJson(const CArray<shared::OfficeEntry>& entries, embedded::ProjectOffice& office);

CString LogTable(const CArray<embedded::PublishedVersion>& versions);
CString LogJson(const CArray<embedded::PublishedVersion>& versions, const CString& configuration);

} // namespace cli
