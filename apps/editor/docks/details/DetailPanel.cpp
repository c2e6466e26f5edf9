#include "editor/docks/details/DetailPanel.h"

#include "editor/docks/details/ConditionPart.h"
#include "editor/docks/details/ConditionTable.h"
#include "editor/docks/details/ItemPart.h"
#include "editor/messages/ErrorBox.h"
#include "editor/session/WorkSession.h"

#include <QtCore/QScopedValueRollback>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

enum Page { NoRulePage, RulePage };

/// A text that never makes the panel wider than its dock.
QLabel* MakeLabel()
{
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

} // namespace

DetailPanel::DetailPanel(WorkSession& session, StepRunner run)
    : m_chosen(session), m_run(std::move(run)), m_pages(new QStackedWidget), m_heading(MakeLabel()),
      m_category(MakeLabel()), m_conditions(new ConditionPart(m_chosen, m_run)),
      m_items(new ItemPart(m_chosen, m_run)), m_told(MakeLabel())
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_pages);
    auto* none = new QLabel(u"没有选中规则"_s);
    none->setAlignment(Qt::AlignCenter);
    none->setEnabled(false);
    m_pages->addWidget(none);
    m_pages->addWidget(MakeRulePage());
    setAccessibleName(u"规则详情"_s);
    setFocusProxy(m_conditions);
    connect(m_conditions, &ConditionPart::Told, this, &DetailPanel::Tell);
    connect(m_items, &ItemPart::Told, this, &DetailPanel::Tell);
    connect(&session, &WorkSession::Reopened, this, &DetailPanel::OnReopened);
    connect(&session, &WorkSession::CategoryChosen, this, &DetailPanel::LookAgain);
    connect(&session, &WorkSession::RulesChosen, this, &DetailPanel::LookAgain);
    connect(&session, &WorkSession::Edited, this, [this](const CStringArray& categories) {
        const auto isShown = [&](const CString& category) { return m_chosen.Named().contains(category); };
        if (std::any_of(categories.begin(), categories.end(), isShown)) LookAgain();
    });
    OnReopened();
}

QWidget* DetailPanel::MakeRulePage()
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    QFont bold = m_heading->font();
    bold.setBold(true);
    m_heading->setFont(bold);
    column->addWidget(m_heading);
    column->addWidget(m_category);
    auto* parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(m_conditions);
    parts->addWidget(m_items);
    column->addWidget(parts, 1);
    column->addWidget(m_told);
    m_told->hide();
    return page;
}

void DetailPanel::OnReopened()
{
    WorkSession& session = m_chosen.Session();
    const CString file = session.IsOpen() ? session.File().Path() : CString();
    if (file != m_file) m_conditions->Table().ForgetInput();
    m_file = file;
    m_items->ForgetPickers();
    LookAgain();
}

void DetailPanel::Commit()
{
    const QScopedValueRollback committing(m_isCommitting, true);
    m_conditions->Table().Commit();
    m_items->Tree().Commit();
}

// What was being typed goes into the rule that was shown so far. That edit comes back here; the rest is left
// to whoever was first.
void DetailPanel::LookAgain()
{
    if (m_isCommitting) return;
    Commit();
    RunGuarded([this] {
        const ChosenRules::Name former = m_chosen.Named();
        m_chosen.Follow();
        if (m_chosen.Named() != former) Tell({});
        m_pages->setCurrentIndex(m_chosen.Look().IsEmpty() ? NoRulePage : RulePage);
        ShowHeading();
        m_conditions->Refresh();
        m_items->Refresh();
    });
}

void DetailPanel::ShowHeading()
{
    const RulesInView view = m_chosen.Look();
    if (view.IsEmpty()) return;
    const rules::SmallCategory& category = *view.Place(0).category;
    CString heading = u"选中 %1 条规则"_s.arg(view.Count());
    if (view.IsSingle())
        heading = u"第 %1 条规则，共 %2 条"_s.arg(view.Place(0).position + 1).arg(category.rules.size());
    if (view.IsDefaultAlone()) heading += u"（其它）"_s;
    m_heading->setText(heading);
    const std::size_t categories = view.Places().size();
    m_category->setText(categories > 1 ? u"分属 %1 个小类"_s.arg(categories)
                                       : CString(category.text).replace(u'\\', u" › "_s));
}

void DetailPanel::Tell(const CString& sentence)
{
    m_told->setText(sentence);
    m_told->setVisible(!sentence.isEmpty());
    if (!sentence.isEmpty()) emit Told(sentence);
}

} // namespace editor
