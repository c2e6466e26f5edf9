#pragma once

#include "editor/docks/takeoff/Component.h"
#include "editor/docks/trial/TrialForm.h"
#include "editor/docks/trial/TrialOutcome.h"
#include "editor/docks/trial/TrialPricing.h"
#include "editor/session/WorkSession.h"

#include <QtWidgets/QWidget>

#include <functional>

class QLabel;
class QPushButton;
class QSplitter;
class QTreeView;
class QTreeWidget;

namespace widgets {
class NotifyingStatic;
}

namespace editor {

class MissesModel;

/// Tries a component that the user makes up, or takes from a take-off table, by the rules of the chosen
/// category: which one applies and what it gives, and why those before it do not. Follows every edit. While
/// nothing is filled in, or the panel is hidden, nothing is tried.
class TrialPanel : public QWidget
{
    Q_OBJECT

public:
    using ComponentSource = std::function<std::optional<Component>()>;

    /// The session must outlive this.
    explicit TrialPanel(WorkSession& session, QWidget* parent = nullptr);
    ~TrialPanel() override;

    /// Whom the button 取自构件 asks for the component that is chosen; nothing where none is.
    void SetComponentSource(ComponentSource source) { m_source = std::move(source); }
    /// Goes to the category of a component and fills in what its table says of it.
    void Take(const Component& component);
    /// Forgets what was filled in for the chosen category.
    void Clear();

    /// What the rules of the chosen category say to what is filled in; null while nothing is tried.
    const TrialOutcomePtr& Outcome() const noexcept { return m_outcome; }

signals:
    /// `Outcome` is another one.
    void OutcomeChanged();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// What is filled in for one category.
    struct Trial
    {
        TrialForm::Values values;
        CStringArray otherHeaders; ///< of a component that was taken: columns that no field stands for
        std::vector<CString> otherCells;
    };

    QWidget* BuildForm();
    QWidget* BuildResult();
    void Connect();
    void TakeFromSource();
    void ShowFields();
    void Try();
    void Price();
    void ShowNothing();
    void ShowResult(const TrialPricing::Result& result);
    void ShowItems(const rules::ComponentResult& result);
    void GoTo(std::size_t rule);

    WorkSession& m_session;
    ComponentSource m_source;
    std::map<CString, Trial> m_trials;       ///< by category
    std::unique_ptr<TrialPricing> m_pricing; ///< null until something is tried in the present state
    TrialOutcomePtr m_outcome;
    TrialForm* m_form;
    QPushButton* m_clear;
    QPushButton* m_take;
    QSplitter* m_splitter;
    bool m_isLaidOut = false; ///< the splitter has had room to share
    widgets::NotifyingStatic* m_applies;
    QLabel* m_remarks;
    QTreeWidget* m_items;
    QLabel* m_missesTitle;
    QTreeView* m_missesView;
    MissesModel* m_misses;
};

} // namespace editor
