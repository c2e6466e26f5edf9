#include "dialogs/template/ControlFactory.h"

#include "widgets/ControlText.h"
#include "widgets/GroupBox.h"
#include "widgets/ListBox.h"
#include "widgets/ListControls.h"
#include "widgets/NotifyingStatic.h"
#include "widgets/TreeControl.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFrame>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QTabWidget>

using namespace Qt::StringLiterals;

namespace dialogs {

namespace {

QWidget* MakeStatic(const ControlRow& row, QWidget* parent)
{
    QLabel* label = (row.flags & Notifies) != 0 ? new widgets::NotifyingStatic(parent) : new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

QWidget* MakeListBox(QWidget* parent)
{
    auto* list = new widgets::ListBox(parent);
    list->setTextElideMode(Qt::ElideNone);
    return list;
}

QWidget* MakeFrame(QWidget* parent)
{
    auto* frame = new QFrame(parent);
    frame->setFrameShape(QFrame::StyledPanel);
    return frame;
}

// A typed text stays what was typed: it neither becomes an entry nor is it completed to one.
void ApplyToCombo(const ControlRow& row, QComboBox& combo)
{
    combo.setEditable(row.kind == ControlKind::EditableCombo);
    combo.setInsertPolicy(QComboBox::NoInsert);
    if (combo.isEditable()) combo.setCompleter(nullptr);
}

void ApplyToButton(const ControlRow& row, QPushButton& button)
{
    button.setAutoDefault(false);
    button.setDefault((row.flags & DefaultButton) != 0);
}

} // namespace

QWidget* MakeControl(const ControlRow& row, QWidget* parent)
{
    switch (row.kind) {
    case ControlKind::PushButton:
        return new QPushButton(parent);
    case ControlKind::GroupBox:
        return new widgets::GroupBox(parent);
    case ControlKind::Static:
        return MakeStatic(row, parent);
    case ControlKind::Edit:
        return new QLineEdit(parent);
    case ControlKind::MultiLineEdit:
        return new QPlainTextEdit(parent);
    case ControlKind::ListBox:
        return MakeListBox(parent);
    case ControlKind::DropList:
    case ControlKind::EditableCombo:
        return new QComboBox(parent);
    case ControlKind::RadioButton:
        return new QRadioButton(parent);
    case ControlKind::CheckBox:
        return new QCheckBox(parent);
    case ControlKind::Tree:
        return new widgets::TreeControl(parent);
    case ControlKind::ReportList:
        return widgets::MakeReportList(parent);
    case ControlKind::Tab:
        return new QTabWidget(parent);
    case ControlKind::Frame:
        break;
    }
    return MakeFrame(parent);
}

void ApplyRow(const ControlRow& row, QWidget& control)
{
    if (row.id != NoId) control.setObjectName(u"id%1"_s.arg(row.id));
    if (!row.caption.isEmpty()) widgets::SetControlText(control, row.caption.toString());
    if ((row.flags & Sorted) != 0) widgets::SetSorted(control, true);
    if (auto* button = qobject_cast<QPushButton*>(&control)) ApplyToButton(row, *button);
    if (auto* combo = qobject_cast<QComboBox*>(&control)) ApplyToCombo(row, *combo);
    if (auto* edit = qobject_cast<QLineEdit*>(&control)) edit->setReadOnly((row.flags & ReadOnly) != 0);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(&control)) {
        edit->setReadOnly((row.flags & ReadOnly) != 0);
        edit->setTabChangesFocus(true);
    }
    control.setEnabled((row.flags & Disabled) == 0);
    control.setVisible((row.flags & Hidden) == 0);
}

} // namespace dialogs
