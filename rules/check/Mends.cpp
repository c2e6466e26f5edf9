#include "rules/check/Mends.h"

#include <algorithm>
#include <optional>
#include <set>
#include <tuple>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// A rule, or a bill or quota item of it; nothing where the path ends above or passes by, as that of a quota
/// item of the rule itself does. Ids may be 0.
struct Target
{
    CString category;
    int rule = 0;
    std::optional<int> bill{};
    std::optional<int> quota{};

    bool operator<(const Target& other) const
    {
        return std::tie(category, rule, bill, quota) <
               std::tie(other.category, other.rule, other.bill, other.quota);
    }
};

enum class Stage { Change, DeleteItem, DeleteRule, Save };

Stage StageOf(const Mend& mend)
{
    if (mend.op == u"Save") return Stage::Save;
    if (mend.op == u"DelConfig") return Stage::DeleteRule;
    return mend.op.startsWith(u"Del") ? Stage::DeleteItem : Stage::Change;
}

/// What a mend deletes, or the one thing that it changes.
std::vector<Target> TargetsOf(const Finding& finding)
{
    const Mend& mend = *finding.mend;
    const Target rule{finding.category, mend.configId};
    std::vector<Target> targets;
    const auto add = [&](std::optional<int> bill, std::optional<int> quota) {
        targets.push_back({rule.category, rule.rule, bill, quota});
    };
    if (mend.op == u"DelQd" || mend.op == u"DelDeInConfigNode") {
        const bool isBill = mend.op == u"DelQd";
        for (const int id : mend.ids)
            add(isBill ? std::optional(id) : std::nullopt, isBill ? std::nullopt : std::optional(id));
    } else if (mend.op == u"DelDeInQdNode") {
        for (const auto& [bill, quotas] : mend.deIdsByQd)
            for (const int quota : quotas)
                add(bill, quota);
    } else if (mend.op == u"ResetQd") {
        add(mend.qdId, {});
    } else if (mend.op == u"ResetDeToQd") {
        add(mend.qdId, mend.deId);
    } else if (mend.op == u"ResetDeToConfig") {
        add({}, mend.deId);
    } else {
        targets.push_back(rule);
    }
    return targets;
}

/// Whether the target goes with something above it that is deleted.
bool GoesWithAbove(const Target& target, const std::set<Target>& deleted)
{
    const bool isRule = !target.bill && !target.quota;
    if (!isRule && deleted.count({target.category, target.rule}) > 0) return true;
    return target.bill && target.quota && deleted.count({target.category, target.rule, target.bill}) > 0;
}

} // namespace

std::vector<const Finding*> MendsInOrder(const std::vector<Finding>& findings)
{
    std::set<Target> deleted;
    for (const Finding& finding : findings) {
        if (!finding.mend) continue;
        const Stage stage = StageOf(*finding.mend);
        if (stage != Stage::DeleteItem && stage != Stage::DeleteRule) continue;
        for (Target& target : TargetsOf(finding))
            deleted.insert(std::move(target));
    }
    std::vector<const Finding*> mends;
    for (const Finding& finding : findings) {
        if (!finding.mend) continue;
        const Stage stage = StageOf(*finding.mend);
        const std::vector<Target> targets = TargetsOf(finding);
        const bool isIdle =
            stage != Stage::Save && std::all_of(targets.begin(), targets.end(), [&](const Target& target) {
                return GoesWithAbove(target, deleted) ||
                       (stage == Stage::Change && deleted.count(target) > 0);
            });
        if (!isIdle) mends.push_back(&finding);
    }
    std::stable_sort(mends.begin(), mends.end(), [](const Finding* a, const Finding* b) {
        return StageOf(*a->mend) < StageOf(*b->mend);
    });
    return mends;
}

} // namespace rules
