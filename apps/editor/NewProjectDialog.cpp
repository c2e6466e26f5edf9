#include "editor/NewProjectDialog.h"

#include <QtCore/QDir>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Room for a usual path, in characters.
constexpr int FolderWidth = 50;

} // namespace

NewProjectDialog::NewProjectDialog(QWidget* parent, const QString& folder, const CStringArray& specs)
    : QDialog(parent), m_folder(new QLineEdit(QDir::toNativeSeparators(folder))), m_mode(new QComboBox),
      m_spec(new QComboBox), m_create(new QPushButton(u"新建"_s))
{
    setWindowTitle(u"新建工程"_s);
    m_folder->setMinimumWidth(fontMetrics().averageCharWidth() * FolderWidth);
    m_mode->addItem(u"清单模式"_s, SQdDeInfo::BillMode);
    m_mode->addItem(u"定额模式"_s, SQdDeInfo::QuotaMode);
    m_spec->addItems(specs);
    connect(m_folder, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_create->setEnabled(!text.trimmed().isEmpty()); });
    Build();
    m_folder->selectAll();
}

void NewProjectDialog::Build()
{
    auto* browse = new QPushButton(u"浏览(&B)…"_s);
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, [this] { Browse(); });
    auto* place = new QHBoxLayout;
    place->addWidget(m_folder, 1);
    place->addWidget(browse);

    auto* form = new QFormLayout;
    form->addRow(u"文件夹(&F)："_s, place);
    static_cast<QLabel*>(form->labelForField(place))->setBuddy(m_folder);
    form->addRow(u"模式(&M)："_s, m_mode);
    form->addRow(u"专业(&S)："_s, m_spec);

    auto* buttons = new QDialogButtonBox;
    buttons->addButton(m_create, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"取消"_s, QDialogButtonBox::RejectRole);
    m_create->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });

    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(buttons);
}

QString NewProjectDialog::Folder() const
{
    return QDir::fromNativeSeparators(m_folder->text().trimmed());
}

embedded::ProjectOptions NewProjectDialog::Options() const
{
    return {static_cast<SQdDeInfo::EQdDeMode>(m_mode->currentData().toInt()), m_spec->currentText()};
}

void NewProjectDialog::Browse()
{
    const QString chosen = QFileDialog::getExistingDirectory(this, u"工程的文件夹"_s, Folder());
    if (!chosen.isEmpty()) m_folder->setText(QDir::toNativeSeparators(chosen));
}

} // namespace editor
