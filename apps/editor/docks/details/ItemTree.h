#pragma once

#include "editor/docks/details/ItemLines.h"

#include <QtCore/QPointer>
#include <QtWidgets/QTreeWidget>

#include <optional>
#include <vector>

namespace editor {

/// The bill items of the chosen rules with their quota items below, or in quota mode the quota items, edited
/// in place. Items of libraries that are not in use are shown pale, with a word, and can only be moved and
/// deleted. Of several rules it shows each number once and says in how many of them it is.
class ItemTree : public QTreeWidget
{
    Q_OBJECT

public:
    enum Column : int {
        NumberColumn,
        RulesColumn, ///< only of several rules
        NameColumn,
        UnitColumn,
        FormulaColumn,
        AnnexColumn,
        ColumnCount
    };

    /// `chosen` must outlive this.
    explicit ItemTree(const ChosenRules& chosen, QWidget* parent = nullptr);

    /// Shows the items in their present state.
    void Refresh();
    /// Takes over what is being typed; it belongs to the rule that was shown when it was begun.
    void Commit();

    /// The line that has the cursor; nothing when none has.
    std::optional<ItemLine> Current() const;
    /// The items of the selected lines, rising.
    std::vector<ItemPlace> Selected() const;
    void Choose(const ItemPlace& place);
    bool CanMove(bool down) const;

    // Edits of the only rule

    void DeleteSelected();
    void MoveCurrent(bool down);

    // For the editors of cells

    const ItemLine& LineAt(const QModelIndex& index) const;
    void SetCell(const ItemLine& line, int column, const CString& text);
    /// Closes the editor with its text taken over; one that is closed already stays so.
    void Finish(QWidget* editor);
    void Opened(QWidget* editor) { m_editor = editor; }

signals:
    /// The formula of the current item is to be edited.
    void FormulaWanted();

protected:
    /// A cell further left or right instead of a level up or down: all levels are always open.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool HasAnnex() const;
    void ShowLines(std::vector<ItemLine> lines);
    void ShowLine(QTreeWidgetItem& row, const ItemLine& line);
    void GoTo(const QTreeWidgetItem& row, int column);
    void FitColumns();
    void FitName();
    QTreeWidgetItem* RowOf(const ItemPlace& place) const;

    const ChosenRules& m_chosen;
    std::vector<ItemLine> m_lines;
    ChosenRules::Name m_shown;
    QPointer<QWidget> m_editor;
    bool m_isEntering = false;
};

} // namespace editor
