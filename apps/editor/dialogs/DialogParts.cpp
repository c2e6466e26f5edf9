#include "editor/dialogs/DialogParts.h"

#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace editor {

QDialogButtonBox* MakeButtons(QDialog& dialog, QPushButton* accept)
{
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(accept, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"取消"_s, QDialogButtonBox::RejectRole);
    accept->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

QPushButton* AddBrowseRow(QFormLayout& form, const QString& label, QWidget* field, QChar key)
{
    auto* browse = new QPushButton(u"浏览(&B)…"_s.replace(u'B', key));
    browse->setAutoDefault(false);
    auto* place = new QHBoxLayout;
    place->addWidget(field, 1);
    place->addWidget(browse);
    form.addRow(label, place);
    static_cast<QLabel*>(form.labelForField(place))->setBuddy(field);
    return browse;
}

QString RuleFileFilter()
{
    return u"规则文件 (*.xml)"_s;
}

QString ChooseRuleFile(QWidget* parent, const QString& folder)
{
    return QFileDialog::getOpenFileName(parent, u"规则文件"_s, folder, RuleFileFilter());
}

} // namespace editor
