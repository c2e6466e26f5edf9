#pragma once

#include "embedded/data/history/History.h"
#include "embedded/data/project/ProjectFolder.h"
#include "support/MessageRecorder.h"
#include "support/TempFolder.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace test {

/// A project with three rule files, of which "甲" is the current configuration: "甲" and "乙" can be read,
/// "封装" is wrapped and holds what "甲" holds.
class ProjectWithFiles : public ::testing::Test
{
protected:
    ProjectWithFiles();

    embedded::ProjectFolder Project() const;
    embedded::History History() const { return embedded::History(Project()); }
    /// The path text of a rule file.
    CString Path(const CString& name) const;
    QByteArray Content(const CString& name) const { return m_folder.ReadFile(Name(name)); }
    bool Stands(const CString& name) const { return m_folder.Exists(Name(name)); }
    void Write(const CString& name, const QByteArray& bytes) const;
    CString Current() const;
    /// The names of the rule files with their endings, sorted.
    CStringArray Names() const;
    /// What is in the rule folder beside rule files.
    CStringArray Remains() const;
    /// What a copy in the history of a rule file holds, the newest first.
    QList<QByteArray> Kept(const CString& name) const;

    /// A rule file without rules that is told from others by its comment.
    static QByteArray Rules(const QByteArray& comment);
    static QByteArray Wrapped(const QByteArray& rules);

    TempFolder m_folder;
    MessageRecorder m_messages;

private:
    static CString Name(const CString& name);
};

/// Another program that has a project open, and a rule file of it if one is named, until its end.
class ProjectHolder
{
public:
    explicit ProjectHolder(const embedded::ProjectFolder& project, const CString& ruleFile = {});
    ~ProjectHolder();
    ProjectHolder(const ProjectHolder&) = delete;
    ProjectHolder& operator=(const ProjectHolder&) = delete;

    qint64 Process() const { return m_process.processId(); }
    /// Return when it has ended: as it does by itself, or by force.
    void End();
    void Kill();

private:
    QProcess m_process;
};

} // namespace test
