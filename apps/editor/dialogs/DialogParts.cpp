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

QDialogButtonBox* MakeButtons(QDialog& dialog, QPushButton* accept, const QString& tip)
{
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(accept, QDialogButtonBox::AcceptRole);
    accept->setToolTip(u"%1（Enter）"_s.arg(tip));
    buttons->addButton(u"取消"_s, QDialogButtonBox::RejectRole)
        ->setToolTip(u"什么也不做，关闭这个窗口（Esc）"_s);
    accept->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

void AddCloseButton(QDialogButtonBox& box)
{
    box.addButton(u"关闭"_s, QDialogButtonBox::RejectRole)->setToolTip(u"关闭这个窗口（Esc）"_s);
}

QPushButton* AddBrowseRow(QFormLayout& form, const QString& label, QWidget* field, QChar key)
{
    auto* browse = new QPushButton(u"浏览(&B)…"_s.replace(u'B', key));
    browse->setAutoDefault(false);
    browse->setToolTip(u"在文件夹中选（Alt+%1）"_s.arg(key));
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
