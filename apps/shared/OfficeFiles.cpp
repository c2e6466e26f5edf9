#include "shared/OfficeFiles.h"

#include "embedded/data/project/CurrentConfiguration.h"
#include "embedded/data/project/Look.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/model/Snapshot.h"
#include "shared/RuleFileNames.h"
#include "shared/RuleFileState.h"

#include <QtCore/QSet>

#include <algorithm>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

using embedded::Error;
using embedded::PublishedConfigurations;
using embedded::PublishedVersion;
using embedded::UnreachableError;

embedded::ProjectOffice& OfficeOf(embedded::EmbeddedHost& host)
{
    embedded::ProjectOffice* const office = host.Office();
    if (office == nullptr) throw Error(u"这个工程不在办公室中"_s);
    return *office;
}

/// The bytes of a rule file that can be worked on. Raises `embedded::Error` for any other, and for one that
/// is missing.
QByteArray RulesAt(const CString& path)
{
    const embedded::Look look;
    const RuleFileState state = ExamineRuleFile(path);
    if (state.kind != RuleFileKind::Rules)
        throw Error(u"%1：%2"_s.arg(platform::ToNative(path), state.Describe()));
    CString reason;
    const auto bytes = platform::Files().Read(path, &reason);
    if (!bytes) throw platform::FileError(path, reason);
    return *bytes;
}

QSet<CString> NumbersOf(const embedded::LibraryContents& contents)
{
    QSet<CString> numbers;
    for (const embedded::BillSection& section : contents.bills)
        for (const SQdInfo& item : section.items)
            numbers.insert(item.strNumber);
    return numbers;
}

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

} // namespace

OfficeFiles::OfficeFiles(embedded::EmbeddedHost& host, embedded::RuleFileLock::GoOn wait)
    : m_host(host), m_office(OfficeOf(host)), m_wait(std::move(wait))
{
}

CString OfficeFiles::FileOf(const CString& configuration) const
{
    if (!embedded::CurrentConfiguration::IsPossibleName(configuration))
        throw Error(u"“%1”不能用作配置名"_s.arg(configuration));
    return RuleFileIn(m_host.RuleFolder(), configuration);
}

embedded::Office& OfficeFiles::Reached()
{
    if (!m_office.Reach()) throw UnreachableError(m_office.Fault());
    return *m_office.Reached();
}

/// Does the work with the connection, which is given up when it turns out to be gone.
template <typename Work>
auto OfficeFiles::WithOffice(const Work& work)
{
    try {
        return work(Reached());
    } catch (const UnreachableError& error) {
        m_office.Lose(error);
        throw;
    }
}

QByteArray OfficeFiles::ContentAt(embedded::Office& office, const CString& configuration, int version) const
{
    auto content = PublishedConfigurations(office).Content(configuration, version);
    if (!content) throw Error(u"办公室“%1”里没有配置“%2”的第 %3 版"_s.arg(m_office.Name(), configuration, CString::number(version)));
    return *std::move(content);
}

/// A program may have ended before it could remember a version that it had brought into the file or published:
/// what is the same as a later version comes from that.
OfficeFiles::Origin OfficeFiles::Trace(embedded::Office& office, const CString& configuration, int base,
                                       const QByteArray& content)
{
    PublishedConfigurations published(office);
    for (const PublishedVersion& version : published.Log(configuration)) {
        if (version.number < base) break;
        if (version.size != content.size()) continue;
        if (published.Content(configuration, version.number) != content) continue;
        if (version.number != base) m_office.Memory().RememberBase(configuration, version.number);
        return {version.number, false};
    }
    return {base, true};
}

OfficeState OfficeFiles::StateOf(embedded::Office& office, const PublishedVersion& last, int& base)
{
    const CString path = FileOf(last.configuration);
    const embedded::Look look;
    const auto content = platform::Files().Read(path);
    if (!content) return OfficeState::Missing;
    const Origin origin = Trace(office, last.configuration, base, *content);
    base = origin.base;
    if (base == 0) return OfficeState::Apart;
    const bool isLast = base == last.number;
    if (origin.isEdited) return isLast ? OfficeState::Edited : OfficeState::OlderEdited;
    return isLast ? OfficeState::Same : OfficeState::Older;
}

