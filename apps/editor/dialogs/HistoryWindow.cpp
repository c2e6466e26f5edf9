#include "editor/dialogs/HistoryWindow.h"

#include "editor/dialogs/DialogParts.h"
#include "editor/dialogs/DifferenceView.h"
#include "editor/dialogs/TextDifference.h"
#include "editor/messages/Boxes.h"
#include "editor/messages/ErrorBox.h"
#include "editor/project/Project.h"
#include "editor/steps/LongStep.h"
#include "editor/steps/WatchedStep.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/TimeText.h"
#include "shared/RuleFileState.h"
#include "widgets/SelectedRow.h"
#include "widgets/TipDelegate.h"

#include <QtCore/QLocale>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr QSize FirstSize(900, 560);
// In characters and lines, for a large font needs a larger window.
constexpr QSize FirstText(104, 30);
constexpr QSize LeastListSize(24, 8);
constexpr int ListWidth = 56;
/// About how many files restoring reads and changes.
constexpr qint64 FilesOfRestore = 12;
enum Column { TimeColumn, SizeColumn, IdColumn };

QSize InPixels(const QFontMetrics& metrics, const QSize& characters)
{
    return {characters.width() * metrics.averageCharWidth(), characters.height() * metrics.lineSpacing()};
}

QTreeWidgetItem* MakeRow(const embedded::HistoryEntry& entry)
{
    auto* row = new QTreeWidgetItem;
    row->setText(TimeColumn, platform::TimeText(entry.time));
    row->setText(SizeColumn, QLocale().formattedDataSize(shared::FileSize(entry.copy)));
    row->setText(IdColumn, entry.id);
    return row;
}

QWidget* Titled(const QString& title, QWidget* content)
{
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(title);
    label->setBuddy(content);
    column->addWidget(label);
    column->addWidget(content, 1);
    return widget;
}

} // namespace

HistoryWindow::HistoryWindow(QWidget* parent, Project& project, const CString& ruleFile)
    : QDialog(parent), m_project(project), m_history(embedded::ProjectFolder(project.Folder())),
      m_files(new QComboBox), m_list(new QTreeWidget), m_difference(new DifferenceView),
      m_asXml(new QCheckBox(u"显示 XML(&X)"_s)), m_restore(new QPushButton(u"还原(&R)"_s))
{
    setWindowTitle(u"历史"_s);
    resize(FirstSize.expandedTo(InPixels(fontMetrics(), FirstText)));
    Build();
    FillFiles(ruleFile);
    FillCopies();
}

void HistoryWindow::Build()
{
    m_list->setHeaderLabels({u"时间"_s, u"大小"_s, u"编号"_s});
    m_list->setRootIsDecorated(false);
    m_list->setMinimumSize(InPixels(fontMetrics(), LeastListSize));
    m_list->setItemDelegate(new widgets::TipDelegate(m_list));
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* splitter = new QSplitter;
    splitter->addWidget(Titled(u"历史副本(&L)"_s, m_list));
    splitter->addWidget(Titled(u"从历史副本到现在的文件，变了什么(&D)"_s, m_difference));
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    const int listWidth = InPixels(fontMetrics(), {ListWidth, 0}).width();
    splitter->setSizes({listWidth, width() - listWidth});
    auto* form = new QFormLayout;
    form->addRow(u"规则文件(&F)："_s, m_files);
    auto* buttons = new QDialogButtonBox;
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_asXml);
    foot->addWidget(buttons, 1);
    buttons->addButton(m_restore, QDialogButtonBox::ActionRole);
    AddCloseButton(*buttons);
    m_asXml->setToolTip(u"比较文件的文字，不按规则比较（Alt+X）"_s);
    m_restore->setToolTip(u"文件换成选中的历史副本，现在的内容先留一份副本（Alt+R）"_s);
    m_restore->setAutoDefault(false);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(splitter, 1);
    column->addLayout(foot);
    connect(m_files, &QComboBox::currentIndexChanged, this, [this] { RunGuarded([&] { FillCopies(); }); });
    widgets::MakeSelectedRowCurrent(*m_list);
    connect(m_list, &QTreeWidget::currentItemChanged, this,
            [this] { RunGuarded([&] { ShowDifference(); }); });
    connect(m_asXml, &QCheckBox::toggled, this, [this] { RunGuarded([&] { ShowDifference(); }); });
    connect(m_restore, &QPushButton::clicked, this, [this] { RunGuarded([&] { Restore(); }); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
}

// A file that is gone still has its copies.
void HistoryWindow::FillFiles(const CString& ruleFile)
{
    const QSignalBlocker quiet(m_files);
    m_files->addItem(platform::ToNative(ruleFile), ruleFile);
    for (const embedded::HistoryEntry& entry : m_history.ListAll())
        if (m_files->findData(entry.path) < 0) m_files->addItem(platform::ToNative(entry.path), entry.path);
}

void HistoryWindow::FillCopies()
{
    m_copies = m_history.List(m_files->currentData().toString());
    {
        const QSignalBlocker quiet(m_list);
        m_list->clear();
        for (const embedded::HistoryEntry& entry : m_copies)
            m_list->addTopLevelItem(MakeRow(entry));
        m_list->setCurrentItem(m_list->topLevelItem(0));
    }
    ShowDifference();
}

void HistoryWindow::ShowDifference()
{
    const embedded::HistoryEntry* entry = Selected();
    m_restore->setEnabled(entry != nullptr);
    m_difference->setPlainText(u"还没有历史副本。每次打开配置或向导之前会留一份副本。"_s);
    if (entry == nullptr) return;
    CString text;
    const bool asXml = m_asXml->isChecked();
    const bool compared = RunLongStep(this, u"正在比较…"_s, [&, copy = *entry](StepControl& control) {
        const QByteArray now = platform::Files().Read(copy.path).value_or(QByteArray());
        const QByteArray before = m_history.Read(copy);
        control.Check();
        text = asXml ? DescribeDifference(before, now) : DescribeRuleDifference(before, now);
        control.Check();
    });
    m_difference->setPlainText(compared ? text : CString());
}

void HistoryWindow::Restore()
{
    const embedded::HistoryEntry entry = *Selected();
    const QString time = platform::TimeText(entry.time);
    if (!AskYesNo(
            u"把 %1 还原成 %2 的样子（现在的内容会留一份副本）"_s.arg(platform::ToNative(entry.path), time)))
        return;
    // On this thread: what keeps a copy of a file before it is written may have to ask.
    if (!RunWatched(this, m_project.Roles(),
                    {u"正在还原…"_s,
                     FilesOfRestore,
                     {},
                     [&] { m_history.Restore(entry); },
                     shared::IsLarge(entry.path) || shared::IsLarge(entry.copy)}))
        return;
    m_restored = true;
    FillCopies();
}

const embedded::HistoryEntry* HistoryWindow::Selected() const
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    return row < 0 ? nullptr : &m_copies[row];
}

} // namespace editor
