#pragma once

#include "platform/Text.h"

#include <memory>

class QMessageBox;
class QWidget;

namespace editor {

/// The program's name, which titles its window and whatever it asks or tells by itself. The module's own
/// boxes keep their caption.
QString ProgramName();

/// `text` followed by "!", as a warning of the editor's own.
void ShowWarning(const CString& text);
/// `text` followed by "?", as a question of the editor's own. True for Yes.
bool AskYesNo(const CString& text);

/// Reports a rule file that cannot be worked on safely, with the state in words. True when the user wants it
/// opened in spite of that; the default is not to.
bool AskOpenAnyway(QWidget* parent, const CString& nativePath, const CString& state);
/// Its box, not yet shown.
std::unique_ptr<QMessageBox> MakeOpenAnywayBox(QWidget* parent, const CString& nativePath,
                                               const CString& state);

/// Rules have changes that are not saved, and whatever comes next would lose them: what is to be done.
enum class LeaveAnswer { Save, Discard, Stay };
LeaveAnswer AskLeave(QWidget* parent, const CString& configuration);
/// Its box, not yet shown.
std::unique_ptr<QMessageBox> MakeLeaveBox(QWidget* parent, const CString& configuration);

/// A program that ended in the middle has left edits behind, told in `text`: what is to be done with them.
enum class RecoverAnswer { Recover, Discard, Later };
RecoverAnswer AskRecover(QWidget* parent, const CString& text);
/// Its box, not yet shown.
std::unique_ptr<QMessageBox> MakeRecoverBox(QWidget* parent, const CString& text);

/// The same for edits of a rule file that is gone, which `Recover` makes anew.
RecoverAnswer AskRestore(QWidget* parent, const CString& text);
/// Its box, not yet shown.
std::unique_ptr<QMessageBox> MakeRestoreBox(QWidget* parent, const CString& text);

enum class HeadTarget { None, Copy, Original };

/// A file with a head is no XML and cannot be edited: asks whether it is to be written to a copy, to the file
/// itself or not at all.
HeadTarget AskHeadTarget(QWidget* parent, const CString& nativePath);
/// Its box, not yet shown.
std::unique_ptr<QMessageBox> MakeHeadTargetBox(QWidget* parent, const CString& nativePath);

} // namespace editor
