#include "editor/dialogs/NewProjectDialog.h"

#include "editor/dialogs/DialogParts.h"
#include "editor/dialogs/LibraryCombo.h"
#include "embedded/data/catalogue/Library.h"

#include <QtCore/QDir>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Room for a usual path, in characters.
constexpr int FolderWidth = 50;

} // namespace

NewProjectDialog::NewProjectDialog(QWidget* parent, const QString& folder, const CStringArray& offices,
                                   ReadOffice read)
    : QDialog(parent), m_read(std::move(read)), m_choice(embedded::ShippedChoice()),
      m_folder(new QLineEdit(QDir::toNativeSeparators(folder))), m_office(new QComboBox),
      m_mode(new QComboBox), m_spec(new QComboBox), m_billLibrary(MakeLibraryCombo()),
      m_quotaLibrary(MakeLibraryCombo()), m_create(new QPushButton(u"新建"_s))
{
    setWindowTitle(u"新建工程"_s);
    m_folder->setMinimumWidth(fontMetrics().averageCharWidth() * FolderWidth);
    m_office->addItem(u"不用办公室，数据在工程里"_s);
    for (const CString& office : offices)
        m_office->addItem(office, office);
    m_office->setToolTip(u"用办公室的工程，类别和库来自服务器，与同事共用；本机留一份，连不上时照样可用"_s);
    m_mode->addItem(u"清单模式"_s, SQdDeInfo::BillMode);
    m_mode->addItem(u"定额模式"_s, SQdDeInfo::QuotaMode);
    connect(m_folder, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_create->setEnabled(!text.trimmed().isEmpty()); });
    ShowChoice();
    for (const QComboBox* combo : {m_mode, m_billLibrary})
        connect(combo, &QComboBox::currentIndexChanged, this, [this] { ShowQuotaLibraries(); });
    connect(m_office, &QComboBox::currentIndexChanged, this, [this] { TakeOffice(); });
    Build();
    m_folder->selectAll();
}

void NewProjectDialog::Build()
{
    auto* form = new QFormLayout;
    const QPushButton* browse = AddBrowseRow(*form, u"文件夹(&F)："_s, m_folder);
    connect(browse, &QPushButton::clicked, this, [this] { Browse(); });
    if (m_office->count() > 1) form->addRow(u"办公室(&O)："_s, m_office);
    form->addRow(u"模式(&M)："_s, m_mode);
    form->addRow(u"专业(&S)："_s, m_spec);
    form->addRow(u"清单库(&L)："_s, m_billLibrary);
    form->addRow(u"定额库(&Q)："_s, m_quotaLibrary);

    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(MakeButtons(*this, m_create, u"在上面的文件夹中建立工程，然后打开"_s));
    if (m_office->count() == 1) { // nothing to choose
        m_office->setParent(this);
        m_office->hide();
    }
}

QString NewProjectDialog::Folder() const
{
    return QDir::fromNativeSeparators(m_folder->text().trimmed());
}

embedded::ProjectOptions NewProjectDialog::Options() const
{
    embedded::ProjectOptions options{Mode(), m_spec->currentText(), ChosenLibrary(*m_billLibrary),
                                     ChosenLibrary(*m_quotaLibrary)};
    options.office = Office();
    return options;
}

SQdDeInfo::EQdDeMode NewProjectDialog::Mode() const
{
    return static_cast<SQdDeInfo::EQdDeMode>(m_mode->currentData().toInt());
}

CString NewProjectDialog::Office() const
{
    return m_office->currentData().toString();
}

void NewProjectDialog::TakeOffice()
{
    std::optional<embedded::ProjectChoice> choice;
    if (Office().isEmpty())
        choice = embedded::ShippedChoice();
    else
        choice = m_read(Office());
    if (!choice) {
        m_office->setCurrentIndex(0); // comes here again
        return;
    }
    m_choice = std::move(*choice);
    ShowChoice();
}

void NewProjectDialog::ShowChoice()
{
    const CString spec = m_spec->currentText();
    m_spec->clear();
    m_spec->addItems(m_choice.specs);
    m_spec->setCurrentIndex(std::max(0, m_spec->findText(spec)));
    const auto bills = embedded::NamesOf(m_choice.libraries, embedded::LibraryRole::Bill);
    FillLibraries(*m_billLibrary, bills, bills.value(0).code);
    ShowQuotaLibraries();
}

void NewProjectDialog::ShowQuotaLibraries()
{
    const auto libraries = embedded::NamesOf(m_choice.libraries, embedded::QuotaRole(Mode()));
    FillLibraries(*m_quotaLibrary, libraries,
                  embedded::QuotaLibraryBeside(libraries, ChosenLibrary(*m_billLibrary)));
}

void NewProjectDialog::Browse()
{
    const QString chosen = QFileDialog::getExistingDirectory(this, u"工程的文件夹"_s, Folder());
    if (!chosen.isEmpty()) m_folder->setText(QDir::toNativeSeparators(chosen));
}

} // namespace editor
