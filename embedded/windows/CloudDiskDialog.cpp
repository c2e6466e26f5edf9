#include "embedded/windows/CloudDiskDialog.h"

#include "embedded/data/project/CurrentConfiguration.h"
#include "embedded/windows/NameConflictDialog.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "platform/Paths.h"
#include "platform/TimeText.h"
#include "widgets/FaultColour.h"
#include "widgets/TextMetrics.h"
#include "widgets/TipDelegate.h"

#include <QtGui/QScreen>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

enum Column { Name, Version, Modified, ColumnCount };

/// What stays to be seen of the path and of the lists in the smallest window.
constexpr int PathCharacters = 12;
constexpr int ListLines = 8;

/// The selected file of a list; null when there is none.
const TemplateFile* Selected(const QTreeWidget& list, const std::vector<TemplateFile>& files)
{
    const int row = list.indexOfTopLevelItem(list.currentItem());
    return row < 0 ? nullptr : &files[static_cast<std::size_t>(row)];
}

/// Shows the files and keeps the selection; at first it is on `preferred`, or else on the first one.
void Fill(QTreeWidget& list, const std::vector<TemplateFile>& files, const CString& preferred = {})
{
    const CString former = list.currentItem() != nullptr ? list.currentItem()->text(Name) : preferred;
    list.clear();
    for (const TemplateFile& file : files) {
        const CString version = file.isRuleFile ? file.version : u"不是规则文件"_s;
        const CString date = platform::MinuteText(file.modified);
        auto* item = new QTreeWidgetItem(&list, {file.name, version, date});
        if (file.name == former || list.currentItem() == nullptr) list.setCurrentItem(item);
    }
}

void SizeColumns(QTreeWidget& list)
{
    const QFontMetrics metrics(list.font());
    QHeaderView& header = *list.header();
    header.setStretchLastSection(false);
    header.setSectionResizeMode(Name, QHeaderView::Stretch);
    header.resizeSection(Version, widgets::ColumnWidth(metrics, u"不是规则文件"_s));
    header.resizeSection(Modified, widgets::ColumnWidth(metrics, u"0000-00-00 00:00"_s));
    header.setMinimumSectionSize(metrics.horizontalAdvance(u"名称名称名称"_s));
}

} // namespace

CloudDiskDialog::CloudDiskDialog(CloudFolder& folder, Places places, bool mayUpload, QWidget* parent)
    : QDialog(parent), m_folder(folder), m_places(std::move(places))
{
    setWindowTitle(u"云盘 - "_s + m_places.title);
    auto* layout = new QVBoxLayout(this);
    MakeFolderLine(*layout);
    MakeLists(*layout, mayUpload);
    MakeBottom(*layout);
    for (QPushButton* button : findChildren<QPushButton*>())
        button->setAutoDefault(false);
    constexpr QSize SizeInLines(62, 26);
    resize((SizeInLines * fontMetrics().height()).boundedTo(screen()->availableSize()));
    Refresh();
    m_templateList->setFocus();
}

CloudDiskDialog::~CloudDiskDialog() = default;

void CloudDiskDialog::MakeFolderLine(QVBoxLayout& layout)
{
    m_path = new QLineEdit(this);
    m_path->setReadOnly(true);
    m_path->setMinimumWidth(widgets::ChineseWidth(fontMetrics(), PathCharacters));
    m_path->setAccessibleName(u"云盘文件夹"_s);
    auto* label = new QLabel(u"云盘文件夹(&P):"_s, this);
    label->setBuddy(m_path);
    auto* choose = new QPushButton(u"选择文件夹(&F)…"_s, this);
    auto* refresh = new QPushButton(u"刷新(&R)"_s, this);
    connect(choose, &QPushButton::clicked, this, [this] { ChooseFolder(); });
    connect(refresh, &QPushButton::clicked, this, [this] { Refresh(); });
    auto* line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(m_path, 1);
    line->addWidget(choose);
    line->addWidget(refresh);
    layout.addLayout(line);
}

QWidget* CloudDiskDialog::MakeList(const CString& label, const CString& name, QTreeWidget*& list,
                                   QWidget* note)
{
    auto* half = new QWidget(this);
    list = new QTreeWidget(half);
    list->setAccessibleName(name);
    list->setHeaderLabels({u"名称"_s, u"版本"_s, u"修改日期"_s});
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    list->setItemDelegate(new widgets::TipDelegate(list));
    list->setMinimumHeight(ListLines * fontMetrics().height());
    SizeColumns(*list);
    connect(list, &QTreeWidget::currentItemChanged, this, [this] { ShowButtons(); });
    auto* caption = new QLabel(label, half);
    caption->setBuddy(list);
    auto* captionLine = new QHBoxLayout;
    captionLine->addWidget(caption);
    captionLine->addWidget(note, 1);
    auto* column = new QVBoxLayout(half);
    column->setContentsMargins({});
    column->addLayout(captionLine);
    column->addWidget(list, 1);
    return half;
}

