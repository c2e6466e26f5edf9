#pragma once

#include "embedded/data/catalogue/CatalogueCopy.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/office/Office.h"
#include "embedded/data/office/OfficeInquiry.h"
#include "embedded/data/office/OfficeMemory.h"
#include "embedded/data/project/ProjectDatabase.h"
#include "embedded/data/project/ProjectFolder.h"

#include <chrono>
#include <functional>
#include <memory>

namespace embedded {

/// The office of a project, reachable or not. The project reads its catalogue from a local copy, which is
/// brought up to date whenever the office has another revision; without the server it goes on with the last
/// state that it saw.
///
/// What may take its time is asked by an `OfficeInquiry`, so that the windows of a program with windows are
/// painted while a server keeps silent. The connection itself is made when it is first needed.
class ProjectOffice
{
public:
    /// Begins to ask the office that the settings name, and tells it what the project uses. Raises `Error`
    /// when what the project remembers of it cannot be read.
    ProjectOffice(const ProjectFolder& folder, const ProjectDatabase::Settings& settings);
    ~ProjectOffice();
    ProjectOffice(const ProjectOffice&) = delete;
    ProjectOffice& operator=(const ProjectOffice&) = delete;

    const CString& Name() const noexcept { return m_name; }

    /// The connection, made now if there is none yet; null while the office cannot be reached, which raises
    /// nothing. Raises `Error` for everything else that is wrong: no such office, a newer one, no right to
    /// read.
    Office* Reached();
    /// Tries again when there is no connection, or when the one there was has broken. Whether there is one
    /// now. Raises as `Reached`.
    bool Reach();
    /// Whether the office could be reached when it was last tried. Asks nobody.
    bool IsReached() const noexcept { return m_isReached; }
    /// Why it was not reached, in words; empty when it was.
    const CString& Fault() const noexcept { return m_fault; }
    /// To be called when something has raised `UnreachableError`: gives up the connection.
    void Lose(const UnreachableError& error);
    /// How often the office has been heard of or missed by now.
    int Hearings() const noexcept { return m_hearings; }
    /// Take over what an inquiry of somebody else's has come to that began when there were `since` hearings:
    /// the revision of the office's catalogue, or why there was no answer (in words). What has been overtaken
    /// by a later hearing is passed over. The connection stays for whoever is using it.
    void Believe(int since, qint64 revision);
    void Believe(int since, const CString& fault);
    /// `action` is called when `IsReached`, `IsBehind` or `HasNews` has become another one; empty for nothing
    /// any more.
    void OnChange(std::function<void()> action) { m_onChange = std::move(action); }

    OfficeMemory& Memory() noexcept { return m_memory; }
    /// As `OfficeMemory::RememberBase`, for what is found out by looking: a project that cannot be written
    /// now is looked at all the same, and the same will be found out again.
    void NoteBase(const CString& configuration, const VersionMark& version);

    /// What others know the project by, such as beside what it publishes: the name of its folder and the
    /// machine on which it lies.
    const CString& ProjectName() const noexcept { return m_projectName; }
    /// By what the office tells the project from others, see `ProjectDatabase::Id`. Raises `Error`.
    const CString& ProjectId();
    /// By what the office tells it from others: its whole path and the machine.
    CString Place() const { return m_use.project; }
    /// Tells the office what the project uses from now on. An office that cannot be told is told when the
    /// project is opened the next time.
    void TellUse(const CString& specialty, const std::map<LibraryRole, CString>& libraries);

    /// Brings the local copy of the catalogue to the office's state, in one transaction, when it is another
    /// one. Does nothing while the office cannot be reached. Whether the copy has changed. A copy of this
    /// office that cannot be written now stays as it is, and `IsBehind`. Raises `Error`.
    bool BringUpToDate(Database& copy);
    /// The same in a write transaction of the caller's, who commits it; raises whatever goes wrong.
    bool BringUpToDateWithin(Database& copy);
    /// Whether the copy is known to be older than the office's state, and could not be brought up to date.
    bool IsBehind() const noexcept { return !m_behind.isEmpty(); }
    /// Whether the office's catalogue is known to have become another one since `BringUpToDate`: what was
    /// read from the copy then is former. Who opens the project again has the new one.
    bool HasNews() const noexcept { return m_held && m_told && m_held != m_told; }
    /// Raises `Error` when a database is no copy of this office's catalogue.
    void RequireCopy(Database& copy);

    /// For status bar and command line, without final mark: "办公室“NAME”", or with the time of the last
    /// state and the reason where it was not reached, the copy is behind or the office has news.
    CString InWords();

private:
    using Clock = std::chrono::steady_clock;

    /// The office's state, with rows unless `held` is that state; nothing while the office cannot be reached.
    struct Present
    {
        CopiedState state;
        CatalogueRows rows;
    };
    std::optional<Present> Read(const std::optional<CopiedState>& held);
    bool Write(Database& copy, const std::optional<CopiedState>& held, const Present& present);
    /// Notes that the copy holds the office's present state.
    void Confirm(qint64 revision);

    void Ask();
    /// Waits for the answer to what this has begun to ask: the revision. Nothing when this has not, and while
    /// the office cannot be reached. Raises as `Reached`.
    std::optional<qint64> Settle();
    void Connect();
    /// Whether the office has not been heard of for so long that it may be gone.
    bool IsStale() const { return Clock::now() - m_heard > StaleTime; }
    /// Whether what began at `since` is older than what this has heard, or is about to hear, by itself.
    bool IsOvertaken(int since) const { return m_inquiry || since != m_hearings; }
    void SetState(bool isReached, const CString& fault);
    void SetBehind(const CString& reason);
    /// What the project works with, and what the office has said last; nothing where that is not known.
    void SetRevisions(std::optional<qint64> held, std::optional<qint64> told);
    bool Keep(Database& copy, const std::optional<CopiedState>& held, const Present& present);

    static constexpr std::chrono::seconds StaleTime{5};

    CString m_name;
    CString m_projectName;
    ProjectUse m_use;
    CString m_projectFile;
    CString m_projectId; ///< empty until it was asked for
    OfficeMemory m_memory;
    std::unique_ptr<OfficeInquiry> m_inquiry; ///< not settled yet
    std::unique_ptr<OfficeInquiry> m_telling; ///< asks nothing
    bool m_isReached = false;
    CString m_fault;
    CString m_behind;             ///< why the copy could not be brought up to date
    std::optional<qint64> m_held; ///< the revision of the catalogue with which the project works
    std::optional<qint64> m_told; ///< the one that the office had when it was last asked
    Clock::time_point m_heard{};
    int m_hearings = 0;
    std::function<void()> m_onChange;
    std::unique_ptr<Office> m_office;
};

} // namespace embedded
