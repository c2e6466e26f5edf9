#pragma once

#include <QtCore/QList>
#include <QtWidgets/QMainWindow>

class QAction;
class QDockWidget;

namespace editor {

/// A page with docks around its middle: arranged by the user, remembered, and gone to by keys.
class DockPage : public QMainWindow
{
public:
    DockPage();

    /// Adds a dock at an edge, closed or not; those at one edge share it as tabs. Its content scrolls where
    /// it has not the height that it needs. Gives it.
    QDockWidget* AddDock(const QString& name, const QString& title, QWidget* content,
                         Qt::DockWidgetArea area);
    /// The commands that go to a dock, whether it is closed or stands behind another, each with a key.
    const QList<QAction*>& DockCommands() const noexcept { return m_dockCommands; }
    /// All of them, and the one of that name, which must be there.
    QList<QDockWidget*> Docks() const;
    QDockWidget* FindDock(const QString& name) const;
    /// How wide, or at the bottom how high, docks are when the page is first seen, in pixels. A former
    /// arrangement that is restored counts instead.
    void SetFirstSizes(const QList<QDockWidget*>& docks, const QList<int>& sizes);
    bool Restore(const QByteArray& layout, int version);

protected:
    void showEvent(QShowEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void AddDockCommand(QDockWidget& dock, QWidget& panel);

    QList<QAction*> m_dockCommands;
    QList<QDockWidget*> m_docks;      ///< in the order in which they came
    QList<QDockWidget*> m_firstDocks; ///< until they have their first sizes
    QList<int> m_firstSizes;
};

} // namespace editor
