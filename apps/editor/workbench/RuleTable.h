#pragma once

#include "editor/workbench/RuleTableModel.h"

#include <QtWidgets/QTableView>

#include <functional>

namespace editor {

/// The table of rules. Several lines may be chosen; they are dragged to another place, and Enter or a double
/// click asks for the rule to be worked on. Home and End go to the first and the last line, since a line is
/// one thing here; with Shift they choose all up to there. Rules that a trial or a take-off speaks of are
/// marked.
class RuleTable : public QTableView
{
public:
    explicit RuleTable(RuleTableModel& model, QWidget* parent = nullptr);

    /// Runs when the user has chosen other lines.
    void OnChosen(std::function<void()> chosen) { m_chosen = std::move(chosen); }
    /// Runs when the user wants to work on the line under the cursor.
    void OnActivated(std::function<void()> activated) { m_activated = std::move(activated); }

    /// The chosen lines, rising, and the one of the cursor; -1 for none.
    std::vector<int> ChosenLines() const;
    int CurrentLine() const;
    /// Chooses lines, and brings the one of the cursor to sight. Asks nobody.
    void ChooseLines(const std::vector<int>& lines, int current);

    /// Shows or hides what only some states have.
    void ShowPlaces(bool show) { ShowColumn(RuleTableModel::PlaceColumn, show); }
    void ShowHits(bool show) { ShowColumn(RuleTableModel::HitColumn, show); }
    void ShowBills(bool show) { ShowColumn(RuleTableModel::BillColumn, show); }

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ChoiceChanged();
    void ShowColumn(int column, bool show);
    void SizeRows();
    void ShareWidth();

    RuleTableModel& m_model;
    std::function<void()> m_chosen = [] {};
    std::function<void()> m_activated = [] {};
    bool m_isQuiet = false; ///< choosing from code
    bool m_isSized = false; ///< the user has given the columns widths of his own
    bool m_isSizing = false;
};

} // namespace editor
