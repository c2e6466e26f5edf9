#pragma once

#include "editor/docks/details/ConditionTable.h"
#include "editor/docks/details/DetailPanel.h"
#include "editor/docks/details/ItemTree.h"
#include "editor/project/Project.h"
#include "editor/session/WorkSession.h"
#include "host/Installation.h"
#include "support/MessageRecorder.h"
#include "support/TempFolder.h"
#include "support/WindowsDouble.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

class QAction;

namespace test {

/// The panel on a project of its own, whose pickers and calculator are doubles, with the rules that a test
/// puts into 给水管.
class DetailsFixture : public ::testing::Test
{
protected:
    explicit DetailsFixture(SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode);

    /// Puts rules in front of the default rule, saves, so that the draft is unchanged, and chooses the first.
    void HaveRules(std::vector<rules::Rule> rules);
    void Choose(std::vector<std::size_t> positions);
    /// A rule of the category in its present state.
    const rules::Rule& Rule(std::size_t position = 0) const;
    std::size_t RuleCount() const { return m_session.Category()->rules.size(); }
    CString Text(std::size_t position = 0) const { return Rule(position).Text(); }
    /// Numbers of bill and quota items from above, those of quota items after "-".
    CString Items(std::size_t position = 0) const;

    editor::ConditionTable& Conditions() const { return *m_panel->findChild<editor::ConditionTable*>(); }
    editor::ItemTree& Tree() const { return *m_panel->findChild<editor::ItemTree*>(); }
    QAction& Command(const CString& text) const;
    /// All texts that labels of the panel show.
    CString Labels() const;

    // What the user does

    /// Shows the panel in a window and waits until it has the focus.
    void Show();
    /// Presses a key where the focus is.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Type(const CString& text);
    /// Opens the editor of a cell, types, and presses Enter.
    void Enter(int row, int column, const CString& text);
    void GoTo(int row, int column);
    void Undo() { m_session.Undo().undo(); }

    inline static const CString Category = QStringLiteral("给排水\\管道\\给水管");

    TempFolder m_folder;
    MessageRecorder m_messages;
    std::unique_ptr<editor::Project> m_project;
    WindowsDouble m_windows;
    std::optional<host::Installation> m_installed;
    editor::WorkSession m_session;
    std::unique_ptr<editor::DetailPanel> m_panel;
};

rules::Rule RuleOf(std::vector<rules::Condition> conditions, std::vector<rules::BillItem> bills = {},
                   std::vector<rules::QuotaItem> quotas = {});
rules::Condition Equals(const CString& attribute, const CString& value);
rules::Condition Between(const CString& attribute, const CString& lower, const CString& upper);
rules::BillItem Bill(const CString& number, const CString& library = QStringLiteral("GB50856-2013"));
rules::QuotaItem Quota(const CString& number, const CString& library = QStringLiteral("DEMO-QDDE-2024"));

} // namespace test
