#include "editor/files/FileDialogs.h"

#include "editor/dialogs/DialogParts.h"
#include "widgets/FaultColour.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Room for a usual name, in characters.
constexpr int NameWidth = 48;

QLabel* Explanation(const QString& text)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

void Fill(QComboBox& combo, const FileChoices& files)
{
    combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const auto& [text, path] : files)
        combo.addItem(text, path);
}

} // namespace

NameDialog::NameDialog(QWidget* parent, Question question)
    : QDialog(parent), m_question(std::move(question)), m_source(new QComboBox(this)),
      m_name(new QLineEdit(m_question.name)), m_fault(new QLabel),
      m_accept(new QPushButton(m_question.accept))
{
    setWindowTitle(m_question.title);
    m_name->setMinimumWidth(fontMetrics().averageCharWidth() * NameWidth);
    m_name->selectAll();
    m_fault->setWordWrap(true);
    m_fault->setTextFormat(Qt::PlainText);
    Fill(*m_source, m_question.sources);
    auto* column = new QVBoxLayout(this);
    if (!m_question.explanation.isEmpty()) column->addWidget(Explanation(m_question.explanation));
    auto* form = new QFormLayout;
    if (m_question.sources.isEmpty())
        m_source->hide();
    else
        form->addRow(u"由(&S)："_s, m_source);
    form->addRow(u"名称(&N)："_s, m_name);
    form->addRow(QString(), m_fault);
    column->addLayout(form);
    column->addWidget(MakeButtons(*this, m_accept, u"用上面的名称"_s));
    m_name->setFocus();
    connect(m_name, &QLineEdit::textChanged, this, [this] { ShowFault(); });
    ShowFault();
}

CString NameDialog::Name() const
{
    return m_name->text().trimmed();
}

CString NameDialog::Source() const
{
    return m_source->currentData().toString();
}

// The place of the words is there from the start, so that nothing moves while somebody types.
void NameDialog::ShowFault()
{
    const CString fault = m_question.fault(Name());
    m_fault->setText(fault.isEmpty() ? u" "_s : fault);
    widgets::MarkAsFault(*m_fault, !fault.isEmpty());
    m_name->setAccessibleDescription(fault);
    m_accept->setEnabled(fault.isEmpty());
}

NextDialog::NextDialog(QWidget* parent, const QString& question, const FileChoices& files)
    : QDialog(parent), m_files(new QComboBox)
{
    setWindowTitle(u"删除当前配置"_s);
    Fill(*m_files, files);
    auto* column = new QVBoxLayout(this);
    column->addWidget(Explanation(question));
    auto* form = new QFormLayout;
    form->addRow(u"改用(&N)："_s, m_files);
    column->addLayout(form);
    auto* accept = new QPushButton(u"改用并删除(&R)"_s);
    column->addWidget(MakeButtons(*this, accept, u"先改用上面的文件，再删除"_s));
    m_files->setMinimumWidth(fontMetrics().averageCharWidth() * NameWidth);
    m_files->setFocus();
}

CString NextDialog::Next() const
{
    return m_files->currentData().toString();
}

} // namespace editor
