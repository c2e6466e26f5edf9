#include "editor/docks/findings/FindingsPanel.h"

#include "editor/docks/findings/FindingWords.h"
#include "editor/docks/findings/FindingsModel.h"
#include "editor/docks/findings/SeverityMark.h"
#include "editor/messages/ErrorBox.h"
#include "editor/steps/BusyCursor.h"
#include "rules/check/Mends.h"
#include "rules/draft/MendEdit.h"

#include <QtCore/QEvent>
#include <QtGui/QShortcut>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTreeView>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

enum Scope { OfCategory, OfFile };

/// All that they propose, one behind the other, as one edit.
rules::Edit MendsOf(rules::Draft draft, const std::vector<rules::Finding>& findings)
{
    rules::Edit all;
    int count = 0;
    for (const rules::Finding* const finding : rules::MendsInOrder(findings)) {
        rules::Edit one = rules::MendEdit(draft, *finding);
        if (one.IsEmpty()) continue;
        draft.Apply(one);
        all.splices.insert(all.splices.end(), std::make_move_iterator(one.splices.begin()),
                           std::make_move_iterator(one.splices.end()));
        ++count;
    }
    all.text = u"按建议修改 %1 处"_s.arg(count);
    return all;
}

QLabel* TextLabel()
{
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

FindingsPanel::FindingsPanel(WorkSession& session, FindingsWatch& watch, QWidget* parent)
    : QWidget(parent), m_session(session), m_watch(watch), m_model(new FindingsModel(watch, this)),
      m_scope(new QComboBox), m_least(new QComboBox), m_state(TextLabel()), m_list(new QTreeView),
      m_explanation(TextLabel()), m_mend(new QPushButton(u"按建议修改"_s)),
      m_mendAll(new QPushButton(u"全部按建议修改"_s))
{
    Build();
    Connect();
    Relist();
}

void FindingsPanel::Build()
{
    BuildList();
    m_explanation->setAccessibleName(u"问题的说明"_s);
    m_state->setAccessibleName(u"检查的结果"_s);
    auto* column = new QVBoxLayout(this);
    column->addWidget(BuildFilters());
    column->addWidget(m_state);
    column->addWidget(m_list, 1);
    column->addWidget(m_explanation);
    column->addWidget(BuildButtons());
}

QWidget* FindingsPanel::BuildFilters()
{
    m_scope->addItem(u"本小类"_s);
    m_scope->addItem(u"整个文件"_s);
    m_scope->setAccessibleName(u"哪里的问题"_s);
    m_scope->setToolTip(u"列出选中小类的问题，或整个规则文件的问题"_s);
    m_least->addItem(u"全部级别"_s, static_cast<int>(rules::Severity::Note));
    m_least->addItem(u"错误和警告"_s, static_cast<int>(rules::Severity::Warning));
    m_least->addItem(u"只看错误"_s, static_cast<int>(rules::Severity::Error));
    m_least->setAccessibleName(u"哪些级别的问题"_s);
    m_least->setToolTip(u"只列出达到这个级别的问题"_s);
    auto* filters = new QWidget;
    auto* row = new QHBoxLayout(filters);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_scope, 1);
    row->addWidget(m_least, 1);
    return filters;
}

void FindingsPanel::BuildList()
{
    m_list->setModel(m_model);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setAccessibleName(u"问题"_s);
    m_list->setWhatsThis(u"单击或按 Enter 转到规则"_s);
    m_list->header()->setStretchLastSection(true);
    m_model->TakeColours(palette());
}

QWidget* FindingsPanel::BuildButtons()
{
    m_mend->setToolTip(u"照选中问题的建议修改规则，可以撤销（Ctrl+Enter）"_s);
    m_mendAll->setToolTip(u"照列出的全部建议修改规则，作为一步，可以撤销（Ctrl+Shift+Enter）"_s);
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* const button : {m_mend, m_mendAll}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch(1);
    return buttons;
}

void FindingsPanel::Connect()
{
    const auto onKeys = [this](const QKeySequence& keys, void (FindingsPanel::*step)()) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, step] { (this->*step)(); });
    };
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        onKeys(Qt::CTRL | enter, &FindingsPanel::MendChosen);
        onKeys(Qt::CTRL | Qt::SHIFT | enter, &FindingsPanel::MendAll);
    }
    connect(m_mend, &QPushButton::clicked, this, [this] { MendChosen(); });
    connect(m_mendAll, &QPushButton::clicked, this, [this] { MendAll(); });
    connect(m_scope, &QComboBox::currentIndexChanged, this, [this] { Relist(); });
    connect(m_least, &QComboBox::currentIndexChanged, this, [this] { Relist(); });
    connect(m_list, &QTreeView::clicked, this, [this] { GoToChosen(); });
    connect(m_list, &QTreeView::activated, this, [this] { GoToChosen(); });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { ShowChosen(); });
    connect(&m_watch, &FindingsWatch::FindingsChanged, this, [this](const QStringList& categories) {
        if (IsOfFile() || m_listed != m_session.CategoryText() || categories.contains(m_listed))
            Relist();
        else
            ShowState();
    });
    connect(&m_session, &WorkSession::CategoryChosen, this, [this] {
        if (!IsOfFile()) Relist();
    });
}

