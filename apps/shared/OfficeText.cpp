#include "shared/OfficeText.h"

#include "platform/TimeText.h"
#include "shared/RuleChanges.h"

using namespace Qt::StringLiterals;

namespace shared {

namespace {

CString BareStateText(OfficeState state)
{
    switch (state) {
    case OfficeState::Missing:
        return u"没有取来"_s;
    case OfficeState::Unpublished:
        return u"没有发布过"_s;
    case OfficeState::Apart:
        return u"各建各的"_s;
    case OfficeState::Same:
        return u"相同"_s;
    case OfficeState::Older:
        return u"有新版"_s;
    case OfficeState::Edited:
        return u"已修改"_s;
    case OfficeState::OlderEdited:
        return u"已修改，有新版"_s;
    case OfficeState::Removed:
        return u"已移除"_s;
    case OfficeState::Unknown:
        return u"不知道"_s;
    }
    return {};
}

CString BareEndText(const FetchEnd& end, const CString& configuration, const CString& office)
{
    const CString version = CString::number(end.version);
    switch (end.end) {
    case FetchEnd::Fetched:
        return u"已取来配置“%1”的第 %2 版"_s.arg(configuration, version);
    case FetchEnd::Unchanged:
        return u"配置“%1”已经是第 %2 版"_s.arg(configuration, version);
    case FetchEnd::Merged:
        return u"已取来配置“%1”的第 %2 版，与本地的修改合并"_s.arg(configuration, version);
    case FetchEnd::Conflicts:
        return u"配置“%1”没有取来：本地的修改与办公室“%2”里的第 %3 版冲突"_s.arg(configuration, office,
                                                                                 version);
    }
    return {};
}

CString CollisionText(const embedded::NumberCollision& collision)
{
    return u"清单编号 %1：这里是 %2（%3），工程“%4”已用于 %5（%6）"_s.arg(
        collision.mine.number, collision.mine.name, collision.mine.unit, collision.project,
        collision.theirs.name, collision.theirs.unit);
}

CString MergedText(const PublishEnd& end)
{
    return end.IsDone() || !end.IsMerged() ? CString() : MergedText(*end.joined);
}

CString BareEndText(const PublishEnd& end, const CString& office)
{
    const CString version = CString::number(end.version);
    switch (end.end) {
    case PublishEnd::Published:
        return (end.IsMerged() ? u"配置“%1”已与别人发布的合并，发布为第 %2 版，本地文件也是合并的结果"_s
                               : u"配置“%1”已发布为第 %2 版"_s)
            .arg(end.configuration, version);
    case PublishEnd::Unchanged:
        return u"配置“%1”与第 %2 版相同，没有发布新的"_s.arg(end.configuration, version);
    case PublishEnd::Waits:
        if (end.mayBeDone)
            return u"办公室“%1”没有回答，配置“%2”可能已经发布，连上以后再确认，不会发两次：%3"_s.arg(
                office, end.configuration, end.fault);
        return u"办公室“%1”连不上，配置“%2”还没有发布，连上以后再发：%3"_s.arg(office, end.configuration,
                                                                               end.fault);
    case PublishEnd::Conflicts:
        return u"配置“%1”没有发布：与办公室“%2”里的第 %3 版冲突"_s.arg(end.configuration, office, version);
    case PublishEnd::Declined:
        return u"配置“%1”没有发布：与办公室“%2”里的第 %3 版合并的结果还没有人同意"_s.arg(end.configuration,
                                                                                         office, version);
    case PublishEnd::Collides: {
        CStringArray lines{u"配置“%1”没有发布：清单编号与别的工程相同，内容不同"_s.arg(end.configuration)};
        for (const embedded::NumberCollision& collision : end.collisions)
            lines.append(CollisionText(collision));
        return lines.join(u'\n');
    }
    case PublishEnd::Missing:
        return u"配置“%1”没有发布：办公室“%2”里没有它，或者已被移除；新建和收回要由管理员做"_s.arg(
            end.configuration, office);
    }
    return {};
}

} // namespace

CString StateText(const OfficeEntry& entry)
{
    const CString text = BareStateText(entry.state);
    return entry.isWaiting ? text + u"，等待发布"_s : text;
}

CString MergedText(const JoinedStates& joined)
{
    return u"本地文件已与别人发布的第 %1 版合并；"_s.arg(joined.version);
}

CString EndText(const PublishEnd& end, const CString& office)
{
    return MergedText(end) + BareEndText(end, office);
}

CString EndText(const FetchEnd& end, const CString& configuration, const CString& office)
{
    const CString text = BareEndText(end, configuration, office);
    return end.hasWithdrawn ? text + u"；等待的发布已撤回"_s : text;
}

CString EndText(WithdrawEnd end, const CString& configuration)
{
    switch (end) {
    case WithdrawEnd::NoneWaits:
        return u"配置“%1”没有等待的发布"_s.arg(configuration);
    case WithdrawEnd::Withdrawn:
        return u"已撤回配置“%1”等待的发布，本地文件没有动"_s.arg(configuration);
    case WithdrawEnd::MayBeDone:
        return u"配置“%1”不再等待发布；但它发出过而没有回答，可能已经发布，连上以后请看 cloud log"_s.arg(
            configuration);
    }
    return {};
}

CString JoinedText(const JoinedStates& joined, qsizetype most)
{
    CStringArray lines = RuleChangeLines(joined.mine, joined.merged).value_or(CStringArray());
    const qsizetype left = lines.size() - most;
    if (left > 0) lines = lines.first(most) + CStringArray{u"……还有 %1 行"_s.arg(left)};
    return u"合并时从办公室的第 %1 版并入的：\n"_s.arg(joined.version) + lines.join(u'\n');
}

CString EndText(const SentPublication& sent, const CString& office)
{
    if (sent.end.IsDone())
        return u"从 %1 起等待的发布：%2"_s.arg(platform::TimeText(sent.waiting.since),
                                               EndText(sent.end, office));
    // What the office did not refuse may have failed on this machine.
    const bool isOwn = sent.end.end == PublishEnd::Waits && !sent.end.mayBeDone;
    const CString why = isOwn ? MergedText(sent.end) + sent.end.fault : EndText(sent.end, office);
    return u"从 %1 起等待的发布还在等：%2"_s.arg(platform::TimeText(sent.waiting.since), why);
}

} // namespace shared