/// What the project has, by name, the office not being asked.
CArray<OfficeEntry> OfficeFiles::LocalEntries()
{
    std::set<CString> waiting;
    for (const embedded::WaitingPublication& one : m_office.Memory().Waiting())
        waiting.insert(one.publication.configuration);
    std::set<CString> names = waiting;
    for (const CString& file : platform::Files().FindFiles(m_host.RuleFolder(), u".xml"_s))
        names.insert(platform::BeforeLastStop(file));
    CArray<OfficeEntry> entries;
    for (const CString& name : names) {
        OfficeEntry entry;
        entry.configuration = name;
        entry.base = m_office.Memory().Base(name);
        entry.isWaiting = waiting.contains(name);
        entries.append(entry);
    }
    return entries;
}

CArray<OfficeEntry> OfficeFiles::List()
{
    CArray<OfficeEntry> entries = LocalEntries();
    if (!m_office.Reach()) return entries;
    return WithOffice([&](embedded::Office& office) {
        for (OfficeEntry& entry : entries)
            entry.state = OfficeState::Unpublished;
        for (const PublishedVersion& last : PublishedConfigurations(office).Latest()) {
            auto entry = std::find_if(entries.begin(), entries.end(), [&](const OfficeEntry& candidate) {
                return candidate.configuration == last.configuration;
            });
            if (entry == entries.end()) {
                OfficeEntry added;
                added.configuration = last.configuration;
                entry = entries.insert(entries.end(), added);
            }
            entry->last = last;
            entry->state = StateOf(office, last, entry->base);
        }
        std::sort(entries.begin(), entries.end(), [](const OfficeEntry& left, const OfficeEntry& right) {
            return left.configuration < right.configuration;
        });
        return entries;
    });
}

CArray<PublishedVersion> OfficeFiles::Log(const CString& configuration)
{
    return WithOffice([&](embedded::Office& office) {
        CArray<PublishedVersion> versions = PublishedConfigurations(office).Log(configuration);
        if (versions.isEmpty()) throw Error(u"办公室“%1”里没有配置“%2”"_s.arg(m_office.Name(), configuration));
        return versions;
    });
}

QByteArray OfficeFiles::Content(const CString& configuration, int version)
{
    return WithOffice(
        [&](embedded::Office& office) { return ContentAt(office, configuration, version); });
}

int OfficeFiles::LastVersion(const CString& configuration)
{
    return WithOffice([&](embedded::Office& office) {
        const auto last = PublishedConfigurations(office).Last(configuration);
        if (!last) throw Error(u"办公室“%1”里没有配置“%2”"_s.arg(m_office.Name(), configuration));
        return last->number;
    });
}

void OfficeFiles::Remove(const CString& configuration)
{
    WithOffice([&](embedded::Office& office) { PublishedConfigurations(office).Remove(configuration); });
}

void OfficeFiles::BringBack(const CString& configuration)
{
    WithOffice([&](embedded::Office& office) { PublishedConfigurations(office).BringBack(configuration); });
}

embedded::RuleFileLock OfficeFiles::Lock(const CString& path)
{
    return {m_host.History().Project(), {path}, m_wait};
}

/// With the file locked.
void OfficeFiles::Write(const CString& path, const QByteArray& bytes)
{
    embedded::EnsureFolder(m_host.RuleFolder());
    m_host.History().Keep(path);
    platform::Files().Replace(path, bytes);
}

FetchEnd OfficeFiles::Fetch(const CString& configuration, const AnswerConflicts& answer,
                            std::optional<int> version)
{
    return WithOffice([&](embedded::Office& office) -> FetchEnd {
        const CString path = FileOf(configuration);
        const auto last = PublishedConfigurations(office).Last(configuration);
        if (!last) throw Error(u"办公室“%1”里没有配置“%2”"_s.arg(m_office.Name(), configuration));
        const int number = version.value_or(last->number);
        const QByteArray theirs = ContentAt(office, configuration, number);
        const auto lock = Lock(path);
        FetchEnd end{FetchEnd::Fetched, number};
        if (!platform::Files().Exists(path)) {
            Write(path, theirs);
        } else if (const QByteArray mine = RulesAt(path); mine == theirs) {
            end.end = FetchEnd::Unchanged;
        } else {
            const Origin origin = Trace(office, configuration, m_office.Memory().Base(configuration), mine);
            QByteArray base = mine;
            if (origin.isEdited)
                base = origin.base == 0 ? QByteArray() : ContentAt(office, configuration, origin.base);
            const auto merged = MergeRuleFiles(configuration, base, mine, theirs, answer);
            if (!merged) return {FetchEnd::Conflicts, number};
            Write(path, *merged);
            if (*merged != theirs) end.end = FetchEnd::Merged;
        }
        m_office.Memory().RememberBase(configuration, number);
        return end;
    });
}

