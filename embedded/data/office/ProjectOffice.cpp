#include "embedded/data/office/ProjectOffice.h"

#include "embedded/data/catalogue/Library.h"
#include "embedded/data/project/ProjectDatabase.h"
#include "platform/Paths.h"
#include "platform/TimeText.h"

#include <QtCore/QSysInfo>

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// How old the note of the last state may be. It is for people to read, and each writing waits for the disk.
constexpr int MinuteSeconds = 60;

CString OnThisMachine(const CString& place)
{
    return place + u'@' + QSysInfo::machineHostName();
}

std::map<CString, CString> ByWord(const std::map<LibraryRole, CString>& libraries)
{
    std::map<CString, CString> words;
    for (const auto& [role, code] : libraries)
        words.emplace(RoleWord(role), code);
    return words;
}

} // namespace

ProjectOffice::ProjectOffice(const ProjectFolder& folder, const ProjectDatabase::Settings& settings)
    : m_name(settings.office), m_projectName(OnThisMachine(platform::FileNameOf(folder.Path()))),
      m_use{OnThisMachine(platform::ToNative(folder.Path())), settings.spec, ByWord(settings.libraries)},
      m_projectFile(folder.ProjectFile()), m_memory(folder.OfficeFile())
{
    Ask();
}

ProjectOffice::~ProjectOffice() = default;

const CString& ProjectOffice::ProjectId()
{
    if (m_projectId.isEmpty()) m_projectId = ProjectDatabase(m_projectFile).Id();
    return m_projectId;
}

void ProjectOffice::Ask()
{
    m_inquiry = std::make_unique<OfficeInquiry>(m_name, m_use);
}

std::optional<qint64> ProjectOffice::Settle()
{
    if (!m_inquiry) return std::nullopt;
    const std::unique_ptr<OfficeInquiry> inquiry = std::move(m_inquiry);
    try {
        const qint64 revision = inquiry->Answer().revision;
        SetState(true, {});
        SetRevisions(m_held, revision);
        return revision;
    } catch (const UnreachableError& error) {
        Lose(error);
        return std::nullopt;
    }
}

Office* ProjectOffice::Reached()
{
    Settle();
    if (m_isReached && !m_office) {
        // A wait for a server that keeps silent is not for this thread.
        if (IsStale()) Ask();
        Settle();
        Connect();
    }
    return m_isReached ? m_office.get() : nullptr;
}

bool ProjectOffice::Reach()
{
    Settle();
    if (!m_isReached || !m_office || IsStale()) Ask();
    Settle();
    if (!m_isReached) return false;
    try {
        if (m_office) m_office->CatalogueRevision();
    } catch (const UnreachableError&) {
        m_office.reset(); // the server has been down and is up again
    }
    Connect();
    return m_isReached;
}

/// Unless there is a connection.
void ProjectOffice::Connect()
{
    if (!m_isReached) return;
    try {
        if (!m_office) m_office = std::make_unique<Office>(m_name);
        SetState(true, {});
    } catch (const UnreachableError& error) {
        Lose(error);
    }
}

void ProjectOffice::Lose(const UnreachableError& error)
{
    m_office.reset();
    SetState(false, error.Message().simplified());
}

void ProjectOffice::Believe(int since, qint64 revision)
{
    if (IsOvertaken(since)) return;
    SetState(true, {});
    SetRevisions(m_held, revision);
}

void ProjectOffice::Believe(int since, const CString& fault)
{
    if (IsOvertaken(since)) return;
    SetState(false, fault);
}

void ProjectOffice::SetState(bool isReached, const CString& fault)
{
    if (isReached) m_heard = Clock::now();
    ++m_hearings;
    const bool isOther = isReached != m_isReached || fault != m_fault;
    m_isReached = isReached;
    m_fault = fault;
    if (isOther && m_onChange) m_onChange();
}

