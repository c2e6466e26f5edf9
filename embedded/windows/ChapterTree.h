#pragma once

#include "embedded/windows/SearchIndex.h"
#include "platform/Text.h"

#include <QtCore/QHash>
#include <QtWidgets/QTreeWidget>

#include <cstddef>
#include <functional>
#include <vector>

namespace embedded {

/// A chapter of a library.
struct Chapter
{
    CString key;    ///< names it among all chapters of its library
    CString parent; ///< key of the chapter above; empty or unknown for a chapter of the first level
    CString code;   ///< shown in front of the title
    CString title;
};

/// The chapters of a library as a tree below one item that stands for the whole library.
class ChapterTree : public QTreeWidget
{
public:
    explicit ChapterTree(QWidget* parent = nullptr);

    /// Runs after another chapter has been selected, by the user or by `Select`.
    void OnSelected(std::function<void()> handler);
    /// Runs when the user clicks a chapter, also the selected one.
    void OnClicked(std::function<void()> handler);

    /// Replaces the chapters; the whole library, named `title`, is then selected. Parents come first.
    void SetChapters(const CString& title, const std::vector<Chapter>& chapters);

    /// Selects the chapter of that key and brings it into view. False, with the selection as it was, when
    /// there is none.
    bool Select(const CString& key);

    std::size_t ChapterCount() const noexcept { return m_count; }

    /// The positions of the selected chapter and of all below it; nothing for the whole library.
    SearchIndex::Scope SelectedChapters() const;

private:
    QHash<CString, QTreeWidgetItem*> m_items;
    std::size_t m_count = 0;
};

} // namespace embedded