void CloudDiskDialog::MakeLists(QVBoxLayout& layout, bool mayUpload)
{
    m_import = new QPushButton(u"导入(&I) >>"_s, this);
    m_upload = new QPushButton(u"<< 上传(&U)"_s, this);
    m_upload->setToolTip(u"上传已经保存的内容"_s);
    m_upload->setVisible(mayUpload);
    auto* buttons = new QVBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_import);
    buttons->addWidget(m_upload);
    buttons->addStretch();
    // Beside the caption, so that the lists stay where they are when it comes and goes.
    m_fault = new QLabel(this);
    m_fault->setTextFormat(Qt::PlainText);
    m_fault->setWordWrap(true);
    widgets::MarkAsFault(*m_fault, true);
    m_current = new QLabel(this);
    m_current->setTextFormat(Qt::PlainText);
    m_current->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_current->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* line = new QHBoxLayout;
    line->addWidget(MakeList(u"云盘模板(&T):"_s, u"云盘模板"_s, m_templateList, m_fault), 1);
    line->addLayout(buttons);
    line->addWidget(MakeList(u"本机配置(&L):"_s, u"本机配置"_s, m_ownList, m_current), 1);
    layout.addLayout(line, 1);
    connect(m_import, &QPushButton::clicked, this, [this] { Import(); });
    connect(m_upload, &QPushButton::clicked, this, [this] { Upload(); });
    connect(m_templateList, &QTreeWidget::itemDoubleClicked, this, [this] { m_import->click(); });
    if (mayUpload) connect(m_ownList, &QTreeWidget::itemDoubleClicked, this, [this] { m_upload->click(); });
}

void CloudDiskDialog::MakeBottom(QVBoxLayout& layout)
{
    m_use = new QCheckBox(u"导入后使用此配置(&S)"_s, this);
    m_use->setChecked(true);
    m_status = new QLabel(this);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    m_status->setAccessibleDescription(u"结果"_s);
    // Whoever opened the dialog reads the configuration anew, also when nothing was imported.
    m_status->setText(u"关闭后配置对话框重新读取当前配置，未保存的修改会丢失"_s);
    auto* close = new QPushButton(u"关闭(&C)"_s, this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* line = new QHBoxLayout;
    line->addWidget(m_use);
    line->addWidget(m_status, 1);
    line->addWidget(close);
    layout.addLayout(line);
}

void CloudDiskDialog::Refresh()
{
    const CString fault = m_folder.Fault();
    m_path->setText(platform::ToNative(m_folder.Path()));
    m_path->setToolTip(m_path->text());
    m_templates = fault.isEmpty() ? FindTemplates(m_folder.Path()) : std::vector<TemplateFile>();
    m_own = FindTemplates(m_places.ruleFolder);
    m_fault->setText(fault);
    Fill(*m_templateList, m_templates);
    const CString current = CurrentName();
    m_current->setText(u"当前配置："_s + current);
    m_current->setToolTip(m_current->text());
    Fill(*m_ownList, m_own, current);
    ShowButtons();
}

void CloudDiskDialog::ShowButtons()
{
    const TemplateFile* const file = Selected(*m_templateList, m_templates);
    const TemplateFile* const own = Selected(*m_ownList, m_own);
    m_import->setEnabled(file != nullptr && file->isRuleFile);
    m_upload->setEnabled(own != nullptr && own->isRuleFile && m_fault->text().isEmpty());
}

void CloudDiskDialog::ChooseFolder()
{
    const QString chosen =
        QFileDialog::getExistingDirectory(this, u"选择云盘文件夹"_s, platform::ToNative(m_folder.Path()));
    if (chosen.isEmpty()) return;
    const CString fault = m_folder.Choose(chosen);
    Refresh();
    if (!fault.isEmpty()) platform::ShowWarning(fault);
}

void CloudDiskDialog::Import()
{
    const TemplateFile* const selected = Selected(*m_templateList, m_templates);
    if (selected == nullptr) return;
    if (!platform::Files().Exists(m_places.ruleFolder)) platform::Files().CreateFolder(m_places.ruleFolder);
    const TransferOutcome outcome = Transfer(*selected, m_places.ruleFolder);
    if (outcome.done && m_use->isChecked()) UseConfiguration(outcome.name);
    Report(u"已导入"_s, outcome);
}

void CloudDiskDialog::Upload()
{
    const TemplateFile* const selected = Selected(*m_ownList, m_own);
    if (selected != nullptr) Report(u"已上传"_s, Transfer(*selected, m_folder.Path()));
}

TransferOutcome CloudDiskDialog::Transfer(const TemplateFile& file, const CString& folder)
{
    return TransferTemplate(file.path, folder, file.name, [this](const CString& where, const CString& name) {
        NameConflictDialog question(where, name, this);
        question.exec();
        return question.Decision();
    });
}

CString CloudDiskDialog::CurrentName() const
{
    return CurrentConfiguration(m_places.projectFile).Name();
}

void CloudDiskDialog::UseConfiguration(const CString& name)
{
    if (!CurrentConfiguration(m_places.projectFile).Use(name))
        platform::ShowWarning(CurrentConfiguration::NotWrittenText());
}

void CloudDiskDialog::Report(const CString& action, const TransferOutcome& outcome)
{
    Refresh();
    m_status->clear();
    if (!outcome.fault.isEmpty()) platform::ShowWarning(outcome.fault);
    if (!outcome.done) return;
    const CString kept = outcome.backup.isEmpty() ? CString() : u"；原文件备份为 "_s + outcome.backup;
    m_status->setText(action + u"“"_s + outcome.name + u"”"_s + kept);
}

} // namespace embedded
