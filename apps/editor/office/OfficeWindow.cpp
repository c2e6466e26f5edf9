#include "editor/office/OfficeWindow.h"

#include "editor/dialogs/DifferenceView.h"
#include "editor/dialogs/TextDifference.h"
#include "editor/messages/Boxes.h"
#include "editor/messages/ErrorBox.h"
#include "editor/office/JoinedDialog.h"
#include "editor/project/Project.h"
#include "editor/steps/BusyCursor.h"
#include "editor/steps/FileWait.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "platform/Files.h"
#include "platform/TimeText.h"
#include "shared/OfficeText.h"
#include "widgets/FaultColour.h"
#include "widgets/SelectedRow.h"
#include "widgets/TipDelegate.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

// In characters and lines, for a large font needs a larger window.
constexpr QSize FirstTextSize(132, 34);
constexpr QSize LeastListSize(30, 6);

/// What a box tells of a merge, which may be of hundreds of rules.
constexpr qsizetype MostLines = 12;

enum Column { NameColumn, StateColumn, VersionColumn, AuthorColumn, TimeColumn };
enum VersionListColumn { NumberColumn, ByColumn, AtColumn, NoteColumn, FromColumn };

QSize InPixels(const QFontMetrics& metrics, const QSize& characters)
{
    return {characters.width() * metrics.averageCharWidth(), characters.height() * metrics.lineSpacing()};
}

QTreeWidgetItem* MakeRow(const shared::OfficeEntry& entry)
{
    auto* row = new QTreeWidgetItem;
    row->setText(NameColumn, entry.configuration);
    row->setText(StateColumn, shared::StateText(entry));
    if (!entry.last) return row;
    row->setText(VersionColumn, entry.last->isRemoved ? u"已移除"_s : CString::number(entry.last->number));
    row->setText(AuthorColumn, entry.last->author);
    row->setText(TimeColumn, platform::TimeText(entry.last->at));
    return row;
}

QTreeWidgetItem* MakeRow(const embedded::PublishedVersion& version)
{
    auto* row = new QTreeWidgetItem;
    row->setText(NumberColumn, CString::number(version.number));
    row->setText(ByColumn, version.author);
    row->setText(AtColumn, platform::TimeText(version.at));
    row->setText(NoteColumn, version.note);
    row->setText(FromColumn, version.project);
    return row;
}

