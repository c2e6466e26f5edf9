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

/// What a merge with a published version has brought together.
struct JoinedStates
{
    CString configuration;
    int version = 0;   ///< the published one
    QByteArray mine;   ///< what was to be published
    QByteArray theirs; ///< the published version
    QByteArray merged; ///< what is to be published in place of `mine`
    /// The published version with which it was merged just before, somebody having published meanwhile: that
    /// is in the project's file by now. 0 where this is the first merge.
    int before = 0;
};

/// Shown what was merged before it goes anywhere. False leaves everything as it is: also what an earlier
/// merge of the same publication has brought into the project's file.
using ReviewMerge = std::function<bool(const JoinedStates& joined)>;

/// What became of a publication.
struct PublishEnd
{
    enum End {
        Published,
        Unchanged, ///< `version` holds the same already
        Waits,     ///< the office cannot be reached; it is sent when it can
        Conflicts, ///< somebody has published against it, and there was no answer
        Declined,  ///< whoever was shown what was merged did not want it
        Collides,  ///< another project has given one of its bill numbers to something else
        Missing,   ///< the office has no such configuration, or has it no more, and the user may not make one
    };
    End end = Published;
    CString configuration{};
    int version = 0; ///< the one that holds the file, or else the last one as far as it is known
    /// With what it was merged, in the project's file, too: all that others had published meanwhile. The file
    /// holds it whatever the end is.
    std::optional<JoinedStates> joined{};
    CArray<embedded::NumberCollision> collisions{};
    CString fault{};        ///< of one that waits: why, in words
    bool mayBeDone = false; ///< of one that waits: the answer is missing, so it may be published already

    bool IsMerged() const { return joined.has_value(); }
    /// Whether what was to be published is in a version now.
    bool IsDone() const { return end == Published || end == Unchanged; }
};

/// What became of a publication that waited. Where it still waits, the `fault` of its end says why, in words:
/// what the office refused, that it could not be reached, or what failed on this machine.
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
    bool hasWithdrawn = false; ///< whether something waited to be published that does so no more

    bool IsDone() const { return end != Conflicts; }
};

/// What became of what waited to be published.
enum class WithdrawEnd {
    NoneWaits,
    Withdrawn,
    MayBeDone, ///< it waits no more, but was sent before and not answered: it may be published
};

/// Between the rule files of a project and the configurations that its office has published.
///
/// Nothing is replaced unseen. The project remembers of which version each of its files was made; what the
/// project and the office have made of that since is merged by rule, in either direction. A file that is
/// about to become another one has a copy in the history first and is locked against other programs, but not
/// while somebody is asked: what others make of it meanwhile is merged as well.
///
/// What the project remembers may be older than the truth, since a program may end between two steps, or not
/// hear what came of one: a file that holds a later version is recognised as that, and so is a version that
/// the project has sent. The office may be older, too, when it was put back from a copy: a version that it
/// does not have, or has with another content, is no common origin then. All raise `embedded::Error` and what
/// is derived from it, `UnreachableError` where it does not say otherwise, and `platform::FileError`; the
/// project's file is as it was then.
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
    /// with others without an answer, and what was merged and not wanted. Empty when the office cannot be
    /// reached; when it goes while one is sent, that is the last one. To be called before anything else is
    /// done with the office.
    std::vector<SentPublication> SendWaiting(const AnswerConflicts& answer = {},
                                             const ReviewMerge& review = {});
    /// Lets what waits of a configuration wait no more. The project's file stays as it is.
    WithdrawEnd Withdraw(const CString& configuration);

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

    /// Brings a version, usually the last one, into the project's file. What waits to be published of it does
    /// so no more then: it is of a former state of the file.
    FetchEnd Fetch(const CString& configuration, const AnswerConflicts& answer,
                   std::optional<int> version = std::nullopt);

    /// Publishes the project's file. Where others have published meanwhile, both are merged in the file, and
    /// that is published, after `review`. Waits when the office cannot be reached, also when it goes on the
    /// way.
    PublishEnd Publish(const CString& configuration, const CString& note, const AnswerConflicts& answer,
                       const ReviewMerge& review = {});

    /// Publishes an earlier version again and brings it into the project's file. `lastSeen` is the last one
    /// that whoever asks has seen; without it the last one now. Refused, by an `embedded::Error`, when the
    /// file holds edits that are not published, and when somebody has published since.
    PublishEnd Restore(const CString& configuration, int version,
                       const std::optional<embedded::VersionMark>& lastSeen = {});

    /// Takes a configuration from the list of the office, or brings it back.
    void Remove(const CString& configuration);
    void BringBack(const CString& configuration);

