#include "office/OfficeSetting.h"

#include "embedded/data/host/CreateProject.h"
#include "embedded/data/office/Office.h"
#include "platform/Paths.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

OfficeSetting::OfficeSetting()
{
    embedded::Office::Create(OfficeDatabase::Administrator());
    m_database.AddUser(u"wang"_s, u"keeper"_s);
    m_database.AddUser(u"li"_s, u"editor"_s);
    m_database.AddUser(u"gast"_s, u"reader"_s);
}

void OfficeSetting::PutBackTo(int version) const
{
    m_database.Ask(u"ALTER TABLE ktqdde.versions DISABLE TRIGGER ALL; "
                   "DELETE FROM ktqdde.versions WHERE number > %1; "
                   "DELETE FROM ktqdde.configurations WHERE NOT EXISTS ("
                   "SELECT FROM ktqdde.versions WHERE configuration = name); "
                   "ALTER TABLE ktqdde.versions ENABLE TRIGGER ALL"_s.arg(version));
}

OfficeProject::OfficeProject(const OfficeSetting& setting, const QString& name, const CString& service)
    : m_folder(setting.Folder(name))
{
    embedded::ProjectOptions options;
    options.office = service;
    embedded::CreateProject(m_folder, options);
    Reopen();
}

void OfficeProject::Reopen()
{
    m_files.reset();
    m_host.reset();
    m_host = std::make_unique<embedded::EmbeddedHost>(m_folder);
    m_files = std::make_unique<shared::OfficeFiles>(*m_host);
}

void OfficeProject::Write(const QByteArray& bytes) const
{
    const QString native = platform::ToNative(m_files->FileOf(Configuration));
    QDir().mkpath(QFileInfo(native).path());
    QFile file(native);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write the rule file");
}

QByteArray OfficeProject::Read() const
{
    QFile file(platform::ToNative(m_files->FileOf(Configuration)));
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the rule file");
    return file.readAll();
}

bool OfficeProject::HasFile() const
{
    return QFileInfo::exists(platform::ToNative(m_files->FileOf(Configuration)));
}

shared::PublishEnd OfficeProject::Publish(const CString& note, const shared::AnswerConflicts& answer,
                                          const shared::ReviewMerge& review)
{
    return m_files->Publish(Configuration, note, answer, review);
}

shared::FetchEnd OfficeProject::Fetch(const shared::AnswerConflicts& answer)
{
    return m_files->Fetch(Configuration, answer);
}

shared::OfficeEntry OfficeProject::Entry()
{
    for (const shared::OfficeEntry& entry : m_files->List())
        if (entry.configuration == Configuration) return entry;
    throw std::runtime_error("the configuration is not listed");
}

QByteArray OfficeProject::Last()
{
    return m_files->Content(Configuration, m_files->LastVersion(Configuration));
}

shared::AnswerConflicts AnswerAll(rules::Side side)
{
    return [side](const std::vector<rules::Conflict>& conflicts) {
        return std::optional(std::vector<rules::Side>(conflicts.size(), side));
    };
}

} // namespace test
