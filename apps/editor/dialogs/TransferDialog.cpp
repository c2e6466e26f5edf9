#include "editor/dialogs/TransferDialog.h"

#include "editor/dialogs/DialogParts.h"
#include "editor/dialogs/LibraryCombo.h"
#include "editor/project/Project.h"

#include <QtCore/QDir>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr int FileWidth = 50; ///< in characters
constexpr QSize ReportSize(640, 360);

struct Table
{
    embedded::TableKind kind;
    QStringView title;
};

constexpr std::array Tables{Table{embedded::TableKind::Catalogue, u"类别：专业、大类、小类"},
                            Table{embedded::TableKind::Attributes, u"属性：小类的属性和取值"},
                            Table{embedded::TableKind::Libraries, u"库：有哪些清单库、定额库"},
                            Table{embedded::TableKind::Bill, u"清单：清单库的清单"},
                            Table{embedded::TableKind::Quota, u"定额：定额库的定额"},
                            Table{embedded::TableKind::Guide, u"指引：清单下常用的定额"},
                            Table{embedded::TableKind::Calc, u"计算项目：规则和适用的小类"}};

/// The libraries that have a table of that kind: none for a table of no library.
CArray<embedded::LibraryName> LibrariesFor(Project& project, embedded::TableKind kind)
{
    using embedded::LibraryRole;
    if (!embedded::IsOfALibrary(kind)) return {};
    if (kind == embedded::TableKind::Bill) return project.Libraries(LibraryRole::Bill);
    return project.Libraries(LibraryRole::QuotaOfBills) + project.Libraries(LibraryRole::Quota);
}

} // namespace

TransferDialog::TransferDialog(QWidget* parent, Direction direction, Project& project)
    : QDialog(parent), m_direction(direction), m_kind(new QComboBox), m_library(MakeLibraryCombo()),
      m_file(new QLineEdit), m_replace(new QCheckBox(u"用文件的内容替换整个表(&R)"_s)),
      m_start(new QPushButton(direction == Direction::Import ? u"导入"_s : u"导出"_s))
{
    setWindowTitle(direction == Direction::Import ? u"导入数据"_s : u"导出数据"_s);
    for (const Table& table : Tables)
        m_kind->addItem(table.title.toString(), static_cast<int>(table.kind));
    m_file->setMinimumWidth(fontMetrics().averageCharWidth() * FileWidth);
    m_replace->setToolTip(u"不勾选时，文件中的行加入表中，编号相同的行被替换"_s);
    m_replace->setVisible(direction == Direction::Import);
    m_start->setEnabled(false);
    connect(m_file, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_start->setEnabled(!text.trimmed().isEmpty()); });
    ShowLibraries(project);
    connect(m_kind, &QComboBox::currentIndexChanged, this, [this, &project] { ShowLibraries(project); });
    Build();
}

void TransferDialog::ShowLibraries(Project& project)
{
    const bool isBill = Kind() == embedded::TableKind::Bill;
    FillLibraries(*m_library, LibrariesFor(project, Kind()),
                  project.LibraryInUse(isBill ? embedded::LibraryRole::Bill : project.QuotaRole()));
    m_library->setEnabled(m_library->count() > 0);
}

void TransferDialog::Build()
{
    auto* form = new QFormLayout;
    form->addRow(u"表(&T)："_s, m_kind);
    form->addRow(u"库(&L)："_s, m_library);
    const QPushButton* browse = AddBrowseRow(*form, u"文件(&F)："_s, m_file);
    form->addRow(QString(), m_replace);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(MakeButtons(
        *this, m_start, m_direction == Direction::Import ? u"读入上面的文件"_s : u"写出上面的文件"_s));
    connect(browse, &QPushButton::clicked, this, [this] { Browse(); });
}

embedded::TableKind TransferDialog::Kind() const
{
    return static_cast<embedded::TableKind>(m_kind->currentData().toInt());
}

QString TransferDialog::File() const
{
    return QDir::fromNativeSeparators(m_file->text().trimmed());
}

embedded::ImportOptions TransferDialog::Options() const
{
    return {.replace = m_replace->isChecked(), .library = ChosenLibrary(*m_library)};
}

void TransferDialog::Browse()
{
    const QString filter = m_direction == Direction::Import
                               ? u"表格文件 (*.csv *.xlsx *.ods);;所有文件 (*)"_s
                               : u"CSV 文件 (*.csv);;XLSX 工作簿 (*.xlsx);;所有文件 (*)"_s;
    const QString file = m_direction == Direction::Import
                             ? QFileDialog::getOpenFileName(this, windowTitle(), QDir::homePath(), filter)
                             : QFileDialog::getSaveFileName(this, windowTitle(), QDir::homePath(), filter);
    if (!file.isEmpty()) m_file->setText(QDir::toNativeSeparators(file));
}

namespace {

/// The rows that were changed and those that went, a line each.
CStringArray Touched(const embedded::ImportReport& report)
{
    CStringArray lines;
    for (const CString& row : report.changedRows)
        lines.append(u"修改 "_s + row);
    for (const CString& row : report.removedRows)
        lines.append(u"删除 "_s + row);
    return lines;
}

} // namespace

CString DescribeImport(const embedded::ImportReport& report)
{
    CStringArray lines;
    if (!report.library.code.isEmpty()) lines.append(u"库：%1"_s.arg(LibraryText(report.library)));
    if (report.stored)
        lines.append(u"已导入 %1 行：新增 %2，修改 %3，删除 %4。"_s.arg(report.rows)
                         .arg(report.added)
                         .arg(report.changed)
                         .arg(report.removed));
    else if (report.cancelled)
        lines.append(u"已取消，原有的数据没有变。"_s);
    else
        lines.append(u"没有导入，原有的数据没有变。被拒绝的行：%1。"_s.arg(report.refused.size()));
    for (const embedded::RefusedRow& row : report.refused)
        lines.append(row.line > 0 ? u"第 %1 行：%2"_s.arg(row.line).arg(row.reason) : row.reason);
    return (lines + report.notes + Touched(report)).join(u'\n');
}

CString ImportQuestion(const embedded::ImportReport& trial)
{
    constexpr qsizetype shown = 10;
    const CStringArray touched = Touched(trial);
    if (touched.isEmpty()) return {};
    CString text = u"导入会改变原有的数据：修改 %1 行，去掉 %2 行\n"_s.arg(trial.changedRows.size())
                       .arg(trial.removedRows.size());
    for (const CString& line : touched.first(std::min(shown, touched.size())))
        text += line + u'\n';
    if (touched.size() > shown) text += u"……共 %1 行\n"_s.arg(touched.size());
    return text + u"仍然导入"_s;
}

std::unique_ptr<QDialog> MakeImportReport(QWidget* parent, const embedded::ImportReport& report)
{
    auto dialog = std::make_unique<QDialog>(parent);
    dialog->setWindowTitle(u"导入结果"_s);
    dialog->resize(ReportSize);
    auto* text = new QPlainTextEdit(DescribeImport(report));
    text->setReadOnly(true);
    text->setAccessibleName(u"导入结果"_s);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(u"关闭"_s, QDialogButtonBox::AcceptRole)->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog.get(), [&box = *dialog] { box.accept(); });
    auto* column = new QVBoxLayout(dialog.get());
    column->addWidget(text, 1);
    column->addWidget(buttons);
    return dialog;
}

} // namespace editor
