#include "editor/dialogs/NewProjectDialog.h"

#include "editor/dialogs/DialogParts.h"
#include "editor/dialogs/LibraryCombo.h"
#include "embedded/data/catalogue/Library.h"
#include "embedded/data/catalogue/ShippedLibraries.h"

#include <QtCore/QDir>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
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
      m_spec(new QComboBox), m_billLibrary(MakeLibraryCombo()), m_quotaLibrary(MakeLibraryCombo()),
      m_create(new QPushButton(u"新建"_s))
{
    setWindowTitle(u"新建工程"_s);
    m_folder->setMinimumWidth(fontMetrics().averageCharWidth() * FolderWidth);
    m_mode->addItem(u"清单模式"_s, SQdDeInfo::BillMode);
    m_mode->addItem(u"定额模式"_s, SQdDeInfo::QuotaMode);
    m_spec->addItems(specs);
    connect(m_folder, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_create->setEnabled(!text.trimmed().isEmpty()); });
    const auto billLibraries = embedded::ShippedLibraries(embedded::LibraryRole::Bill);
    FillLibraries(*m_billLibrary, billLibraries, billLibraries.value(0).code);
    ShowQuotaLibraries();
    for (const QComboBox* combo : {m_mode, m_billLibrary})
        connect(combo, &QComboBox::currentIndexChanged, this, [this] { ShowQuotaLibraries(); });
    Build();
    m_folder->selectAll();
}

void NewProjectDialog::Build()
{
    auto* form = new QFormLayout;
    const QPushButton* browse = AddBrowseRow(*form, u"文件夹(&F)："_s, m_folder);
    connect(browse, &QPushButton::clicked, this, [this] { Browse(); });
    form->addRow(u"模式(&M)："_s, m_mode);
    form->addRow(u"专业(&S)："_s, m_spec);
    form->addRow(u"清单库(&L)："_s, m_billLibrary);
    form->addRow(u"定额库(&Q)："_s, m_quotaLibrary);

    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(MakeButtons(*this, m_create));
}

QString NewProjectDialog::Folder() const
{
    return QDir::fromNativeSeparators(m_folder->text().trimmed());
}

embedded::ProjectOptions NewProjectDialog::Options() const
{
    return {Mode(), m_spec->currentText(), ChosenLibrary(*m_billLibrary), ChosenLibrary(*m_quotaLibrary)};
}

SQdDeInfo::EQdDeMode NewProjectDialog::Mode() const
{
    return static_cast<SQdDeInfo::EQdDeMode>(m_mode->currentData().toInt());
}

void NewProjectDialog::ShowQuotaLibraries()
{
    const auto libraries = embedded::ShippedLibraries(embedded::QuotaRole(Mode()));
    FillLibraries(*m_quotaLibrary, libraries,
                  embedded::QuotaLibraryBeside(libraries, ChosenLibrary(*m_billLibrary)));
}

void NewProjectDialog::Browse()
{
    const QString chosen = QFileDialog::getExistingDirectory(this, u"工程的文件夹"_s, Folder());
    if (!chosen.isEmpty()) m_folder->setText(QDir::toNativeSeparators(chosen));
}

} // namespace editor
