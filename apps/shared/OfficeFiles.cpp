#include "shared/OfficeFiles.h"

#include "embedded/data/project/CurrentConfiguration.h"
#include "embedded/data/project/Look.h"
#include "host/RuleFilePlaces.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "shared/RuleFileState.h"

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
using embedded::VersionMark;

embedded::ProjectOffice& OfficeOf(embedded::EmbeddedHost& host)
{
    embedded::ProjectOffice* const office = host.Office();
    if (office == nullptr) throw Error(u"这个工程不在办公室中"_s);
    return *office;
}

/// A base as far as the office has it. Where an older program has remembered the number alone, that counts.
VersionMark Known(const CArray<PublishedVersion>& log, const VersionMark& base)
{
    const auto found = std::find_if(log.begin(), log.end(), [&](const PublishedVersion& version) {
        return version.number == base.number && (base.digest.isEmpty() || version.digest == base.digest);
    });
    return found == log.end() ? VersionMark() : found->Mark();
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
    return host::RuleFileIn(m_host.RuleFolder(), configuration);
}

embedded::Office& OfficeFiles::Reached()
{
    if (!m_office.Reach()) throw UnreachableError(m_office.Fault());
    return *m_office.Reached();
}

/// What may be done is a matter of what was asked for, not of the office.
void OfficeFiles::Lose(const UnreachableError& error)
{
    const auto* const unanswered = dynamic_cast<const embedded::UnansweredError*>(&error);
    m_office.Lose(unanswered != nullptr ? UnreachableError(unanswered->Reason()) : error);
}

QByteArray OfficeFiles::ContentAt(embedded::Office& office, const CString& configuration, int version) const
{
    auto content = PublishedConfigurations(office).Content(configuration, version);
    if (!content)
        throw Error(u"办公室“%1”里没有配置“%2”的第 %3 版"_s.arg(m_office.Name(), configuration,
                                                                CString::number(version)));
    return *std::move(content);
}

/// A program may have ended before it could remember a version that it had brought into the file or
/// published: what is the same as a later version comes from that. What the project has sent without an
/// answer was in its file, so what the file has become since then was made of it.
OfficeFiles::Origin OfficeFiles::Trace(embedded::Office& office, const CString& configuration,
                                       const VersionMark& base, const QByteArray& content)
{
    const CArray<PublishedVersion> log = PublishedConfigurations(office).Log(configuration);
    const VersionMark known = Known(log, base);
    const auto find = [&](const CArray<QByteArray>& digests) {
        return std::find_if(log.begin(), log.end(), [&](const PublishedVersion& version) {
            return version.number >= known.number && digests.contains(version.digest);
        });
    };
    auto found = find({embedded::DigestOf(content)});
    const bool isEdited = found == log.end();
    if (isEdited) found = find(m_office.Memory().Sent(configuration));
    if (found == log.end()) return {known, true};
    if (found->Mark() != base) m_office.NoteBase(configuration, found->Mark());
    return {found->Mark(), isEdited};
}

/// What a content and the office have in common; empty where that is nothing.
QByteArray OfficeFiles::CommonState(embedded::Office& office, const CString& configuration,
                                    const Origin& origin, const QByteArray& content) const
{
    if (!origin.isEdited) return content;
    return origin.base.number == 0 ? QByteArray() : ContentAt(office, configuration, origin.base.number);
}

OfficeState OfficeFiles::StateOf(embedded::Office& office, const PublishedVersion& last, int& base)
{
    const CString path = FileOf(last.configuration);
    const embedded::Look look;
    const auto content = platform::Files().Read(path);
    if (!content) return OfficeState::Missing;
    const Origin origin =
        Trace(office, last.configuration, m_office.Memory().Base(last.configuration), *content);
    base = origin.base.number;
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
        entry.base = m_office.Memory().Base(name).number;
        entry.isWaiting = waiting.contains(name);
        entries.append(entry);
    }
    return entries;
}