void SetUp(QTreeWidget& list, const CStringArray& titles)
{
    list.setHeaderLabels(titles);
    list.setRootIsDecorated(false);
    list.setUniformRowHeights(true);
    list.setMinimumSize(InPixels(list.fontMetrics(), LeastListSize));
    list.setItemDelegate(new widgets::TipDelegate(&list));
    list.header()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

QWidget* Titled(const QString& title, QWidget* content, QWidget* beside = nullptr)
{
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(title);
    label->setBuddy(content);
    auto* line = new QHBoxLayout;
    line->addWidget(label, 1);
    if (beside != nullptr) line->addWidget(beside);
    column->addLayout(line);
    column->addWidget(content, 1);
    return widget;
}

QPushButton* MakeButton(const QString& text, const QString& tip)
{
    auto* button = new QPushButton(text);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

} // namespace

OfficeWindow::OfficeWindow(QWidget* parent, Project& project, AskConflicts ask)
    : QDialog(parent), m_project(project), m_ask(std::move(ask)), m_place(*project.Host().Office()),
      m_office(new QLabel), m_fault(new QLabel), m_status(new QLabel), m_list(new QTreeWidget),
      m_versionList(new QTreeWidget), m_difference(new DifferenceView),
      m_asXml(new QCheckBox(u"显示 XML(&X)"_s)), m_use(new QCheckBox(u"取来后设为当前配置(&S)"_s)),
      m_refresh(MakeButton(u"刷新(&R)"_s, u"重新问办公室；连不上时再连一次"_s)),
      m_fetch(MakeButton(u"取到本机(&G)"_s, u"把选中的版本取到工程里；本机改过的规则一条条合并"_s)),
      m_publish(MakeButton(u"发布(&P)…"_s, u"把本机的文件发布成新的一版；别人发布过的先合并"_s)),
      m_restore(MakeButton(u"还原成此版本(&O)"_s, u"把选中的版本再发布一次，并取到本机"_s)),
      m_remove(MakeButton(u"移除(&M)"_s, u"从办公室的列表移除；各版本还在，可以收回"_s)),
      m_withdraw(MakeButton(u"撤回等待的(&W)"_s, u"等着发布的这一份不再发布；本机的文件不变"_s))
{
    setWindowTitle(u"办公室"_s);
    resize(InPixels(fontMetrics(), FirstTextSize));
    Build();
    Connect();
    RunGuarded([&] { Refresh(true); });
}

OfficeWindow::~OfficeWindow() = default;

void OfficeWindow::Build()
{
    for (QLabel* label : {m_office, m_fault, m_status}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    widgets::MarkAsFault(*m_fault, true);
    m_status->setAccessibleDescription(u"结果"_s);
    auto* head = new QHBoxLayout;
    head->addWidget(m_office, 1);
    head->addWidget(m_refresh);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(m_fault);
    column->addWidget(MakeLists(), 1);
    column->addWidget(m_status);
    column->addWidget(MakeFoot());
}

QWidget* OfficeWindow::MakeLists()
{
    SetUp(*m_list, {u"名称"_s, u"本机"_s, u"版本"_s, u"发布的人"_s, u"时间"_s});
    SetUp(*m_versionList, {u"版本"_s, u"发布的人"_s, u"时间"_s, u"说明"_s, u"来自工程"_s});
    m_list->setAccessibleName(u"配置"_s);
    m_versionList->setAccessibleName(u"版本"_s);
    auto* left = new QSplitter(Qt::Vertical);
    left->addWidget(Titled(u"配置(&L)"_s, m_list));
    left->addWidget(Titled(u"选中配置的版本(&V)"_s, m_versionList));
    left->setChildrenCollapsible(false);
    auto* lists = new QSplitter;
    lists->addWidget(left);
    lists->addWidget(Titled(u"从选中的版本到本机的文件，变了什么(&D)"_s, m_difference, m_asXml));
    lists->setChildrenCollapsible(false);
    lists->setSizes({width() / 2, width() / 2});
    return lists;
}

QWidget* OfficeWindow::MakeFoot()
{
    auto* foot = new QWidget;
    auto* line = new QHBoxLayout(foot);
    line->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* button : {m_fetch, m_publish, m_withdraw, m_restore, m_remove})
        line->addWidget(button);
    m_use->setToolTip(u"取来的配置成为工程的当前配置"_s);
    line->addWidget(m_use);
    line->addStretch(1);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(u"关闭"_s, QDialogButtonBox::RejectRole)->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    line->addWidget(buttons);
    return foot;
}

void OfficeWindow::Connect()
{
    const auto on = [this](QPushButton* button, void (OfficeWindow::*step)()) {
        connect(button, &QPushButton::clicked, this,
                [this, step] { Ask([this, step] { (this->*step)(); }); });
    };
    on(m_fetch, &OfficeWindow::Fetch);
    on(m_publish, &OfficeWindow::Publish);
    on(m_withdraw, &OfficeWindow::Withdraw);
    on(m_restore, &OfficeWindow::Restore);
    on(m_remove, &OfficeWindow::RemoveOrBringBack);
    connect(m_refresh, &QPushButton::clicked, this, [this] { Ask([this] { Refresh(true); }); });
    widgets::MakeSelectedRowCurrent(*m_list);
    widgets::MakeSelectedRowCurrent(*m_versionList);
    connect(m_list, &QTreeWidget::currentItemChanged, this, [this] { Ask([this] { FillVersions(); }); });
    connect(m_versionList, &QTreeWidget::currentItemChanged, this,
            [this] { Ask([this] { ShowDifference(); }); });
    connect(m_asXml, &QCheckBox::toggled, this, [this] { Ask([this] { ShowDifference(); }); });
}

void OfficeWindow::Ask(const std::function<void()>& step)
{
    RunGuarded([&] {
        try {
            step();
        } catch (const embedded::UnreachableError& error) {
            if (m_place.Reached() != nullptr) m_place.Lose(error);
            Refresh(false);
            throw;
        }
    });
}

void OfficeWindow::Refresh(bool isFirst)
{
    {
        const BusyCursor busy;
        m_place.Reach();
        ShowOffice();
    }
    if (isFirst) {
        // Nobody is asked about conflicts and merges out of the blue: that is for the button.
        const auto decline = [](const shared::JoinedStates&) { return false; };
        for (const shared::SentPublication& sent : Files().SendWaiting({}, decline)) {
            m_hasChanged = m_hasChanged || sent.end.IsMerged();
            Report(shared::EndText(sent, OfficeName()), sent.end);
        }
    }
    FillConfigurations();
}

void OfficeWindow::ShowOffice()
{
    embedded::Office* const office = m_place.Reached();
    const bool isReached = office != nullptr;
    m_right = isReached ? office->Right() : embedded::OfficeRight::None;
    m_office->setText(isReached ? u"办公室“%1”，用户 %2（%3）"_s.arg(OfficeName(), office->User(),
                                                                     embedded::RightWord(m_right))
                                : u"办公室“%1”"_s.arg(OfficeName()));
    m_fault->setText(isReached ? CString() : m_place.InWords());
    m_fault->setVisible(!isReached);
}

void OfficeWindow::FillConfigurations()
{
    const shared::OfficeEntry* const former = Entry();
    const CString chosen = former != nullptr
                               ? former->configuration
                               : embedded::CurrentConfiguration(m_project.Host().ProjectPath()).Name();
    {
        const BusyCursor busy;
        m_entries = Files().List(true);
    }
    {
        const QSignalBlocker quiet(m_list);
        m_list->clear();
        for (const shared::OfficeEntry& entry : m_entries) {
            QTreeWidgetItem* const row = MakeRow(entry);
            m_list->addTopLevelItem(row);
            if (entry.configuration == chosen) m_list->setCurrentItem(row);
        }
        if (m_list->currentItem() == nullptr) m_list->setCurrentItem(m_list->topLevelItem(0));
    }
    FillVersions();
}

void OfficeWindow::FillVersions()
{
    const shared::OfficeEntry* const entry = Entry();
    m_versions.clear();
    if (entry != nullptr && entry->last && m_place.Reached() != nullptr) {
        const BusyCursor busy;
        m_versions = Files().Log(entry->configuration);
    }
    {
        const QSignalBlocker quiet(m_versionList);
        m_versionList->clear();
        for (const embedded::PublishedVersion& version : std::as_const(m_versions))
            m_versionList->addTopLevelItem(MakeRow(version));
        m_versionList->setCurrentItem(m_versionList->topLevelItem(0));
    }
    ShowDifference();
}

void OfficeWindow::ShowDifference()
{
    EnableButtons();
    m_difference->clear();
    const embedded::PublishedVersion* const version = Version();
    if (version == nullptr) return;
    const BusyCursor busy;
    const auto mine = platform::Files().Read(Files().FileOf(version->configuration));
    if (!mine) {
        m_difference->setPlainText(u"工程里还没有这个配置的文件"_s);
        return;
    }
    const QByteArray published = Files().Content(version->configuration, version->number);
    m_difference->setPlainText(m_asXml->isChecked() ? DescribeDifference(published, *mine)
                                                    : DescribeRuleDifference(published, *mine));
}

void OfficeWindow::EnableButtons()
{
    const shared::OfficeEntry* const entry = Entry();
    const embedded::PublishedVersion* const version = Version();
    const bool isReached = m_place.Reached() != nullptr;
    const bool isRemoved = entry != nullptr && entry->last && entry->last->isRemoved;
    const bool mayPublish = !isReached || m_right >= embedded::OfficeRight::Editor;
    m_fetch->setEnabled(version != nullptr && !isRemoved);
    m_publish->setEnabled(entry != nullptr && entry->state != shared::OfficeState::Missing && mayPublish &&
                          !isRemoved);
    m_withdraw->setEnabled(entry != nullptr && entry->isWaiting);
    m_restore->setEnabled(version != nullptr && !isRemoved && m_right >= embedded::OfficeRight::Editor);
    m_remove->setEnabled(version != nullptr && m_right == embedded::OfficeRight::Keeper);
    m_remove->setText(isRemoved ? u"收回(&M)"_s : u"移除(&M)"_s);
}

void OfficeWindow::Fetch()
{
    const embedded::PublishedVersion version = *Version();
    TakeFetched(Files().Fetch(version.configuration, m_ask(version.configuration), version.number),
                version.configuration);
}

void OfficeWindow::TakeFetched(const shared::FetchEnd& end, const CString& configuration)
{
    const bool isDone = end.end != shared::FetchEnd::Conflicts;
    if (isDone) {
        m_hasChanged = true;
        const embedded::CurrentConfiguration current(m_project.Host().ProjectPath());
        if (m_use->isChecked() && !current.Use(configuration))
            ShowWarning(embedded::CurrentConfiguration::NotWrittenText());
    }
    Report(shared::EndText(end, configuration, OfficeName()), isDone);
    FillConfigurations();
}

void OfficeWindow::Publish()
{
    const CString configuration = Entry()->configuration;
    bool isWanted = false;
    const CString note = QInputDialog::getText(this, u"发布“%1”"_s.arg(configuration), u"说明(&N)："_s,
                                               QLineEdit::Normal, {}, &isWanted);
    if (!isWanted) return;
    const auto review = [this](const shared::JoinedStates& joined) {
        return JoinedDialog::Ask(joined, this);
    };
    m_hasChanged = true; // what others published may be in the file, also when this fails
    TakePublished(Files().Publish(configuration, note.trimmed(), m_ask(configuration), review));
}

void OfficeWindow::Withdraw()
{
    const CString configuration = Entry()->configuration;
    Report(shared::EndText(Files().Withdraw(configuration), configuration), true);
    FillConfigurations();
}

void OfficeWindow::Restore()
{
    const embedded::PublishedVersion version = *Version();
    if (!AskYesNo(u"把“%1”还原成第 %2 版，作为新的一版发布"_s.arg(version.configuration).arg(version.number)))
        return;
    m_hasChanged = true;
    TakePublished(Files().Restore(version.configuration, version.number, m_versions.first().Mark()));
}

void OfficeWindow::TakePublished(const shared::PublishEnd& end)
{
    Report(shared::EndText(end, OfficeName()), end);
    FillConfigurations();
}

void OfficeWindow::RemoveOrBringBack()
{
    const shared::OfficeEntry entry = *Entry();
    const CString name = entry.configuration;
    if (entry.last->isRemoved) {
        Files().BringBack(name);
    } else {
        if (!AskYesNo(u"把“%1”从办公室移除。各版本还在，可以收回。继续"_s.arg(name))) return;
        Files().Remove(name);
    }
    Report((entry.last->isRemoved ? u"已收回“%1”"_s : u"已移除“%1”"_s).arg(name), true);
    FillConfigurations();
}

void OfficeWindow::Report(const CString& text, bool isDone)
{
    m_status->setText(text);
    if (!isDone) ShowWarning(text);
}

void OfficeWindow::Report(const CString& text, const shared::PublishEnd& end)
{
    m_status->setText(text);
    if (end.IsDone()) return;
    const CString joined = end.IsMerged() ? shared::JoinedText(*end.joined, MostLines) + u'\n' : CString();
    ShowWarning(joined + text);
}

shared::OfficeFiles OfficeWindow::Files()
{
    return shared::OfficeFiles(m_project.Host(), WaitInWindow());
}

const shared::OfficeEntry* OfficeWindow::Entry() const
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    return row < 0 ? nullptr : &m_entries[row];
}

const embedded::PublishedVersion* OfficeWindow::Version() const
{
    const int row = m_versionList->indexOfTopLevelItem(m_versionList->currentItem());
    return row < 0 ? nullptr : &m_versions[row];
}

CString OfficeWindow::OfficeName()
{
    return m_place.Name();
}

} // namespace editor