void ProjectOffice::SetBehind(const CString& reason)
{
    const bool isOther = reason != m_behind;
    m_behind = reason;
    if (isOther && m_onChange) m_onChange();
}

void ProjectOffice::SetRevisions(std::optional<qint64> held, std::optional<qint64> told)
{
    const bool hadNews = HasNews();
    m_held = held;
    m_told = told;
    if (HasNews() != hadNews && m_onChange) m_onChange();
}

void ProjectOffice::NoteBase(const CString& configuration, const VersionMark& version)
{
    try {
        m_memory.RememberBase(configuration, version);
    } catch (const ReadOnlyError&) {
    } catch (const BusyError&) {
    }
}

void ProjectOffice::TellUse(const CString& specialty, const std::map<LibraryRole, CString>& libraries)
{
    m_use.specialty = specialty;
    m_use.libraries = ByWord(libraries);
    if (m_isReached) m_telling = std::make_unique<OfficeInquiry>(m_name, m_use);
}

std::optional<ProjectOffice::Present> ProjectOffice::Read(const std::optional<CopiedState>& held)
{
    const std::optional<qint64> told = Settle();
    if (told && held == CopiedState{m_name, *told}) return Present{*held, {}};
    Office* const office = Reached();
    if (office == nullptr) return std::nullopt;
    try {
        Present present{{m_name, office->CatalogueRevision()}, {}};
        if (held == present.state) return present;
        const Snapshot snapshot(office->Connection());
        present.state.revision = office->CatalogueRevision();
        present.rows = ReadCatalogueRows(office->Connection());
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
    const bool isKept = present && Keep(copy, held, *present);
    // The caller reads what the copy holds by now, which another program may have brought there.
    const std::optional<CopiedState> now = StateOfCopy(copy);
    const auto revision = now && now->office == m_name ? std::optional(now->revision) : std::nullopt;
    SetRevisions(revision, isKept ? revision : m_told);
    return isKept && held != present->state;
}

/// Brings the copy to the present state and says so. False when it could not be written.
bool ProjectOffice::Keep(Database& copy, const std::optional<CopiedState>& held, const Present& present)
{
    if (held != present.state && !Write(copy, held, present)) return false;
    SetBehind({});
    Confirm(present.state.revision);
    return true;
}

/// False when the copy could not be written and stays what it was.
bool ProjectOffice::Write(Database& copy, const std::optional<CopiedState>& held, const Present& present)
{
    const auto stayBehind = [&](const Error& error) {
        if (!held || held->office != m_name) throw;
        SetBehind(error.Message().simplified());
        return false;
    };
    try {
        Transaction transaction(copy);
        // Another program may have been here since, with a later state.
        const std::optional<CopiedState> found = StateOfCopy(copy);
        const bool isLater =
            found != held && found && found->office == m_name && found->revision > present.state.revision;
        if (isLater) return true;
        WriteCatalogueCopy(copy, present.rows, present.state);
        transaction.Commit();
        return true;
    } catch (const ReadOnlyError& error) {
        return stayBehind(error);
    } catch (const BusyError& error) {
        return stayBehind(error);
    }
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
    } catch (const BusyError&) {
    }
}

CString ProjectOffice::InWords()
{
    const CString office = u"办公室“%1”"_s.arg(m_name);
    if (m_isReached && !IsBehind() && !HasNews()) return office;
    const auto seen = m_memory.LastSeen();
    CString state = u"还没有它的数据"_s;
    if (seen) state = u"用的是 %1 的数据"_s.arg(platform::MinuteText(seen->at));
    // The newer data may have been seen already, by another program.
    if (seen && m_held && seen->revision != *m_held) state = u"用的是以前的数据"_s;
    if (!m_isReached) return m_fault + u"，"_s + state;
    if (!IsBehind()) return u"%1有了新的数据，重新打开工程就用新的，现在%2"_s.arg(office, state);
    return u"%1有了新的数据，工程的副本跟不上（%2），%3"_s.arg(office, m_behind, state);
}

} // namespace embedded
