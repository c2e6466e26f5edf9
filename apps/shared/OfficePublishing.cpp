#include "shared/OfficeFiles.h"

#include "platform/Files.h"
#include "rules/model/Snapshot.h"

#include <QtCore/QSet>

using namespace Qt::StringLiterals;

/// What of `OfficeFiles` sends publications.
namespace shared {

namespace {

using embedded::Error;
using embedded::PublishedConfigurations;
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

} // namespace

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
                                const AnswerConflicts& answer)
{
    // What another program lets wait from now on may be of a newer state of the file.
    const CArray<embedded::WaitingPublication> waiting = WaitingOf(configuration);
    embedded::Publication publication = FromFile(configuration, note);
    try {
        PublishEnd end =
            WithOffice([&](embedded::Office& office) { return Send(office, publication, answer); });
        if (end.IsDone()) {
            for (const embedded::WaitingPublication& one : waiting)
                m_office.Memory().Forget(one);
        }
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

CArray<embedded::WaitingPublication> OfficeFiles::WaitingOf(const CString& configuration)
{
    CArray<embedded::WaitingPublication> waiting = m_office.Memory().Waiting();
    waiting.removeIf([&](const embedded::WaitingPublication& one) {
        return one.publication.configuration != configuration;
    });
    return waiting;
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

PublishEnd OfficeFiles::Restore(const CString& configuration, int version, std::optional<int> lastSeen)
{
    return WithOffice(
        [&](embedded::Office& office) { return PublishAgain(office, configuration, version, lastSeen); });
}

PublishEnd OfficeFiles::PublishAgain(embedded::Office& office, const CString& configuration, int version,
                                     std::optional<int> lastSeen)
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
    publication.base = lastSeen.value_or(last->number);
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
