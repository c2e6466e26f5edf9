#pragma once

#include "editor/help/ManualPages.h"

namespace editor {

/// Where words stand on a page of the manual.
struct ManualHits
{
    const ManualPage* page = nullptr; ///< never null; belongs to the pages that were searched
    QList<int> places;                ///< positions in the text of the page, ascending; never empty
};

/// All pages in which the words stand, in any letter case, in the order of the manual. None for no words.
QList<ManualHits> FindInManual(const ManualPages& pages, const QString& words);

/// The line around a place, short enough for a list.
QString LineAround(const ManualPage& page, int place, int length);

} // namespace editor
