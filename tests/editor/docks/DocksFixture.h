#pragma once

#include "editor/project/Project.h"
#include "editor/session/WorkSession.h"
#include "support/MessageRecorder.h"
#include "support/TempFolder.h"
#include "widgets/NotifyingStatic.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace test {

/// The sample project with a session on one of its rule files.
class DocksFixture : public ::testing::Test
{
protected:
    DocksFixture();
    ~DocksFixture() override;

    /// Opens a configuration of the sample project by its name.
    void Open(const CString& configuration);
    /// The path text of a take-off table of the samples.
    static CString Sample(const QString& table);

    /// Puts a rule into a category, in front of all others unless told otherwise.
    void Insert(const CString& category, const rules::Rule& rule, std::size_t position = 0);
    /// A condition as a person writes it.
    static rules::Condition Equal(const CString& attribute, const CString& value);
    static rules::Condition Between(const CString& attribute, const CString& low, const CString& high);
    /// A rule with these conditions and the items of the category's first rule.
    rules::Rule RuleLike(const CString& category, std::vector<rules::Condition> conditions) const;

    /// The one text of a panel that can be clicked. For `findChild` it is a label like any other.
    static widgets::NotifyingStatic& LinkOf(const QWidget& panel);

    const CString m_pipe = QStringLiteral("给排水\\管道\\给水管");
    TempFolder m_folder;
    MessageRecorder m_messages;
    std::optional<editor::Project> m_project;
    editor::WorkSession m_session;
};

} // namespace test
