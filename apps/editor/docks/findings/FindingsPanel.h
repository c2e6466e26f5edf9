#pragma once

#include "editor/docks/findings/FindingsWatch.h"

#include <QtWidgets/QWidget>

#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QPushButton;
class QTreeView;

namespace editor {

class FindingsModel;

/// The list of findings: of the chosen category or of the file, from a severity on. A click or Enter goes to
/// the rule, and buttons do what a finding proposes, each as one edit that can be undone.
class FindingsPanel : public QWidget
{
    Q_OBJECT

public:
    /// Both must outlive this.
    FindingsPanel(WorkSession& session, FindingsWatch& watch, QWidget* parent = nullptr);

    /// Lists those of the file, or those of the chosen category.
    void ShowFile(bool ofFile);

protected:
    void changeEvent(QEvent* event) override;

private:
    void Build();
    void BuildList();
    QWidget* BuildFilters();
    QWidget* BuildButtons();
    void Connect();
    void Relist();
    void ShowState();
    void ShowChosen();
    void GoToChosen();
    void MendChosen();
    void MendAll();
    bool IsOfFile() const;
    std::optional<rules::Finding> Chosen() const;
    std::vector<rules::Finding> Mendable() const;
    bool CanMendAny() const;

    WorkSession& m_session;
    FindingsWatch& m_watch;
    FindingsModel* m_model;
    QComboBox* m_scope;
    QComboBox* m_least;
    QLabel* m_state;
    QTreeView* m_list;
    QLabel* m_explanation;
    QPushButton* m_mend;
    QPushButton* m_mendAll;
    CString m_listed;                       ///< the category whose findings are; empty for the file
    std::optional<rules::Finding> m_chosen; ///< the one that the explanation is about
};

} // namespace editor
