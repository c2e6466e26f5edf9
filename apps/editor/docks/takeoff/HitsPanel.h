#pragma once

#include "editor/docks/takeoff/TakeoffHits.h"

#include <QtWidgets/QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QTableView;

namespace widgets {
class NotifyingStatic;
}

namespace editor {

class ComponentsModel;

/// The components of the open take-off table that the chosen rules take, or others of them, and how many are
/// left to the default rule. Opens, reads anew and closes the table.
class HitsPanel : public QWidget
{
    Q_OBJECT

public:
    /// Both must outlive this.
    HitsPanel(WorkSession& session, TakeoffHits& hits, QWidget* parent = nullptr);

    /// Asks for a table and opens it.
    void AskForTable();
    /// The component with the cursor; nothing when there is none.
    std::optional<Component> ChosenComponent() const;

signals:
    /// The user wants to try this component.
    void TryWanted(const editor::Component& component);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* BuildButtons();
    void BuildTable();
    void Connect();
    void Relist();
    void ShowState();
    void ShowShare();
    CString StateText() const;
    std::vector<std::uint32_t> WantedRows() const;
    void GoToRule(int line);
    void GoToDefault();

    WorkSession& m_session;
    TakeoffHits& m_hits;
    ComponentsModel* m_model;
    QPushButton* m_open;
    QPushButton* m_reload;
    QPushButton* m_close;
    QPushButton* m_try;
    QComboBox* m_scope;
    QLabel* m_state;
    QLabel* m_counts;
    widgets::NotifyingStatic* m_default;
    QTableView* m_table;
    bool m_isStale = false; ///< something has changed while the panel was hidden
};

} // namespace editor
