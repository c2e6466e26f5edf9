#include "editor/HistoryWindow.h"

#include "editor/Boxes.h"
#include "editor/Guard.h"
#include "editor/LongStep.h"
#include "editor/TextDifference.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QLocale>
#include <QtCore/QSignalBlocker>
#include <QtGui/QFontDatabase>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr QSize FirstSize(900, 560);
constexpr int ListWidth = 330;
enum Column { TimeColumn, SizeColumn, IdColumn };

QTreeWidgetItem* MakeRow(const embedded::HistoryEntry& entry, qsizetype size)
{
    auto* row = new QTreeWidgetItem;
    row->setText(TimeColumn, entry.time.toLocalTime().toString(u"yyyy-MM-dd HH:mm:ss"_s));
    row->setText(SizeColumn, QLocale().formattedDataSize(size));
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

HistoryWindow::HistoryWindow(QWidget* parent, const QString& projectFolder, const CString& ruleFile)
    : QDialog(parent), m_history(embedded::ProjectFolder(projectFolder)), m_files(new QComboBox),
      m_list(new QTreeWidget), m_difference(new QPlainTextEdit), m_restore(new QPushButton(u"还原(&R)"_s))
{
    setWindowTitle(u"历史"_s);
    resize(FirstSize);
    Build();
    FillFiles(ruleFile);
    FillCopies();
}

void HistoryWindow::Build()
{
    m_list->setHeaderLabels({u"时间"_s, u"大小"_s, u"编号"_s});
    m_list->setRootIsDecorated(false);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_difference->setReadOnly(true);
    m_difference->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_difference->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* splitter = new QSplitter;
    splitter->addWidget(Titled(u"留存的文件(&L)"_s, m_list));
    splitter->addWidget(Titled(u"从留存的文件到现在的文件，变了什么(&D)"_s, m_difference));
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({ListWidth, FirstSize.width() - ListWidth});
    auto* form = new QFormLayout;
    form->addRow(u"规则文件(&F)："_s, m_files);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(m_restore, QDialogButtonBox::ActionRole);
    buttons->addButton(u"关闭"_s, QDialogButtonBox::RejectRole);
    m_restore->setAutoDefault(false);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(splitter, 1);
    column->addWidget(buttons);
    connect(m_files, &QComboBox::currentIndexChanged, this, [this] { RunGuarded([&] { FillCopies(); }); });
    connect(m_list, &QTreeWidget::currentItemChanged, this,
            [this] { RunGuarded([&] { ShowDifference(); }); });
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
            m_list->addTopLevelItem(MakeRow(entry, m_history.Read(entry).size()));
        m_list->setCurrentItem(m_list->topLevelItem(0));
    }
    ShowDifference();
}

void HistoryWindow::ShowDifference()
{
    const embedded::HistoryEntry* entry = Selected();
    m_restore->setEnabled(entry != nullptr);
    m_difference->setPlainText(u"还没有留存。每次打开配置或向导之前会留一份。"_s);
    if (entry == nullptr) return;
    const QByteArray before = m_history.Read(*entry);
    const QByteArray after = platform::Files().Read(entry->path).value_or(QByteArray());
    CString text;
    RunLongStep(this, u"正在比较…"_s, [&](StepControl&) { text = DescribeDifference(before, after); });
    m_difference->setPlainText(text);
}

void HistoryWindow::Restore()
{
    const embedded::HistoryEntry entry = *Selected();
    const QString time = entry.time.toLocalTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
    if (!AskYesNo(
            u"把 %1 还原成 %2 的样子（现在的内容会留在历史中）"_s.arg(platform::ToNative(entry.path), time)))
        return;
    m_history.Restore(entry);
    m_restored = true;
    FillCopies();
}

const embedded::HistoryEntry* HistoryWindow::Selected() const
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    return row < 0 ? nullptr : &m_copies[row];
}

} // namespace editor