private:
    /// Whom to ask when states are merged.
    struct MergeQuestions
    {
        const AnswerConflicts& answer;
        const ReviewMerge& review;
    };
    /// A publication on its way to the office, and what it has become on it.
    struct Sending
    {
        embedded::Publication publication;
        std::optional<embedded::WaitingPublication> waiting{}; ///< what waits in its place
        std::optional<JoinedStates> joined{};

        PublishEnd Unreached(const embedded::UnreachableError& error) const;
    };
    /// Where a content comes from.
    struct Origin
    {
        embedded::VersionMark base;
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
            Lose(error);
            throw;
        }
    }
    void Lose(const embedded::UnreachableError& error);
    QByteArray ContentAt(embedded::Office& office, const CString& configuration, int version) const;
    Origin Trace(embedded::Office& office, const CString& configuration, const embedded::VersionMark& base,
                 const QByteArray& content);
    QByteArray CommonState(embedded::Office& office, const CString& configuration, const Origin& origin,
                           const QByteArray& content) const;
    OfficeState StateOf(embedded::Office& office, const embedded::PublishedVersion& last, int& base);
    CArray<OfficeEntry> LocalEntries();

    embedded::Publication FromFile(const CString& configuration, const CString& note);
    CArray<embedded::NumberUse> NumbersIn(const CString& configuration, const QByteArray& content) const;
    embedded::PublishOutcome AskToPublish(embedded::Office& office, const embedded::Publication& publication);
    void FindBase(embedded::Office& office, embedded::Publication& publication);
    void KeepWaiting(Sending& sending);
    PublishEnd Send(embedded::Office& office, Sending& sending, const MergeQuestions& questions);
    bool TakeNewer(embedded::Office& office, Sending& sending, PublishEnd& end,
                   const MergeQuestions& questions);
    SentPublication SendOne(embedded::Office& office, const embedded::WaitingPublication& waiting,
                            const MergeQuestions& questions);
    CArray<embedded::WaitingPublication> WaitingOf(const CString& configuration);
    void Forget(const CArray<embedded::WaitingPublication>& waiting);
    PublishEnd PublishAgain(embedded::Office& office, const CString& configuration, int version,
                            const std::optional<embedded::VersionMark>& lastSeen);

    /// The bytes of a rule file that can be worked on. Raises `embedded::Error` for any other, and for one
    /// that is missing.
    static QByteArray RulesAt(const CString& path);
    embedded::RuleFileLock Lock(const CString& path);
    void Write(const CString& path, const QByteArray& bytes);
    /// The bytes that a file is to hold, by those that it holds now; nothing to leave it as it is. Nothing
    /// stands for a file that is missing.
    using FileChange = std::function<std::optional<QByteArray>(const std::optional<QByteArray>& now)>;
    /// `done` is called once the file holds what it is to hold, before it is free for others.
    void ChangeFile(const CString& path, const FileChange& change, const std::function<void()>& done);
    bool BringToFile(const CString& configuration, const QByteArray& from, const QByteArray& to,
                     const embedded::VersionMark& base, const AnswerConflicts& answer);
    void Remember(const CString& configuration, const embedded::VersionMark& base);
    void ForgetSent(const CString& configuration, const QByteArray& digest);

    embedded::EmbeddedHost& m_host;
    embedded::ProjectOffice& m_office;
    embedded::RuleFileLock::GoOn m_wait;
};

} // namespace shared
