#include "embedded/data/office/ProjectOffice.h"

#include "embedded/data/project/ProjectDatabase.h"
#include "platform/Paths.h"

#include <QtCore/QSysInfo>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// How old the note of the last state may be. It is for people to read, and each writing waits for the disk.
constexpr int MinuteSeconds = 60;

} // namespace

ProjectOffice::ProjectOffice(const ProjectFolder& folder, const CString& name)
    : m_name(name), m_projectName(platform::FileNameOf(folder.Path()) + u'@' + QSysInfo::machineHostName()),
      m_projectFile(folder.ProjectFile()), m_memory(folder.OfficeFile())
{
    Reach();
}

ProjectOffice::~ProjectOffice() = default;

const CString& ProjectOffice::ProjectId()
{
    if (m_projectId.isEmpty()) m_projectId = ProjectDatabase(m_projectFile).Id();
    return m_projectId;
}

bool ProjectOffice::Reach()
{
    try {
        if (m_office) m_office->CatalogueRevision();
    } catch (const UnreachableError& error) {
        Lose(error);
    }
    if (m_office) return true;
    try {
        m_office = std::make_unique<embedded::Office>(m_name);
        m_fault.clear();
    } catch (const UnreachableError& error) {
        Lose(error);
    }
    return m_office != nullptr;
}

void ProjectOffice::Lose(const UnreachableError& error)
{
    m_office.reset();
    m_fault = error.Message().simplified();
}

std::optional<ProjectOffice::Present> ProjectOffice::Read(const std::optional<CopiedState>& held)
{
    if (!m_office) return std::nullopt;
    try {
        Database& office = m_office->Connection();
        Present present{{m_name, m_office->CatalogueRevision()}, {}};
        if (held == present.state) return present;
        const Snapshot snapshot(office);
        present.state.revision = m_office->CatalogueRevision();
        present.rows = ReadCatalogueRows(office);
        return present;
    } catch (const UnreachableError& error) {
        Lose(error);
        return std::nullopt;
    }
}

bool ProjectOffice::BringUpToDate(Database& copy)
{
    const std::optional<CopiedState> held = StateOfCopy(copy);
    const std::optional<Present> present = Read(held);
    if (!present) return false;
    if (held != present->state) {
        Transaction transaction(copy);
        // Another program may have been here since, with a later state.
        const std::optional<CopiedState> found = StateOfCopy(copy);
        const bool isLater =
            found != held && found && found->office == m_name && found->revision > present->state.revision;
        if (isLater) return true;
        WriteCatalogueCopy(copy, present->rows, present->state);
        transaction.Commit();
    }
    Confirm(present->state.revision);
    return held != present->state;
}

bool ProjectOffice::BringUpToDateWithin(Database& copy)
{
    const std::optional<CopiedState> held = StateOfCopy(copy);
    const std::optional<Present> present = Read(held);
    if (!present || held == present->state) return false;
    WriteCatalogueCopy(copy, present->rows, present->state);
    return true;
}

void ProjectOffice::RequireCopy(Database& copy)
{
    const std::optional<CopiedState> held = StateOfCopy(copy);
    if (held && held->office == m_name) return;
    throw Error((m_fault.isEmpty() ? u"办公室“%1”"_s.arg(m_name) : m_fault) +
                u"；工程中还没有这个办公室的数据，要连上一次才能打开"_s);
}

void ProjectOffice::Confirm(qint64 revision)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const auto seen = m_memory.LastSeen();
    const bool isFresh =
        seen && seen->revision == revision && seen->at <= now && seen->at.secsTo(now) < MinuteSeconds;
    if (isFresh) return;
    try {
        m_memory.RememberSeen(revision, now);
    } catch (const ReadOnlyError&) {
        // A project that can only be read is read all the same.
    }
}

CString ProjectOffice::InWords()
{
    if (m_office) return u"办公室“%1”"_s.arg(m_name);
    const auto seen = m_memory.LastSeen();
    const CString state =
        seen ? u"用的是 %1 的数据"_s.arg(seen->at.toLocalTime().toString(u"yyyy-MM-dd HH:mm"_s))
             : u"还没有它的数据"_s;
    return m_fault + u"，"_s + state;
}

} // namespace embedded