embedded::Publication OfficeFiles::FromFile(const CString& configuration, const CString& note) const
{
    embedded::Publication publication;
    publication.configuration = configuration;
    publication.base = m_office.Memory().Base(configuration);
    publication.content = RulesAt(FileOf(configuration));
    publication.note = note;
    publication.project = m_office.ProjectName();
    publication.numbers = NumbersIn(configuration, publication.content);
    return publication;
}

/// The numbers of bill items that are not those of the bill library in use, once for each item that has one.
CArray<embedded::NumberUse> OfficeFiles::NumbersIn(const CString& configuration,
                                                   const QByteArray& content) const
{
    CString reason;
    const rules::ConfigurationPtr rules = rules::ReadRules(content, reason);
    if (!rules) throw Error(u"配置“%1”不能作为规则文件读出：%2"_s.arg(configuration, reason));
    const CString inUse = m_host.LibraryInUse(embedded::LibraryRole::Bill);
    const QSet<CString> known = NumbersOf(m_host.Contents());
    QSet<CString> seen;
    CArray<embedded::NumberUse> numbers;
    ForEachBill(*rules, [&](const QdStruct& bill) {
        const CString library = bill.strQdCode.isEmpty() ? inUse : bill.strQdCode;
        const bool isInUse = library.compare(inUse, Qt::CaseInsensitive) == 0;
        const CString key =
            CStringArray{library.toLower(), bill.strQdId, bill.strName, bill.strUnit}.join(u'\n');
        if (bill.strQdId.isEmpty() || (isInUse && known.contains(bill.strQdId)) || seen.contains(key)) return;
        seen.insert(key);
        numbers.append({library, bill.strQdId, bill.strName, bill.strUnit});
    });
    return numbers;
}

PublishEnd OfficeFiles::Publish(const CString& configuration, const CString& note,
                                const AnswerConflicts& answer)
{
    embedded::Publication publication = FromFile(configuration, note);
    try {
        PublishEnd end =
            WithOffice([&](embedded::Office& office) { return Send(office, publication, answer); });
        if (end.IsDone()) StopWaiting(configuration);
        return end;
    } catch (const UnreachableError& error) {
        m_office.Memory().Wait(publication);
        PublishEnd end{PublishEnd::Waits, configuration};
        end.fault = error.Message();
        return end;
    }
}

/// Leaves in `publication` what it has become on the way, so that it can be sent again.
PublishEnd OfficeFiles::Send(embedded::Office& office, embedded::Publication& publication,
                             const AnswerConflicts& answer)
{
    PublishEnd end{PublishEnd::Published, publication.configuration};
    for (;;) {
        const embedded::PublishOutcome outcome = PublishedConfigurations(office).Publish(publication);
        end.version = outcome.version;
        switch (outcome.end) {
        case embedded::PublishOutcome::Newer:
            if (!TakeNewer(office, publication, outcome.version, answer)) {
                end.end = PublishEnd::Conflicts;
                return end;
            }
            end.isMerged = true;
            break;
        case embedded::PublishOutcome::Published:
        case embedded::PublishOutcome::Unchanged:
            m_office.Memory().RememberBase(publication.configuration, outcome.version);
            if (outcome.end == embedded::PublishOutcome::Unchanged) end.end = PublishEnd::Unchanged;
            return end;
        case embedded::PublishOutcome::Collides:
            end.end = PublishEnd::Collides;
            end.collisions = outcome.collisions;
            return end;
        case embedded::PublishOutcome::Missing:
            end.end = PublishEnd::Missing;
            return end;
        }
    }
}

/// Merges a publication with the last version, in the project's file, too. False when there was no answer.
bool OfficeFiles::TakeNewer(embedded::Office& office, embedded::Publication& publication, int version,
                            const AnswerConflicts& answer)
{
    const CString& name = publication.configuration;
    const QByteArray theirs = ContentAt(office, name, version);
    const Origin origin = Trace(office, name, publication.base, publication.content);
    QByteArray base = publication.content;
    if (origin.isEdited) base = origin.base == 0 ? QByteArray() : ContentAt(office, name, origin.base);
    const auto merged = MergeRuleFiles(name, base, publication.content, theirs, answer);
    if (!merged || !BringToFile(name, publication.content, *merged, answer)) return false;
    m_office.Memory().RememberBase(name, version);
    publication.base = version;
    publication.content = *merged;
    publication.numbers = NumbersIn(name, *merged);
    return true;
}