CArray<OfficeEntry> OfficeFiles::List(bool withRemoved)
{
    CArray<OfficeEntry> entries = LocalEntries();
    if (!m_office.Reach()) return entries;
    return WithOffice([&](embedded::Office& office) {
        for (OfficeEntry& entry : entries)
            entry.state = OfficeState::Unpublished;
        for (const PublishedVersion& last : PublishedConfigurations(office).Latest(withRemoved)) {
            auto entry = std::find_if(entries.begin(), entries.end(), [&](const OfficeEntry& candidate) {
                return candidate.configuration == last.configuration;
            });
            if (entry == entries.end()) {
                OfficeEntry added;
                added.configuration = last.configuration;
                entry = entries.insert(entries.end(), added);
            }
            entry->last = last;
            entry->state = last.isRemoved ? OfficeState::Removed : StateOf(office, last, entry->base);
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
        if (versions.isEmpty())
            throw Error(u"办公室“%1”里没有配置“%2”"_s.arg(m_office.Name(), configuration));
        return versions;
    });
}

QByteArray OfficeFiles::Content(const CString& configuration, int version)
{
    return WithOffice([&](embedded::Office& office) { return ContentAt(office, configuration, version); });
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

QByteArray OfficeFiles::RulesAt(const CString& path)
{
    const embedded::Look look;
    const RuleFileState state = ExamineRuleFile(path);
    if (state.kind != RuleFileKind::Rules)
        throw Error(u"%1：%2"_s.arg(platform::ToNative(path), state.Describe()));
    return platform::Files().ReadWhole(path);
}

/// With the file locked.
void OfficeFiles::Write(const CString& path, const QByteArray& bytes)
{
    embedded::EnsureFolder(m_host.RuleFolder());
    m_host.History().Keep(path);
    platform::Files().Replace(path, bytes);
}

/// The file is free for others while `change` works, for that may ask somebody; what they have made of it by
/// then is changed anew.
void OfficeFiles::ChangeFile(const CString& path, const FileChange& change, const std::function<void()>& done)
{
    const auto read = [&path]() -> std::optional<QByteArray> {
        if (!platform::Files().Exists(path)) return std::nullopt;
        return RulesAt(path);
    };
    const auto readLocked = [&] {
        const auto lock = Lock(path);
        return read();
    };
    for (std::optional<QByteArray> now = readLocked();;) {
        const std::optional<QByteArray> wanted = change(now);
        if (!wanted) return;
        const auto lock = Lock(path);
        const std::optional<QByteArray> found = read();
        if (found == now) {
            if (wanted != now) Write(path, *wanted);
            return done();
        }
        now = found;
    }
}

FetchEnd OfficeFiles::Fetch(const CString& configuration, const AnswerConflicts& answer,
                            std::optional<int> version)
{
    const CArray<embedded::WaitingPublication> waiting = WaitingOf(configuration);
    FetchEnd end = WithOffice([&](embedded::Office& office) {
        const auto last = PublishedConfigurations(office).Last(configuration);
        if (!last) throw Error(u"办公室“%1”里没有配置“%2”"_s.arg(m_office.Name(), configuration));
        const int number = version.value_or(last->number);
        const QByteArray theirs = ContentAt(office, configuration, number);
        FetchEnd fetched{FetchEnd::Fetched, number};
        const auto change = [&](const std::optional<QByteArray>& mine) {
            fetched.end = mine == theirs ? FetchEnd::Unchanged : FetchEnd::Fetched;
            if (!mine || mine == theirs) return std::optional(theirs);
            const Origin origin = Trace(office, configuration, m_office.Memory().Base(configuration), *mine);
            const QByteArray base = CommonState(office, configuration, origin, *mine);
            auto merged = MergeRuleFiles(configuration, base, *mine, theirs, answer);
            if (!merged) fetched.end = FetchEnd::Conflicts;
            if (merged && *merged != theirs) fetched.end = FetchEnd::Merged;
            return merged;
        };
        ChangeFile(FileOf(configuration), change, [&] {
            Remember(configuration, {number, embedded::DigestOf(theirs)});
        });
        return fetched;
    });
    if (!end.IsDone()) return end;
    Forget(waiting);
    end.hasWithdrawn = !waiting.isEmpty();
    return end;
}

/// Brings into the project's file what `from`, which it held once, has become, with what has been edited in
/// it since then, and remembers `base` as the version of which it is made. False when there was no answer.
bool OfficeFiles::BringToFile(const CString& configuration, const QByteArray& from, const QByteArray& to,
                              const VersionMark& base, const AnswerConflicts& answer)
{
    bool isAnswered = true;
    const auto change = [&](const std::optional<QByteArray>& now) -> std::optional<QByteArray> {
        if (!now) return std::nullopt; // removed meanwhile
        auto merged = MergeRuleFiles(configuration, from, *now, to, answer);
        isAnswered = merged.has_value();
        return merged;
    };
    ChangeFile(FileOf(configuration), change, [&] { Remember(configuration, base); });
    return isAnswered;
}

} // namespace shared
