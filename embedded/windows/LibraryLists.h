#pragma once

#include "embedded/data/catalogue/LibraryContents.h"
#include "embedded/windows/ChapterTree.h"
#include "embedded/windows/ItemModel.h"

#include <QtCore/QHash>

#include <vector>

namespace embedded {

/// The libraries as the pickers list them. Items name their chapter by its position.

/// Chapters of the bill library. Keys are index positions: levels joined by full stops.
std::vector<Chapter> BillChapters(const LibraryContents& contents);
std::vector<PickerItem> BillItems(const LibraryContents& contents);

/// Chapters of the quota library. "示10-1" stands under "示10".
std::vector<Chapter> QuotaChapters(const LibraryContents& contents);
std::vector<PickerItem> QuotaItems(const LibraryContents& contents);

/// By the number of a bill item: the positions in `QuotaItems` of the quotas that usually stand under it.
QHash<CString, std::vector<int>> QuotasOfBills(const LibraryContents& contents);

} // namespace embedded
