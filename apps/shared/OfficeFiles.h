#pragma once

#include "embedded/data/history/RuleFileLock.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/data/office/ProjectOffice.h"
#include "embedded/data/office/PublishedConfigurations.h"
#include "shared/RuleFileMerge.h"

#include <optional>
#include <vector>

namespace shared {

/// How a project's file of a configuration stands to what its office has published.
enum class OfficeState {
    Missing,     ///< the project has no such file
    Unpublished, ///< the office has no such configuration
    Apart,       ///< both have it, and it is not known to come from any version
    Same,        ///< the last version
    Older,       ///< an earlier version, as it was published
    Edited,      ///< made of the last version
    OlderEdited, ///< made of an earlier version
    Removed,     ///< the office has taken it from its list
    Unknown,     ///< the office cannot be reached
};

/// A configuration of an office, of a project, or of both.
struct OfficeEntry
{
    CString configuration;
    std::optional<embedded::PublishedVersion> last; ///< nothing where none is published, or known
    OfficeState state = OfficeState::Unknown;
    int base = 0;           ///< the version that the project's file was made from; 0 for none
    bool isWaiting = false; ///< to be published until the office can be reached again
};

/// What became of a publication.
struct PublishEnd
{
    enum End {
        Published,
        Unchanged, ///< `version` holds the same already
        Waits,     ///< the office cannot be reached; it is sent when it can
        Conflicts, ///< somebody has published against it, and there was no answer
        Collides,  ///< another project has given one of its bill numbers to something else
        Missing,   ///< the office has no such configuration, or has it no more, and the user may not make one
    };
    End end = Published;
    CString configuration{};
    int version = 0;       ///< the one that holds the file, or else the last one as far as it is known
    bool isMerged = false; ///< with what others had published meanwhile, in the project's file, too
    CArray<embedded::NumberCollision> collisions{};
    CString fault{}; ///< of one that waits: why, in words

    /// Whether what was to be published is in a version now.
    bool IsDone() const { return end == Published || end == Unchanged; }
};

/// What became of a publication that waited: `fault` is what the office refused, in words, when it did.
struct SentPublication
{
    embedded::WaitingPublication waiting;
    PublishEnd end;
};

/// What became of the project's file when a version was fetched.
struct FetchEnd
{
    enum End {
        Fetched,   ///< it is that version
        Unchanged, ///< it was it already
        Merged,    ///< it is that version with the project's own edits
        Conflicts, ///< the project's own edits are against it, and there was no answer
    };
    End end = Fetched;
    int version = 0;
};

/// Between the rule files of a project and the configurations that its office has published.
///
/// Nothing is replaced unseen. The project remembers of which version each of its files was made; what the
/// project and the office have made of that since is merged by rule, in either direction. A file that is
/// about to become another one has a copy in the history first and is locked against other programs.
///
/// What the project remembers may be older than the truth, since a program may end between two steps: a file
/// that holds a later version is recognised as that. All raise `embedded::Error` and what is derived from it,
/// `UnreachableError` where it does not say otherwise, and `platform::FileError`; the project's file is as it
/// was then.
class OfficeFiles
{
public:
    /// The host must outlive this. `wait` is asked while another program holds a file. Raises
    /// `embedded::Error` for a project that has no office.
    explicit OfficeFiles(embedded::EmbeddedHost& host, embedded::RuleFileLock::GoOn wait = {});

    embedded::ProjectOffice& Office() noexcept { return m_office; }
    /// The path text of the project's file of a configuration. Raises `embedded::Error` for what cannot be
    /// the name of one.
    CString FileOf(const CString& configuration) const;

    /// Sends what waits to be published. What cannot be published stays waiting, and so does what conflicts
    /// with others without an answer. Empty when the office cannot be reached. To be called before anything
    /// else is done with the office.
    std::vector<SentPublication> SendWaiting(const AnswerConflicts& answer = {});

    /// What the office has published and what the project has, by name. Without the office what the project
    /// has.
    /// Removed configurations only when asked for.
    CArray<OfficeEntry> List(bool withRemoved = false);
    /// All versions, the newest first.
    CArray<embedded::PublishedVersion> Log(const CString& configuration);
    /// The rule file of a version. Raises `embedded::Error` when there is none.
    QByteArray Content(const CString& configuration, int version);
    /// The number of the last version. Raises `embedded::Error` when there is none.
    int LastVersion(const CString& configuration);

    /// Brings a version, usually the last one, into the project's file.
    FetchEnd Fetch(const CString& configuration, const AnswerConflicts& answer,
                   std::optional<int> version = std::nullopt);

    /// Publishes the project's file. Where others have published meanwhile, both are merged in the file, and
    /// that is published. Waits when the office cannot be reached, also when it goes on the way.
    PublishEnd Publish(const CString& configuration, const CString& note, const AnswerConflicts& answer);

    /// Publishes an earlier version again and brings it into the project's file. `lastSeen` is the last one
    /// that whoever asks has seen; without it the last one now. Refused, by an `embedded::Error`, when the
    /// file holds edits that are not published, and when somebody has published since.
    PublishEnd Restore(const CString& configuration, int version, std::optional<int> lastSeen = {});

    /// Takes a configuration from the list of the office, or brings it back.
    void Remove(const CString& configuration);
    void BringBack(const CString& configuration);

private:
    /// Where a content comes from.
    struct Origin
    {
        int base = 0;
        bool isEdited = true; ///< whether it is something else than that version
    };

    embedded::Office& Reached();
    /// Does the work with the connection, which is given up when it turns out to be gone.
    template <typename Work>
    auto WithOffice(const Work& work)
    {
        try {
            return work(Reached());
        } catch (const embedded::UnreachableError& error) {
            m_office.Lose(error);
            throw;
        }
    }
    QByteArray ContentAt(embedded::Office& office, const CString& configuration, int version) const;
    Origin Trace(embedded::Office& office, const CString& configuration, int base, const QByteArray& content);
    OfficeState StateOf(embedded::Office& office, const embedded::PublishedVersion& last, int& base);
    CArray<OfficeEntry> LocalEntries();

    embedded::Publication FromFile(const CString& configuration, const CString& note) const;
    CArray<embedded::NumberUse> NumbersIn(const CString& configuration, const QByteArray& content) const;
    PublishEnd Send(embedded::Office& office, embedded::Publication& publication,
                    const AnswerConflicts& answer);
    bool TakeNewer(embedded::Office& office, embedded::Publication& publication, int version,
                   const AnswerConflicts& answer);
    SentPublication SendOne(embedded::Office& office, const embedded::WaitingPublication& waiting,
                            const AnswerConflicts& answer);
    CArray<embedded::WaitingPublication> WaitingOf(const CString& configuration);
    PublishEnd PublishAgain(embedded::Office& office, const CString& configuration, int version,
                            std::optional<int> lastSeen);

    /// The bytes of a rule file that can be worked on. Raises `embedded::Error` for any other, and for one
    /// that is missing.
    static QByteArray RulesAt(const CString& path);
    embedded::RuleFileLock Lock(const CString& path);
    void Write(const CString& path, const QByteArray& bytes);
    bool BringToFile(const CString& configuration, const QByteArray& from, const QByteArray& to,
                     const AnswerConflicts& answer);

    embedded::EmbeddedHost& m_host;
    embedded::ProjectOffice& m_office;
    embedded::RuleFileLock::GoOn m_wait;
};

} // namespace shared
