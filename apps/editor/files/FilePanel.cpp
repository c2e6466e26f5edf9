#include "editor/files/FilePanel.h"

#include "editor/messages/ErrorBox.h"
#include "platform/Paths.h"
#include "widgets/SelectedRow.h"
#include "widgets/TipDelegate.h"

#include <QtCore/QLocale>
#include <QtCore/QMimeData>
#include <QtCore/QSignalBlocker>
#include <QtCore/QUrl>
#include <QtGui/QAction>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

enum Column { NameColumn, RulesColumn, StateColumn };

/// A command as the context menu shows it.
struct CommandText
{
    FileCommand command;
    QString text;
    QKeySequence keys; ///< in the list
    QString tip;
    bool startsGroup = false;
};

QList<CommandText> CommandTexts()
{
    return {
        {FileCommand::Open, u"打开(&O)"_s, Qt::Key_Return, u"查看和编辑选中的规则文件"_s},
        {FileCommand::MakeCurrent, u"设为当前(&C)"_s, Qt::CTRL | Qt::Key_Return,
         u"让工程从现在起用选中的规则文件"_s},
        {FileCommand::New, u"从模板新建(&N)…"_s, Qt::Key_Insert, u"由模板或另一个规则文件新建规则文件"_s,
         true},
        {FileCommand::Duplicate, u"复制一份(&D)…"_s, Qt::CTRL | Qt::Key_D, u"把选中的规则文件另存一份"_s},
        {FileCommand::Rename, u"重命名(&M)…"_s, Qt::SHIFT | Qt::Key_F2,
         u"给选中的规则文件换一个名称，历史副本跟着它"_s},
        {FileCommand::Delete, u"删除(&R)…"_s, QKeySequence::Delete,
         u"删除选中的规则文件，其内容留在历史副本中"_s},
        {FileCommand::Unwrap, u"解除封装(&U)"_s, {}, u"从写了文件头的文件中取回规则文件，又可以编辑"_s, true},
        {FileCommand::Compare, u"与…比较(&P)"_s, {}, u"看选中的规则文件与另一个有什么不同"_s},
        {FileCommand::History, u"历史(&I)…"_s, {}, u"查看选中的规则文件以前的样子，并还原"_s},
        {FileCommand::Reveal, u"在文件管理器中显示(&F)"_s, {}, u"打开规则文件所在的文件夹"_s, true},
    };
}

QString CountText(const RuleFileEntry& file)
{
    QStringList lines;
    for (const SpecialtyCount& count : file.counts)
        lines.append(u"%1：%2 条规则"_s.arg(count.specialty, QLocale().toString(count.rules)));
    return lines.join(u'\n');
}

QTreeWidgetItem* MakeRow(const RuleFileEntry& file, bool isCurrent)
{
    auto* row = new QTreeWidgetItem;
    row->setText(NameColumn, isCurrent ? file.state.Name() + u"（当前配置）"_s : file.state.Name());
    row->setText(StateColumn, file.state.Describe());
    if (file.state.kind == shared::RuleFileKind::Rules)
        row->setText(RulesColumn, QLocale().toString(file.Rules()));
    row->setTextAlignment(RulesColumn, Qt::AlignRight | Qt::AlignVCenter);
    QFont font;
    font.setBold(isCurrent);
    row->setFont(NameColumn, font);
    QString tip = platform::ToNative(file.state.path) + u'\n' + file.state.Describe();
    if (!file.counts.isEmpty()) tip += u'\n' + CountText(file);
    for (const int column : {NameColumn, RulesColumn, StateColumn})
        row->setToolTip(column, tip);
    return row;
}

} // namespace

QStringList DraggedRuleFiles(const QMimeData& data)
{
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (!url.isLocalFile() || !url.fileName().endsWith(u".xml", Qt::CaseInsensitive)) return {};
        files.append(url.toLocalFile());
    }
    return files;
}

FilePanel::FilePanel(Wishes wishes) : m_wishes(std::move(wishes)), m_list(new QTreeWidget)
{
    setAcceptDrops(true);
    BuildList();
    MakeActions();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_list);
    setFocusProxy(m_list);
    EnableActions();
}

