#pragma once

#include "editor/session/WorkSession.h"
#include "rules/check/Finding.h"

#include <QtWidgets/QWidget>

#include <functional>
#include <map>
#include <memory>
#include <optional>

class QComboBox;
class QLineEdit;
class QStandardItem;
class QStandardItemModel;
class QSortFilterProxyModel;
class QTreeView;

namespace editor {

/// The specialties of the open file with the number of their rules, and the categories of the chosen one,
/// each with the number of its rules and a mark for findings. Typing in the list goes to a category, typing
/// in the field above leaves those that hold what is typed. What is chosen is chosen in the session.
class CategoryPanel : public QWidget
{
public:
    /// The worst finding of a category, given its text.
    using SeverityOf = std::function<std::optional<rules::Severity>(const CString& category)>;

    /// `session` must outlive this.
    explicit CategoryPanel(WorkSession& session, QWidget* parent = nullptr);

    void SetSeverities(SeverityOf severities) { m_severities = std::move(severities); }
    /// The marks of these categories may be others now.
    void ShowMarks(const QStringList& categories);
    void FocusList();
    /// Called when the user goes on from a small category, by Enter or a double click.
    void OnEntered(std::function<void()> goOn) { m_entered = std::move(goOn); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Build();
    void FillSpecialties();
    void FillCategories();
    std::unique_ptr<QStandardItem> MakeBigCategory(const rules::BigCategory& big);
    void ShowCategory(const CString& category);
    void ShowChoice();
    void TakeChoice();

    WorkSession& m_session;
    SeverityOf m_severities = [](const CString&) { return std::nullopt; };
    std::function<void()> m_entered = [] {};
    QComboBox* m_specialties;
    QLineEdit* m_filter;
    QTreeView* m_tree;
    QStandardItemModel* m_model;
    QSortFilterProxyModel* m_shown;
    std::map<CString, QStandardItem*> m_items; ///< by category text, those of the name column
    bool m_isFilling = false;
};

} // namespace editor
