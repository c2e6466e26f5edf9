#pragma once

#include "editor/project/Project.h"
#include "editor/session/WorkSession.h"
#include "support/MessageRecorder.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace test {

/// For saves that must not ask.
inline const editor::AnswerConflicts NoConflicts =
    [](const auto&) -> std::optional<std::vector<rules::Side>> {
    ADD_FAILURE() << "asked about conflicts";
    return std::nullopt;
};

inline const editor::AskWhetherAnew NotAsked = [] {
    ADD_FAILURE() << "asked whether to write the file anew";
    return false;
};

/// A session on the sample project.
class SessionTest : public ::testing::Test
{
protected:
    const CString Pipes = QStringLiteral("给排水\\管道\\给水管");
    const CString HotPipes = QStringLiteral("给排水\\管道\\热水管");

    SessionTest();
    ~SessionTest() override;

    CString Path(const CString& configuration = QStringLiteral("DefaultConfig")) const;
    QByteArray Bytes(const CString& configuration = QStringLiteral("DefaultConfig")) const;
    /// The rules of a file on disk.
    rules::ConfigurationPtr Saved(const CString& configuration = QStringLiteral("DefaultConfig")) const;
    /// Opens the current configuration and chooses a category.
    void OpenAt(const CString& category);
    /// A rule that tests one attribute.
    static rules::Rule RuleFor(const CString& attribute, const CString& value);
    void Insert(const CString& category, std::size_t position, const rules::Rule& rule);
    /// What another program does: adds a rule to the file on disk.
    void AddOutside(const CString& category, const rules::Rule& rule);
    void WriteOutside(const rules::Draft& other);
    /// The end of the program in the middle: project and session go without being closed, and come again.
    void Restart();

    TempFolder m_folder;
    MessageRecorder m_messages;
    std::unique_ptr<editor::Project> m_project;
    std::unique_ptr<editor::WorkSession> m_session;
};

} // namespace test
