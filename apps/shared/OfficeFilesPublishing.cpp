#include "shared/OfficeFiles.h"
#include "shared/OfficeText.h"

#include "platform/Files.h"
#include "rules/model/Snapshot.h"

#include <QtCore/QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

/// What of `OfficeFiles` sends publications.
namespace shared {

namespace {

using embedded::Error;
using embedded::PublishedConfigurations;
using embedded::PublishOutcome;
using embedded::UnreachableError;

/// Calls `take` for each bill item of all rules.
template <typename Take>
void ForEachBill(const rules::Configuration& configuration, const Take& take)
{
    for (const rules::Specialty& specialty : configuration.Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories)
                for (const rules::Rule& rule : small->rules)
                    for (const rules::BillItem& bill : rule.bills)
                        take(bill.record);
}

/// What an outcome of the office is to whoever publishes. What is newer is in conflict until it is merged.
PublishEnd EndOf(const PublishOutcome& outcome, const CString& configuration)
{
    PublishEnd end{PublishEnd::Published, configuration, outcome.version};
    end.collisions = outcome.collisions;
    switch (outcome.end) {
    case PublishOutcome::Published:
        end.end = PublishEnd::Published;
        break;
    case PublishOutcome::Unchanged:
        end.end = PublishEnd::Unchanged;
        break;
    case PublishOutcome::Newer:
        end.end = PublishEnd::Conflicts;
        break;
    case PublishOutcome::Collides:
        end.end = PublishEnd::Collides;
        break;
    case PublishOutcome::Missing:
        end.end = PublishEnd::Missing;
        break;
    }
    return end;
}

} // namespace

embedded::Publication OfficeFiles::FromFile(const CString& configuration, const CString& note)
{
    embedded::Publication publication;
    publication.configuration = configuration;
    publication.base = m_office.Memory().Base(configuration);
    publication.content = RulesAt(FileOf(configuration));
    publication.note = note;
    publication.project = m_office.ProjectName();
    publication.projectId = m_office.ProjectId();
    publication.numbers = NumbersIn(configuration, publication.content);
    return publication;
}

/// The numbers of bill items that are not those of their library, once for each item that has one.
CArray<embedded::NumberUse> OfficeFiles::NumbersIn(const CString& configuration,
                                                   const QByteArray& content) const
{
    CString reason;
    const rules::ConfigurationPtr rules = rules::ReadRules(content, reason);
    if (!rules) throw Error(u"配置“%1”不能作为规则文件读出：%2"_s.arg(configuration, reason));
    const CString inUse = m_host.LibraryInUse(embedded::LibraryRole::Bill);
    QHash<CString, QSet<CString>> known; // by library
    QSet<CString> seen;
    CArray<embedded::NumberUse> numbers;
    ForEachBill(*rules, [&](const QdStruct& bill) {
        const CString library = bill.strQdCode.isEmpty() ? inUse : bill.strQdCode;
        const CString folded = library.toLower();
        const CString key = CStringArray{folded, bill.strQdId, bill.strName, bill.strUnit}.join(u'\n');
        if (!known.contains(folded)) known.insert(folded, m_host.BillNumbersOf(library));
        if (bill.strQdId.isEmpty() || known.value(folded).contains(bill.strQdId) || seen.contains(key))
            return;
        seen.insert(key);
        numbers.append({library, bill.strQdId, bill.strName, bill.strUnit});
    });
    return numbers;
}

PublishEnd OfficeFiles::Publish(const CString& configuration, const CString& note,
                                const AnswerConflicts& answer, const ReviewMerge& review)
{
    // What another program lets wait from now on may be of a newer state of the file.
    const CArray<embedded::WaitingPublication> waiting = WaitingOf(configuration);
    Sending sending{FromFile(configuration, note)};
    if (!waiting.isEmpty()) sending.waiting = waiting.first();
    // What was refused or not wanted is not to be sent later in place of what waits.
    const auto letFormerWait = [&] {
        if (!waiting.isEmpty()) m_office.Memory().Renew(waiting.first(), waiting.first().publication);
    };
    try {
        const PublishEnd end = WithOffice([&](embedded::Office& office) {
            return Send(office, sending, {answer, review});
        });
        end.IsDone() ? Forget(waiting) : letFormerWait();
        return end;
    } catch (const UnreachableError& error) {
        m_office.Memory().Wait(sending.publication);
        return sending.Unreached(error);
    } catch (const Error& error) {
        if (sending.joined) throw Error(MergedText(*sending.joined) + error.Message());
        letFormerWait();
        throw;
    } catch (const platform::FileError& error) {
        if (sending.joined) throw Error(MergedText(*sending.joined) + error.Message());
        letFormerWait();
        throw;
    }
}

/// What is told of a publication for which the office was not there, or to which it gave no answer.
PublishEnd OfficeFiles::Sending::Unreached(const UnreachableError& error) const
{
    const auto* const unanswered = dynamic_cast<const embedded::UnansweredError*>(&error);
    PublishEnd end{PublishEnd::Waits, publication.configuration};
    end.joined = joined;
    end.mayBeDone = unanswered != nullptr;
    end.fault = end.mayBeDone ? unanswered->Reason() : error.Message();
    return end;
}

/// Remembers what is sent until there is an answer, so that it is recognised when that is lost.
PublishOutcome OfficeFiles::AskToPublish(embedded::Office& office, const embedded::Publication& publication)
{
    const CString& name = publication.configuration;
    const QByteArray digest = embedded::DigestOf(publication.content);
    m_office.Memory().RememberSent(name, digest);
    PublishOutcome outcome;
    try {
        outcome = PublishedConfigurations(office).Publish(publication);
    } catch (const embedded::UnansweredError&) {
        throw;
    } catch (const Error&) {
        ForgetSent(name, digest);
        throw;
    }
    const bool isIn = outcome.end == PublishOutcome::Published || outcome.end == PublishOutcome::Unchanged;
    // What had arrived unheard may be older than what the file has been made of since.
    if (isIn && outcome.version >= m_office.Memory().Base(name).number)
        Remember(name, {outcome.version, digest});
    else
        ForgetSent(name, digest);
    return outcome;
}

/// What has happened is not undone by a note of it that fails: it is found out again, see `Trace`.
void OfficeFiles::Remember(const CString& configuration, const embedded::VersionMark& base)
{
    try {
        m_office.Memory().RememberBase(configuration, base);
    } catch (const Error&) {
    }
}

/// The same for what has been answered.
void OfficeFiles::ForgetSent(const CString& configuration, const QByteArray& digest)
{
    try {
        m_office.Memory().ForgetSent(configuration, digest);
    } catch (const Error&) {
    }
}

/// A former publication may have arrived without an answer: this one was made of it then. And what an older
/// program has remembered gets its digest.
void OfficeFiles::FindBase(embedded::Office& office, embedded::Publication& publication)
{
    const bool isWhole = publication.base.number == 0 || !publication.base.digest.isEmpty();
    if (isWhole && m_office.Memory().Sent(publication.configuration).isEmpty()) return;
    publication.base = Trace(office, publication.configuration, publication.base, publication.content).base;
}

/// What waits is never older than what was sent: it would be taken for an edit of that later on, and would
/// undo what was merged into it.
void OfficeFiles::KeepWaiting(Sending& sending)
{
    if (!sending.waiting) return;
    embedded::Publication& waiting = sending.waiting->publication;
    if (waiting.content == sending.publication.content && waiting.base == sending.publication.base) return;
    m_office.Memory().Renew(*sending.waiting, sending.publication);
    waiting = sending.publication;
}

/// Leaves in `sending` what it has become on the way, so that it can be sent again.
PublishEnd OfficeFiles::Send(embedded::Office& office, Sending& sending, const MergeQuestions& questions)
{
    FindBase(office, sending.publication);
    for (;;) {
        KeepWaiting(sending);
        const PublishOutcome outcome = AskToPublish(office, sending.publication);
        PublishEnd end = EndOf(outcome, sending.publication.configuration);
        const bool isAgain =
            outcome.end == PublishOutcome::Newer && TakeNewer(office, sending, end, questions);
        end.joined = sending.joined;
        if (!isAgain) return end;
    }
}

/// Merges a publication with the last version, that of `end`, in the project's file, too. False when that was
/// not to be, and `end` tells why.
bool OfficeFiles::TakeNewer(embedded::Office& office, Sending& sending, PublishEnd& end,
                            const MergeQuestions& questions)
{
    embedded::Publication& publication = sending.publication;
    const CString& name = publication.configuration;
    const QByteArray& mine = publication.content;
    const QByteArray theirs = ContentAt(office, name, end.version);
    const Origin origin = Trace(office, name, publication.base, mine);
    const auto merged =
        MergeRuleFiles(name, CommonState(office, name, origin, mine), mine, theirs, questions.answer);
    if (!merged) return false;
    const bool isNews = *merged != mine && *merged != theirs;
    const int before = sending.joined ? sending.joined->version : 0;
    if (isNews && questions.review && !questions.review({name, end.version, mine, theirs, *merged, before})) {
        end.end = PublishEnd::Declined;
        return false;
    }
    const embedded::VersionMark base(end.version, embedded::DigestOf(theirs));
    if (!BringToFile(name, mine, *merged, base, questions.answer)) return false;
    const QByteArray first = sending.joined ? sending.joined->mine : mine;
    if (*merged != first) sending.joined = {name, end.version, first, theirs, *merged, before};
    publication.base = base;
    publication.content = *merged;
    publication.numbers = NumbersIn(name, *merged);
    return true;
}

void OfficeFiles::Forget(const CArray<embedded::WaitingPublication>& waiting)
{
    for (const embedded::WaitingPublication& one : waiting)
        m_office.Memory().Forget(one);
}

WithdrawEnd OfficeFiles::Withdraw(const CString& configuration)
{
    const CArray<embedded::WaitingPublication> waiting = WaitingOf(configuration);
    if (waiting.isEmpty()) return WithdrawEnd::NoneWaits;
    const CArray<QByteArray> sent = m_office.Memory().Sent(configuration);
    Forget(waiting);
    const bool mayBeDone = std::any_of(waiting.begin(), waiting.end(), [&](const auto& one) {
        return sent.contains(embedded::DigestOf(one.publication.content));
    });
    return mayBeDone ? WithdrawEnd::MayBeDone : WithdrawEnd::Withdrawn;
}

CArray<embedded::WaitingPublication> OfficeFiles::WaitingOf(const CString& configuration)
{
    CArray<embedded::WaitingPublication> waiting = m_office.Memory().Waiting();
    waiting.removeIf([&](const embedded::WaitingPublication& one) {
        return one.publication.configuration != configuration;
    });
    return waiting;
}

std::vector<SentPublication> OfficeFiles::SendWaiting(const AnswerConflicts& answer,
                                                      const ReviewMerge& review)
{
    std::vector<SentPublication> sent;
    const CArray<embedded::WaitingPublication> waiting = m_office.Memory().Waiting();
    if (waiting.isEmpty() || !m_office.Reach()) return sent;
    try {
        for (const embedded::WaitingPublication& one : waiting) {
            // Another program may have sent or withdrawn it by now, or merged it with what others published.
            const CArray<embedded::WaitingPublication> left = WaitingOf(one.publication.configuration);
            const auto present =
                std::find_if(left.begin(), left.end(), [&](const auto& other) { return other.id == one.id; });
            if (present != left.end()) sent.push_back(SendOne(Reached(), *present, {answer, review}));
            if (!m_office.IsReached()) break; // what has not been sent goes on waiting
        }
    } catch (const UnreachableError& error) {
        Lose(error);
    }
    return sent;
}

SentPublication OfficeFiles::SendOne(embedded::Office& office, const embedded::WaitingPublication& waiting,
                                     const MergeQuestions& questions)
{
    SentPublication sent{waiting, {PublishEnd::Waits, waiting.publication.configuration}};
    Sending sending{waiting.publication, waiting};
    const auto stays = [&](const CString& reason) {
        sent.end.joined = sending.joined;
        sent.end.fault = reason;
    };
    try {
        // An older program has let it wait.
        if (sending.publication.projectId.isEmpty()) sending.publication.projectId = m_office.ProjectId();
        sent.end = Send(office, sending, questions);
        if (sent.end.IsDone()) m_office.Memory().Forget(waiting);
    } catch (const UnreachableError& error) {
        Lose(error);
        sent.end = sending.Unreached(error);
    } catch (const Error& error) {
        stays(error.Message());
    } catch (const platform::FileError& error) {
        stays(error.Message());
    }
    return sent;
}

PublishEnd OfficeFiles::Restore(const CString& configuration, int version,
                                const std::optional<embedded::VersionMark>& lastSeen)
{
    const CArray<embedded::WaitingPublication> waiting = WaitingOf(configuration);
    const PublishEnd end = WithOffice(
        [&](embedded::Office& office) { return PublishAgain(office, configuration, version, lastSeen); });
    if (end.IsDone()) Forget(waiting); // made of a state that the file no longer has
    return end;
}

PublishEnd OfficeFiles::PublishAgain(embedded::Office& office, const CString& configuration, int version,
                                     const std::optional<embedded::VersionMark>& lastSeen)
{
    const CString path = FileOf(configuration);
    const auto lock = Lock(path);
    const bool isThere = platform::Files().Exists(path);
    if (isThere &&
        Trace(office, configuration, m_office.Memory().Base(configuration), RulesAt(path)).isEdited)
        throw Error(
            u"配置“%1”有还没有发布的修改，没有还原；请先发布，或先取来最新的一版"_s.arg(configuration));
    const auto last = PublishedConfigurations(office).Last(configuration);
    if (!last) throw Error(u"办公室“%1”里没有配置“%2”"_s.arg(m_office.Name(), configuration));
    embedded::Publication publication;
    publication.configuration = configuration;
    publication.base = lastSeen.value_or(last->Mark());
    publication.content = ContentAt(office, configuration, version);
    publication.note = u"还原第 %1 版"_s.arg(version);
    publication.project = m_office.ProjectName();
    publication.projectId = m_office.ProjectId();
    publication.numbers = NumbersIn(configuration, publication.content);
    const PublishOutcome outcome = PublishedConfigurations(office).Publish(publication);
    if (outcome.end == PublishOutcome::Newer)
        throw Error(u"刚刚有人发布了配置“%1”的第 %2 版，没有还原；请看过以后再做一次"_s.arg(
            configuration, CString::number(outcome.version)));
    PublishEnd end = EndOf(outcome, configuration);
    if (!end.IsDone()) return end;
    if (!isThere || RulesAt(path) != publication.content) Write(path, publication.content);
    Remember(configuration, {outcome.version, embedded::DigestOf(publication.content)});
    return end;
}

} // namespace shared
