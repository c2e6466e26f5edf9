#pragma once

#include "embedded/data/catalogue/LibraryContents.h"
#include "embedded/windows/ItemModel.h"

#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtWidgets/QDialog>

#include <initializer_list>
#include <memory>

class QHBoxLayout;
class QSplitter;

namespace embedded {

class ChapterTree;
class ItemPane;

/// What pickers of one kind remember while the program runs: how a person has arranged them.
struct PickerMemory
{
    QSize size;
    QByteArray chapters; ///< state of the splitter between chapters and items
    QByteArray lists;    ///< state of the splitter between the two lists
};

/// A modeless window in which a person picks items of a library for the parent: a tree of chapters, the items
/// beside it, and a close button. Closing hides it. Works without any host but the contents it shows.
class PickerWindow : public QDialog
{
public:
    /// `contents` outlives this. `parent` receives the messages.
    PickerWindow(QWidget& parent, const LibraryContents& contents, std::shared_ptr<PickerMemory> memory);
    /// The arrangement is remembered when the window is hidden, and here when it is still shown.
    ~PickerWindow() override;

    /// Loads the lists anew; searches are emptied and the whole library is shown.
    virtual void Load() = 0;
    /// Selects a chapter by its key (see `LibraryLists.h`); the search is emptied. An unknown one changes
    /// nothing.
    void SelectChapter(const CString& key);
    /// Enables everything but the close button.
    void EnableContent(bool enable);
    /// Places the window at the right of another, or at its left when there is no room. The other one makes
    /// way, and this one becomes narrower, rather than that it covers the other. The size that a person gave
    /// it comes back where there is room for it. Where the neighbour is a part of a window, this one stands
    /// beside that window, or else over it, but beside the part.
    void PlaceBesideWindow(QWidget& neighbour);

protected:
    void hideEvent(QHideEvent* event) override;

    const LibraryContents& Contents() const noexcept { return m_contents; }
    ChapterTree& Chapters() const noexcept { return *m_chapters; }
    /// The list beside the chapters.
    ItemPane& MainPane() const noexcept { return *m_mainPane; }
    /// The splitter that holds chapters and main list in one, and takes whatever stands below them.
    QSplitter& Lists() const noexcept { return *m_lists; }

    /// To be called at the end of the constructor of a derived class, with the buttons that pick.
    void Finish(std::initializer_list<QWidget*> buttons);
    /// Sends a quota item to the parent.
    void SendQuota(const PickerItem& quota);
    /// Sends a message to the parent and returns when it has been handled.
    void Send(int code, const void* record);

private:
    void ShowChapter();
    /// Brings the window with its frame to `m_place`.
    void TakePlace(const QMargins& frame);
    void Remember();

    const LibraryContents& m_contents;
    std::shared_ptr<PickerMemory> m_memory;
    QWidget* m_content;
    QSplitter* m_lists;
    QSplitter* m_chapterSplitter;
    ChapterTree* m_chapters;
    ItemPane* m_mainPane;
    QWidget* m_pickButtons;
    QHBoxLayout* m_buttonLine;
    QSize m_wanted; ///< as it was before it was placed
    QSize m_placed; ///< as the last place allowed
    QRect m_place;  ///< the last one, frame included
};

} // namespace embedded
