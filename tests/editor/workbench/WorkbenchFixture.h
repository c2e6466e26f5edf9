#pragma once

#include "editor/session/SessionFixture.h"

#include "editor/workbench/CategoryPanel.h"
#include "editor/workbench/Workbench.h"

class QAbstractItemModel;
class QLineEdit;

namespace test {

/// The workbench on the sample project, on the pipes of the current file and with the focus on the rules,
/// driven by keys.
class WorkbenchOnSample : public SessionTest
{
protected:
    WorkbenchOnSample();
    ~WorkbenchOnSample() override;

    QWidget& Rules() const { return *m_window.RuleList(); }
    QAbstractItemModel& Model() const;
    int Lines() const;
    CString Cell(int line, int column) const;
    QLineEdit& Search() const;
    editor::CategoryPanel& Categories() const;
    /// Presses a key on the list of rules.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    /// The conditions of the rules of the chosen category, as the draft has them.
    std::vector<CString> Conditions() const;

    CString m_wanted;                        ///< the file that the workbench last asked to be opened
    std::vector<editor::OtherFile> m_others; ///< what it gets when it asks for the other files of the project
    int m_saves = 0;                         ///< how often it asked to save
    editor::Workbench m_window;
};

} // namespace test