/// Brings into the project's file what `from`, which it held once, has become, with what has been edited in it
/// since then. False when there was no answer.
bool OfficeFiles::BringToFile(const CString& configuration, const QByteArray& from, const QByteArray& to,
                              const AnswerConflicts& answer)
{
    const CString path = FileOf(configuration);
    const auto lock = Lock(path);
    if (!platform::Files().Exists(path)) return true;
    const QByteArray now = RulesAt(path);
    const auto merged = MergeRuleFiles(configuration, from, now, to, answer);
    if (!merged) return false;
    if (*merged != now) Write(path, *merged);
    return true;
}

void OfficeFiles::StopWaiting(const CString& configuration)
{
    for (const embedded::WaitingPublication& one : m_office.Memory().Waiting())
        if (one.publication.configuration == configuration) m_office.Memory().Forget(one);
}

std::vector<SentPublication> OfficeFiles::SendWaiting(const AnswerConflicts& answer)
{
    std::vector<SentPublication> sent;
    const CArray<embedded::WaitingPublication> waiting = m_office.Memory().Waiting();
    if (waiting.isEmpty() || !m_office.Reach()) return sent;
    try {
        for (const embedded::WaitingPublication& one : waiting)
            sent.push_back(SendOne(Reached(), one, answer));
    } catch (const UnreachableError& error) {
        m_office.Lose(error); // what has not been sent goes on waiting
    }
    return sent;
}

SentPublication OfficeFiles::SendOne(embedded::Office& office, const embedded::WaitingPublication& waiting,
                                     const AnswerConflicts& answer)
{
    SentPublication sent{waiting, {PublishEnd::Waits, waiting.publication.configuration}};
    try {
        embedded::Publication publication = waiting.publication;
        sent.end = Send(office, publication, answer);
        if (sent.end.IsDone()) m_office.Memory().Forget(waiting);
    } catch (const UnreachableError&) {
        throw;
    } catch (const Error& error) {
        sent.end.fault = error.Message();
    } catch (const platform::FileError& error) {
        sent.end.fault = error.Message();
    }
    return sent;
}

PublishEnd OfficeFiles::Restore(const CString& configuration, int version)
{
    return WithOffice(
        [&](embedded::Office& office) { return PublishAgain(office, configuration, version); });
}

PublishEnd OfficeFiles::PublishAgain(embedded::Office& office, const CString& configuration, int version)
{
    const CString path = FileOf(configuration);
    const auto lock = Lock(path);
    const bool isThere = platform::Files().Exists(path);
    if (isThere &&
        Trace(office, configuration, m_office.Memory().Base(configuration), RulesAt(path)).isEdited)
        throw Error(u"配置“%1”有还没有发布的修改，没有还原；请先发布，或先取来最新的一版"_s.arg(configuration));
    const auto last = PublishedConfigurations(office).Last(configuration);
    if (!last) throw Error(u"办公室“%1”里没有配置“%2”"_s.arg(m_office.Name(), configuration));
    embedded::Publication publication;
    publication.configuration = configuration;
    publication.base = last->number;
    publication.content = ContentAt(office, configuration, version);
    publication.note = u"还原第 %1 版"_s.arg(version);
    publication.project = m_office.ProjectName();
    publication.numbers = NumbersIn(configuration, publication.content);
    const embedded::PublishOutcome outcome = PublishedConfigurations(office).Publish(publication);
    PublishEnd end{PublishEnd::Published, configuration, outcome.version};
    switch (outcome.end) {
    case embedded::PublishOutcome::Newer:
        throw Error(u"刚刚有人发布了配置“%1”的第 %2 版，没有还原；请看过以后再做一次"_s.arg(
            configuration, CString::number(outcome.version)));
    case embedded::PublishOutcome::Collides:
        end.end = PublishEnd::Collides;
        end.collisions = outcome.collisions;
        return end;
    case embedded::PublishOutcome::Missing:
        end.end = PublishEnd::Missing;
        return end;
    case embedded::PublishOutcome::Unchanged:
        end.end = PublishEnd::Unchanged;
        break;
    case embedded::PublishOutcome::Published:
        break;
    }
    if (!isThere || RulesAt(path) != publication.content) Write(path, publication.content);
    m_office.Memory().RememberBase(configuration, outcome.version);
    return end;
}

} // namespace shared