void FilePanel::BuildList()
{
    m_list->setHeaderLabels({u"配置"_s, u"规则"_s, u"状态"_s});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setAccessibleName(u"规则文件"_s);
    m_list->setItemDelegate(new widgets::LineDelegate(m_list));
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (const int column : {NameColumn, RulesColumn})
        m_list->header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    widgets::MakeSelectedRowCurrent(*m_list);
    connect(m_list, &QTreeWidget::currentItemChanged, this, [this] {
        EnableActions();
        if (m_wishes.selectionChanged) RunGuarded(m_wishes.selectionChanged);
    });
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this] { Ask(FileCommand::Open); });
}

void FilePanel::MakeActions()
{
    for (const CommandText& text : CommandTexts()) {
        if (text.startsGroup) {
            auto* line = new QAction(m_list);
            line->setSeparator(true);
            m_list->addAction(line);
        }
        auto* action = new QAction(text.text, m_list);
        action->setShortcut(text.keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        if (text.command == FileCommand::Open) // of the number pad, too
            action->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
        action->setStatusTip(text.tip);
        const QString keys = action->shortcut().toString(QKeySequence::NativeText);
        action->setToolTip(keys.isEmpty() ? text.tip : u"%1（%2）"_s.arg(text.tip, keys));
        connect(action, &QAction::triggered, this, [this, command = text.command] { Ask(command); });
        m_list->addAction(action);
        m_actions[text.command] = action;
    }
}

void FilePanel::Ask(FileCommand command) const
{
    if (!m_wishes.command || !Action(command)->isEnabled()) return;
    const auto file = Selected();
    // The wish may show the files anew and end what is held here.
    RunGuarded([ask = m_wishes.command, command, path = file ? file->state.path : CString()] {
        ask(command, path);
    });
}

void FilePanel::EnableActions() const
{
    using shared::RuleFileKind;
    const auto file = Selected();
    const RuleFileKind kind = file ? file->state.kind : RuleFileKind::Missing;
    const bool isCurrent = file && m_list->indexOfTopLevelItem(m_list->currentItem()) == 0;
    const bool exists = file && kind != RuleFileKind::Missing;
    Action(FileCommand::Open)->setEnabled(file.has_value());
    Action(FileCommand::MakeCurrent)->setEnabled(kind == RuleFileKind::Rules && !isCurrent);
    for (const FileCommand command :
         {FileCommand::Duplicate, FileCommand::Rename, FileCommand::Delete, FileCommand::Compare})
        Action(command)->setEnabled(exists);
    Action(FileCommand::Unwrap)->setEnabled(kind == RuleFileKind::Wrapped);
    Action(FileCommand::History)->setEnabled(file.has_value());
    Action(FileCommand::Reveal)->setEnabled(file.has_value());
}

void FilePanel::Show(const QList<RuleFileEntry>& files)
{
    const auto selected = Selected();
    const CString former = selected ? selected->state.path : CString();
    {
        const QSignalBlocker quiet(m_list);
        m_list->clear();
        m_files = files;
        for (const RuleFileEntry& file : m_files)
            m_list->addTopLevelItem(MakeRow(file, m_list->topLevelItemCount() == 0));
        m_list->setCurrentItem(m_list->topLevelItem(0));
        Select(former);
    }
    EnableActions();
    if (m_wishes.selectionChanged) RunGuarded(m_wishes.selectionChanged);
}

void FilePanel::Select(const CString& path)
{
    for (qsizetype i = 0; i < m_files.size(); ++i)
        if (m_files[i].state.path == path) m_list->setCurrentItem(m_list->topLevelItem(static_cast<int>(i)));
}

std::optional<RuleFileEntry> FilePanel::Selected() const
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    if (row < 0) return std::nullopt;
    return m_files[row];
}

void FilePanel::dragEnterEvent(QDragEnterEvent* event)
{
    if (!DraggedRuleFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void FilePanel::dropEvent(QDropEvent* event)
{
    const QStringList files = DraggedRuleFiles(*event->mimeData());
    if (files.isEmpty() || !m_wishes.dropped) return;
    event->acceptProposedAction();
    RunGuarded([&] { m_wishes.dropped(files); });
}

} // namespace editor
