#pragma once

#include "editor/help/ManualPages.h"
#include "editor/help/ManualSearch.h"

#include <QtWidgets/QWidget>

#include <functional>
#include <optional>
#include <utility>

class QAction;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;
class QUrl;

namespace editor {

class ManualView;

/// The manual in a window of its own: contents and hits of a search at the left, the page at the right.
/// Stands beside the program's other windows and can be used while one of these is modal. Does not keep the
/// program running.
class ManualWindow : public QWidget
{
public:
    /// Reads the manual at its first showing. `browse` opens links that leave the program, the user's browser
    /// unless another is given.
    explicit ManualWindow(std::function<void(const QUrl&)> browse = {});
    ~ManualWindow() override;

    /// Shows the window with a page and heading, see `ManualPages::PlaceOf`; with the first page for a topic
    /// that is not there.
    void Show(const QString& topic);
    /// Looks for words, as if they had been typed.
    void Search(const QString& words);

    /// What is shown: the page, and the heading that was asked for or has been scrolled to.
    ManualPlace Place() const { return {m_path, m_anchor}; }

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A place that was looked at.
    struct Visit
    {
        QString path;
        int position = 0; ///< of the text at the top
    };

    void Read();
    QWidget* MakeBar();
    QTreeWidget* MakeTree(const QString& name);
    QAction* AddCommand(const QString& text, const QString& tip, const QKeySequence& keys,
                        const std::function<void()>& step);
    void FillContents();
    void FillHits();

    /// Goes to a place and remembers the one before.
    void GoTo(const ManualPlace& place);
    void ShowPage(const QString& path);
    void FollowLink(const QUrl& link);
    void Back();
    void Forward();
    Visit Here() const;
    void Return(const Visit& visit);

    void Find();
    void GoToHit(qsizetype number);
    void StepHit(int step);
    void MarkHits();
    void ShowCount();
    void NoteScrolling();
    void SelectInContents();
    bool TakeSearchKey(QKeyEvent& event);
    void EnableCommands();
    /// Lets the window be used beside the modal window that is open, if one is.
    void StandBesideModalWindow();

    std::function<void(const QUrl&)> m_browse;
    std::optional<ManualPages> m_pages;
    ManualView* m_view;
    QStackedWidget* m_lists;
    QTreeWidget* m_contents;
    QTreeWidget* m_hitList;
    QLineEdit* m_words;
    QLabel* m_count;
    QAction* m_back = nullptr;
    QAction* m_forward = nullptr;
    QAction* m_next = nullptr;
    QAction* m_previous = nullptr;
    QString m_path;
    QString m_anchor;
    QList<Visit> m_past;
    QList<Visit> m_future;
    QList<ManualHits> m_hits;
    QList<std::pair<qsizetype, qsizetype>> m_hitOrder; ///< page and place of each hit, by their indexes
    qsizetype m_hit = -1;
    bool m_isSelecting = false; ///< a list follows the page, not the page a list
};

} // namespace editor
