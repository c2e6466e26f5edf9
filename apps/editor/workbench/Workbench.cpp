#include "editor/workbench/Workbench.h"

#include "editor/workbench/CategoryPanel.h"
#include "editor/workbench/RuleTable.h"
#include "widgets/LineColour.h"
#include "widgets/WheelGuard.h"

#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

bool HasOther(const rules::RulePlaces& places, const rules::Draft& draft)
{
    for (const auto& [category, positions] : places)
        for (const std::size_t position : positions)
            if (!draft.Find(category)->rules[position].isDefault) return true;
    return false;
}

} // namespace

Workbench::Workbench(WorkSession& session, Wishes wishes)
    : m_session(session), m_wishes(std::move(wishes)), m_actions(*this),
      m_undo(session.Undo().createUndoAction(this, u"撤销"_s)),
      m_redo(session.Undo().createRedoAction(this, u"重做"_s)), m_commands(session, *this), m_search(session),
      m_model(new RuleTableModel(session, this)), m_table(new RuleTable(*m_model)),
      m_categories(new CategoryPanel(session)), m_text(new QLineEdit), m_scope(new QComboBox),
      m_count(new QLabel), m_heading(new QLabel), m_notice(new QLabel), m_prepare(new QTimer(this))
{
    Build();
    Connect();
    ShowRows();
}

Workbench::~Workbench() = default;

void Workbench::Build()
{
    setContextMenuPolicy(Qt::NoContextMenu);
    m_undo->setShortcut(QKeySequence::Undo);
    m_undo->setIconText(u"撤销"_s);
    m_redo->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    m_redo->setIconText(u"重做"_s);
    addToolBar(MakeTools());
    addToolBarBreak();
    addToolBar(MakeSearch());
    auto* middle = new QWidget;
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins({});
    m_notice->setWordWrap(true);
    m_notice->setTextFormat(Qt::PlainText);
    m_notice->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_notice->hide();
    column->addWidget(m_notice);
    column->addWidget(m_table, 1);
    setCentralWidget(middle);
    setFocusProxy(m_table);
    for (QAction* action :
         {m_actions.add, m_actions.remove, m_actions.up, m_actions.down, m_actions.copy, m_actions.paste})
        m_table->addAction(action);
    m_table->addAction(m_actions.copyTo);
    m_table->addAction(m_actions.series);
    m_table->addAction(m_actions.edit);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_categories->addAction(m_actions.add);
    AddDock(u"categories"_s, u"类别"_s, m_categories, Qt::LeftDockWidgetArea);
    m_prepare->setInterval(0);
}

QToolBar* Workbench::MakeTools()
{
    auto* tools = new QToolBar(u"编辑"_s);
    tools->setObjectName(u"edit"_s);
    tools->setToolButtonStyle(Qt::ToolButtonTextOnly);
    tools->addActions({m_actions.save, m_actions.discard});
    tools->addSeparator();
    tools->addActions({m_undo, m_redo});
    tools->addSeparator();
    tools->addActions(
        {m_actions.add, m_actions.remove, m_actions.up, m_actions.down, m_actions.copyTo, m_actions.series});
    return tools;
}

QToolBar* Workbench::MakeSearch()
{
    auto* bar = new QToolBar(u"查找"_s);
    bar->setObjectName(u"find"_s);
    m_text->setPlaceholderText(u"查找规则：条件、“公称直径 65”、清单或定额的编号、名称"_s);
    m_text->setObjectName(u"find"_s);
    m_text->setAccessibleName(u"查找规则"_s);
    m_text->setToolTip(u"%1\n%2"_s.arg(
        u"多个词用空格隔开，都要有。属性名后面跟一个值，找对这个值成立的条件：公称直径 65 也找到 50＜公称直径≤65"_s,
        u"↓ 到规则，Esc 清空（Ctrl+F）"_s));
    m_text->setClearButtonEnabled(true);
    m_text->installEventFilter(this);
    widgets::ColourHint(*m_text);
    for (const auto& [text, scope] :
         {std::pair(u"本小类"_s, SearchScope::Category), std::pair(u"本专业"_s, SearchScope::Specialty),
          std::pair(u"整个文件"_s, SearchScope::File), std::pair(u"工程的全部文件"_s, SearchScope::Project)})
        m_scope->addItem(text, static_cast<int>(scope));
    widgets::KeepWheelFrom(*m_scope);
    m_scope->setAccessibleName(u"查找范围"_s);
    m_scope->setToolTip(u"在哪里查找"_s);
    m_count->setContentsMargins(8, 0, 8, 0); // NOLINT(readability-magic-numbers): beside the fields
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setContentsMargins(4, 0, 8, 0); // NOLINT(readability-magic-numbers): beside the fields
    bar->addWidget(m_heading);
    bar->addWidget(m_text);
    bar->addWidget(m_scope);
    bar->addWidget(m_count);
    return bar;
}