bool FindingsPanel::IsOfFile() const
{
    return m_scope->currentIndex() == OfFile;
}

void FindingsPanel::ShowFile(bool ofFile)
{
    m_scope->setCurrentIndex(ofFile ? OfFile : OfCategory);
}

/// What was chosen stays so; where it is gone, what stands in its place is.
void FindingsPanel::Relist()
{
    const std::optional<rules::Finding> chosen = m_chosen;
    const int row = m_list->currentIndex().row();
    const int seen = m_list->verticalScrollBar()->value();
    m_listed = IsOfFile() ? CString() : m_session.CategoryText();
    m_model->List(m_listed, static_cast<rules::Severity>(m_least->currentData().toInt()));
    const int found = chosen ? m_model->RowOf(*chosen) : -1;
    const int now = found >= 0 ? found : std::min(row, m_model->rowCount() - 1);
    if (now >= 0) m_list->setCurrentIndex(m_model->index(now, FindingsModel::TextColumn));
    m_list->verticalScrollBar()->setValue(seen);
    for (const int column : {FindingsModel::SeverityColumn, FindingsModel::PlaceColumn})
        m_list->resizeColumnToContents(column);
    ShowState();
    ShowChosen();
}

void FindingsPanel::ShowState()
{
    using enum rules::Severity;
    CStringArray counts;
    for (const rules::Severity severity : {Error, Warning, Note})
        if (const std::size_t count = m_model->CountOf(severity); count > 0)
            counts.append(u"%1 %2"_s.arg(SeverityText(severity)).arg(count));
    CString text = counts.isEmpty() ? u"没有发现问题"_s : counts.join(u'，');
    const bool isKnown = IsOfFile() ? m_watch.IsCurrent() : m_watch.IsCurrent(m_session.CategoryText());
    if (!m_session.IsOpen())
        text = u"没有打开规则文件"_s;
    else if (!isKnown)
        text = counts.isEmpty() ? u"正在检查…"_s : text + u"，正在检查…"_s;
    m_state->setText(text);
    m_mendAll->setEnabled(CanMendAny());
}

std::optional<rules::Finding> FindingsPanel::Chosen() const
{
    const int row = m_list->currentIndex().row();
    return row < 0 ? std::nullopt : std::optional(m_model->At(row));
}

void FindingsPanel::ShowChosen()
{
    m_chosen = Chosen();
    CStringArray lines;
    bool canMend = false;
    if (m_chosen) {
        lines = {m_chosen->text, ExplanationOf(m_chosen->code)};
        if (m_chosen->mend) {
            const rules::Edit edit = rules::MendEdit(m_session.Draft(), *m_chosen);
            canMend = !edit.IsEmpty();
            if (canMend) lines.append(u"建议：%1"_s.arg(edit.text));
        }
    }
    m_explanation->setText(lines.join(u'\n'));
    m_explanation->setVisible(!lines.isEmpty());
    m_mend->setEnabled(canMend);
}

void FindingsPanel::GoToChosen()
{
    const std::optional<rules::Finding> chosen = Chosen();
    if (!chosen) return;
    RunGuarded([&] {
        if (chosen->position > 0)
            m_session.GoTo(chosen->category, static_cast<std::size_t>(chosen->position) - 1);
        else
            m_session.ChooseCategory(chosen->category);
    });
}

// A mend tells what is to stand there then, so one of a former state would undo what was edited since.
void FindingsPanel::MendChosen()
{
    const std::optional<rules::Finding> chosen = Chosen();
    if (!chosen || !chosen->mend || !m_watch.IsCurrent(chosen->category)) return;
    RunGuarded([&] { m_session.Do(rules::MendEdit(m_session.Draft(), *chosen)); });
}

std::vector<rules::Finding> FindingsPanel::Mendable() const
{
    std::vector<rules::Finding> findings;
    for (int row = 0; row < m_model->rowCount(); ++row)
        if (const rules::Finding& finding = m_model->At(row);
            finding.mend && m_watch.IsCurrent(finding.category))
            findings.push_back(finding);
    return findings;
}

/// Saving alone mends some, and that is no edit.
bool FindingsPanel::CanMendAny() const
{
    const std::vector<rules::Finding> findings = Mendable();
    return std::any_of(findings.begin(), findings.end(), [this](const rules::Finding& finding) {
        return !rules::MendEdit(m_session.Draft(), finding).IsEmpty();
    });
}

void FindingsPanel::MendAll()
{
    const BusyCursor busy;
    RunGuarded([&] { m_session.Do(MendsOf(m_session.Draft(), Mendable())); });
}

void FindingsPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange) m_model->TakeColours(palette());
    QWidget::changeEvent(event);
}

} // namespace editor
