#pragma once

#include "editor/session/WorkSession.h"

#include <QtCore/QByteArray>

class QMimeData;
class QWidget;

namespace editor {

/// What the commands of the workbench do with the chosen rules. Each is one edit, which can be undone.
class RuleCommands
{
public:
    /// `window` owns the dialogs. Both must outlive this.
    RuleCommands(WorkSession& session, QWidget& window) : m_session(session), m_window(window) {}

    /// A rule without conditions behind the one of the cursor, before the default rule.
    void Add();
    void Remove();
    /// One place up or down.
    void Shift(bool down);
    /// To the place before the rule at `target`, or behind the last.
    void MoveTo(std::size_t target);
    /// Puts the chosen rules into the clipboard: as they are, and as lines of a table for workbooks.
    void Copy() const;
    /// Whether the clipboard holds rules, or lines of a table of rules.
    static bool CanPaste();
    /// Adds what the clipboard holds behind the rule of the cursor, and tells what does not go with the
    /// category.
    void Paste();
    /// Asks for categories and copies the chosen rules to each.
    void CopyToOthers();

private:
    std::size_t PlaceBehindCurrent() const;
    std::vector<rules::Rule> ChosenOnes() const;
    void TellMisfits(const std::vector<rules::Misfit>& misfits) const;

    WorkSession& m_session;
    QWidget& m_window;
};

} // namespace editor