void Workbench::Connect()
{
    const auto on = [this](QAction* action, auto step) {
        connect(action, &QAction::triggered, this, [this, step] { m_wishes.run(step); });
    };
    connect(m_actions.save, &QAction::triggered, this, [this] { m_wishes.save(); });
    // What is being typed comes first; the stack's own connection would pass that by.
    disconnect(m_undo, nullptr, &m_session.Undo(), nullptr);
    disconnect(m_redo, nullptr, &m_session.Undo(), nullptr);
    on(m_undo, [this] { m_session.Undo().undo(); });
    on(m_redo, [this] { m_session.Undo().redo(); });
    on(m_actions.discard, [this] { m_session.Discard(); });
    on(m_actions.add, [this] {
        m_commands.Add();
        FocusRules();
    });
    m_categories->OnEntered([this] { FocusRules(); });
    on(m_actions.remove, [this] { m_commands.Remove(); });
    on(m_actions.up, [this] { m_commands.Shift(false); });
    on(m_actions.down, [this] { m_commands.Shift(true); });
    on(m_actions.copy, [this] { m_commands.Copy(); });
    on(m_actions.paste, [this] { m_commands.Paste(); });
    on(m_actions.copyTo, [this] { m_commands.CopyToOthers(); });
    connect(m_actions.find, &QAction::triggered, this, [this] {
        m_text->setFocus();
        m_text->selectAll();
    });
    connect(m_actions.edit, &QAction::triggered, this, [this] { EditCurrent(); });
    m_model->OnMoved([this](std::size_t target) {
        // Once the drag has ended: the edit fills the list anew.
        QTimer::singleShot(0, this,
                           [this, target] { m_wishes.run([this, target] { m_commands.MoveTo(target); }); });
    });
    m_table->OnChosen([this] { TakeChoice(); });
    m_table->OnActivated([this] { EditCurrent(); });
    connect(m_text, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_search.SetText(text);
        ShowRows();
    });
    connect(m_scope, &QComboBox::currentIndexChanged, this, [this] { ScopeChosen(); });
    connect(m_prepare, &QTimer::timeout, this, [this] { PrepareSearch(); });
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] { EnableActions(); });
    connect(&m_session, &WorkSession::Reopened, this, [this] {
        m_search.Forget();
        m_search.SetOtherFiles({}); // those of another project, or without the one that was open
        if (m_search.Scope() == SearchScope::Project)
            m_scope->setCurrentIndex(m_scope->findData(static_cast<int>(SearchScope::File)));
        m_table->ShowBills(m_session.Facts()->isBillMode);
        ShowRows();
    });
    connect(&m_session, &WorkSession::Edited, this, [this] { ShowRows(); });
    connect(&m_session, &WorkSession::Completed, m_prepare, [this] { m_prepare->start(); });
    connect(&m_session, &WorkSession::FileChanged, this, [this] { EnableActions(); });
    connect(&m_session, &WorkSession::CategoryChosen, this, [this] {
        if (m_search.Scope() == SearchScope::Category || m_text->text().trimmed().isEmpty()) ShowRows();
    });
    connect(&m_session, &WorkSession::RulesChosen, this, [this] {
        ShowChoice();
        EnableActions();
    });
}

void Workbench::SetKnowledge(RuleKnowledge knowledge,
                             std::function<std::optional<rules::Severity>(const CString&)> severities)
{
    m_model->SetKnowledge(std::move(knowledge));
    m_categories->SetSeverities(std::move(severities));
}

void Workbench::KnowledgeChanged(const QStringList& categories)
{
    m_model->KnowledgeChanged();
    m_categories->ShowMarks(categories);
}

void Workbench::ShowHits(bool show)
{
    m_table->ShowHits(show);
}

void Workbench::ShowRows()
{
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    const bool isWide = m_search.Scope() != SearchScope::Category && !m_text->text().trimmed().isEmpty();
    const int scrolled = m_table->verticalScrollBar()->value();
    m_model->Show(m_search.Rows());
    m_table->ShowPlaces(isWide);
    m_table->verticalScrollBar()->setValue(scrolled);
    ShowChoice();
    ShowCount();
    EnableActions();
    m_prepare->start();
}

