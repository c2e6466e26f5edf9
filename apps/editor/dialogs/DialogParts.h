#pragma once

#include <QtCore/QString>

class QDialog;
class QDialogButtonBox;
class QFormLayout;
class QPushButton;
class QWidget;

/// What the program's own dialogs are put together from, so that they look and answer alike.
namespace editor {

/// The buttons at the foot of a dialog: `accept`, which is the default and accepts the dialog, and 取消,
/// which rejects it. `tip` says what accepting does. They belong to the box, and the box to nobody yet.
QDialogButtonBox* MakeButtons(QDialog& dialog, QPushButton* accept, const QString& tip);

/// Adds 关闭, which closes the window like Escape, to a box of its buttons.
void AddCloseButton(QDialogButtonBox& box);

/// Adds a row with a field that names a place and the button 浏览 beside it, which `key` presses together
/// with Alt. Gives the button; `field` becomes the row's.
QPushButton* AddBrowseRow(QFormLayout& form, const QString& label, QWidget* field, QChar key = u'B');

/// The filter of whoever asks for a rule file.
QString RuleFileFilter();
/// Asks for a rule file that is there, first in `folder`. Native; empty when the user chose none.
QString ChooseRuleFile(QWidget* parent, const QString& folder);

} // namespace editor
