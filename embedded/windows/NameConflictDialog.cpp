#include "embedded/windows/NameConflictDialog.h"

#include "platform/Paths.h"
#include "widgets/ControlText.h"
#include "widgets/FaultColour.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace embedded {

NameConflictDialog::NameConflictDialog(const CString& folder, const CString& name, QWidget* parent)
    : QDialog(parent), m_folder(folder), m_name(new QLineEdit(FreeTemplateName(folder, name), this)),
      m_fault(new QLabel(this))
{
    setWindowTitle(u"名称已存在"_s);
    auto* text = new QLabel(this);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    const CString sentence = u"“%1”已存在于文件夹 %2。\n覆盖时，原文件会另存为带日期的备份。"_s;
    text->setText(sentence.arg(widgets::Breakable(name), widgets::Breakable(platform::ToNative(folder))));
    text->setAccessibleName(sentence.arg(name, platform::ToNative(folder)));
    auto* label = new QLabel(u"新名称(&N):"_s, this);
    label->setBuddy(m_name);
    m_name->setAccessibleName(u"新名称"_s);
    m_name->selectAll();
    m_fault->setTextFormat(Qt::PlainText);
    m_fault->setAccessibleDescription(u"名称检查结果"_s);
    widgets::MarkAsFault(*m_fault, true);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* widget : std::initializer_list<QWidget*>{text, label, m_name, m_fault})
        layout->addWidget(widget);
    MakeButtons();
    constexpr int WidthInLines = 28;
    connect(m_name, &QLineEdit::textChanged, this, [this] { Check(); });
    Check();
    ensurePolished();
    // As high as the lines need into which the path breaks at that width.
    const int width = std::max(WidthInLines * fontMetrics().height(), layout->totalMinimumSize().width());
    resize(width, layout->totalHeightForWidth(width));
}

NameConflictDialog::~NameConflictDialog() = default;

ConflictDecision NameConflictDialog::Decision() const
{
    return {m_action, m_name->text()};
}

void NameConflictDialog::MakeButtons()
{
    auto* buttons = new QDialogButtonBox(this);
    auto* overwrite = buttons->addButton(u"覆盖(&O)"_s, QDialogButtonBox::DestructiveRole);
    m_rename = buttons->addButton(u"改名(&R)"_s, QDialogButtonBox::AcceptRole);
    auto* cancel = buttons->addButton(u"取消"_s, QDialogButtonBox::RejectRole);
    overwrite->setAutoDefault(false);
    cancel->setAutoDefault(false);
    m_rename->setDefault(true);
    connect(overwrite, &QPushButton::clicked, this, [this] { End(ConflictDecision::Overwrite); });
    connect(m_rename, &QPushButton::clicked, this, [this] { End(ConflictDecision::Rename); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    layout()->addWidget(buttons);
}

void NameConflictDialog::Check()
{
    CString fault = TemplateNameFault(m_name->text());
    if (fault.isEmpty() && HasTemplate(m_folder, m_name->text())) fault = u"此名称已存在"_s;
    m_fault->setText(fault);
    m_rename->setEnabled(fault.isEmpty());
}

void NameConflictDialog::End(ConflictDecision::Action action)
{
    m_action = action;
    accept();
}

} // namespace embedded