void Workbench::ShowCount()
{
    const auto count = static_cast<qulonglong>(m_model->Rows().size());
    m_count->setText(m_text->text().trimmed().isEmpty() ? u"%1 条规则"_s.arg(count)
                                                        : u"找到 %1 条"_s.arg(count));
}

/// Chooses the lines of what is chosen in the session.
void Workbench::ShowChoice()
{
    const rules::RulePlaces places = m_session.ChosenPlaces();
    std::vector<int> lines;
    int current = -1;
    const auto& rows = m_model->Rows();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!rows[i].file.isEmpty()) break; // those of other files come last
        const auto found = places.find(rows[i].category->text);
        if (found == places.end() ||
            !std::binary_search(found->second.begin(), found->second.end(), rows[i].position))
            continue;
        lines.push_back(static_cast<int>(i));
        if (rows[i].category->text == m_session.CategoryText() && rows[i].position == m_session.CurrentRule())
            current = static_cast<int>(i);
    }
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    m_table->ChooseLines(lines, current);
}

void Workbench::TakeChoice()
{
    if (m_isShowing) return;
    const auto& rows = m_model->Rows();
    const int current = m_table->CurrentLine();
    if (current < 0 || current >= static_cast<int>(rows.size())) return;
    const RuleRow& at = rows[static_cast<std::size_t>(current)];
    if (!at.file.isEmpty()) return; // shown when it is opened
    rules::RulePlaces places;
    for (const int line : m_table->ChosenLines()) {
        const RuleRow& row = rows[static_cast<std::size_t>(line)];
        if (row.file.isEmpty()) places[row.category->text].push_back(row.position);
    }
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    m_session.ChoosePlaces(std::move(places), at.category->text, at.position);
}

void Workbench::EditCurrent()
{
    const int current = m_table->CurrentLine();
    if (current < 0) return;
    const RuleRow row = m_model->Rows()[static_cast<std::size_t>(current)];
    if (!row.file.isEmpty()) return m_wishes.openFile(row);
    if (m_editor == nullptr) return;
    for (QWidget* widget = m_editor; widget != nullptr; widget = widget->parentWidget())
        if (auto* dock = qobject_cast<QDockWidget*>(widget)) {
            dock->show();
            dock->raise();
        }
    m_editor->setFocus();
}

void Workbench::EnableActions()
{
    const rules::RulePlaces places = m_session.ChosenPlaces();
    m_actions.Enable({.file = m_session.IsOpen(),
                      .category = m_session.Category() != nullptr,
                      .rules = !places.empty(),
                      .several = HasOther(places, m_session.DraftSoFar()),
                      .changed = m_session.IsChanged(),
                      .paste = RuleCommands::CanPaste()});
}

void Workbench::PrepareSearch()
{
    if (!m_session.IsOpen() || !m_search.PrepareNext()) m_prepare->stop();
}

void Workbench::ScopeChosen()
{
    const auto scope = static_cast<SearchScope>(m_scope->currentData().toInt());
    if (scope == SearchScope::Project)
        m_wishes.run([this] { m_search.SetOtherFiles(m_wishes.readOthers()); });
    m_search.SetScope(scope);
    ShowRows();
}

void Workbench::SetHeading(const QString& configuration, bool isChanged)
{
    m_heading->setText(configuration.isEmpty()
                           ? u"没有打开规则文件"_s
                           : u"%1%2"_s.arg(configuration, isChanged ? u" *"_s : QString()));
    m_heading->setToolTip(isChanged ? u"有没有保存的修改"_s : u"打开的规则文件"_s);
}

void Workbench::ShowNotice(const QString& text)
{
    m_notice->setText(text);
    m_notice->setVisible(!text.isEmpty());
}

void Workbench::Find(const QString& text, SearchScope scope)
{
    m_scope->setCurrentIndex(m_scope->findData(static_cast<int>(scope)));
    m_text->setText(text);
}

void Workbench::OtherFilesChanged()
{
    if (m_search.Scope() != SearchScope::Project) return;
    m_search.SetOtherFiles(m_wishes.readOthers());
    ShowRows();
}

void Workbench::FocusRules()
{
    m_table->setFocus();
}

QWidget* Workbench::RuleList() const
{
    return m_table;
}

/// Keys that move through the list go from the field to it.
bool Workbench::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_text || event->type() != QEvent::KeyPress) return DockPage::eventFilter(watched, event);
    switch (static_cast<const QKeyEvent&>(*event).key()) {
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_table->setFocus();
        return true;
    case Qt::Key_Escape:
        m_text->isModified() || !m_text->text().isEmpty() ? m_text->clear() : m_table->setFocus();
        return true;
    default:
        return false;
    }
}

} // namespace editor
