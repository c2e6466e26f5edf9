#pragma once

#include "cli/commands/rules/PipeFile.h"
#include "embedded/OfficeDatabase.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "shared/OfficeFiles.h"
#include "support/TempFolder.h"

#include <memory>

namespace test {

/// An office for three people whose services bear their names: Wang, who keeps it, Li, who publishes, and a
/// guest, who reads. Projects are in a folder that goes with this.
class OfficeSetting
{
public:
    OfficeSetting();

    QString Folder(const QString& project) const { return m_folder.Native(project); }
    /// The user of a service.
    QString User(const CString& service) const { return m_database.User(service); }
    const OfficeDatabase& Database() const noexcept { return m_database; }
    /// Puts the office back to the moment at which that version of all configurations was the last, as from a
    /// copy.
    void PutBackTo(int version) const;

private:
    OfficeDatabase m_database;
    TempFolder m_folder;
};

/// A project of an office, and its rule files.
class OfficeProject
{
public:
    /// Makes a project of that name with the person's service.
    OfficeProject(const OfficeSetting& setting, const QString& name, const CString& service);

    shared::OfficeFiles& Files() { return *m_files; }
    embedded::EmbeddedHost& Host() { return *m_host; }
    const QString& Folder() const noexcept { return m_folder; }
    /// Writes the rule file of the configuration of all tests.
    void Write(const QByteArray& bytes) const;
    QByteArray Read() const;
    bool HasFile() const;
    /// Opens the project again, as a program does that comes later.
    void Reopen();

    /// Those of the configuration of all tests.
    shared::PublishEnd Publish(const CString& note = {}, const shared::AnswerConflicts& answer = {},
                               const shared::ReviewMerge& review = {});
    shared::FetchEnd Fetch(const shared::AnswerConflicts& answer = {});
    shared::OfficeEntry Entry();
    /// The content of the last version.
    QByteArray Last();

private:
    QString m_folder;
    std::unique_ptr<embedded::EmbeddedHost> m_host;
    std::unique_ptr<shared::OfficeFiles> m_files;
};

/// The configuration of all tests.
inline const CString Configuration = QStringLiteral("安装规则");

/// Answers every conflict with a side.
shared::AnswerConflicts AnswerAll(rules::Side side);

} // namespace test
