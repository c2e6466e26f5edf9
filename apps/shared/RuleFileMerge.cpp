#include "shared/RuleFileMerge.h"

#include "embedded/data/engine/Error.h"
#include "rules/compare/Comparison.h"
#include "rules/compare/Content.h"
#include "rules/document/RuleWriter.h"
#include "rules/model/Snapshot.h"
#include "xml/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

struct State
{
    rules::ConfigurationPtr rules;
    rules::FileStructure structure;
};

State Read(const CString& name, const QByteArray& bytes)
{
    State state;
    CString reason;
    state.rules = rules::ReadRules(bytes, reason, &state.structure);
    if (!state.rules) throw embedded::Error(u"配置“%1”不能作为规则文件读出：%2"_s.arg(name, reason));
    return state;
}

void RefuseRepeated(const CString& name, const State& state)
{
    const CString place = RepeatedPlace(state.structure);
    if (place.isEmpty()) return;
    throw embedded::Error(
        u"配置“%1”：%2在文件中不止一段，只有第一段会被读到，合并会丢掉别的段"_s.arg(name, place));
}

bool HasSameRules(const rules::Configuration& one, const rules::Configuration& other)
{
    const rules::Comparison comparison = rules::Compare(one, other);
    return comparison.HasNoDifferences() && comparison.renumbered == 0;
}

/// What two files had in common that were made apart: in each category that both have, the default rule
/// without items that it was made with. The default rule is then one that a side has changed, not one that
/// both have added.
rules::Configuration BareBeginning(const rules::Configuration& mine, const rules::Configuration& theirs)
{
    std::vector<rules::Specialty> specialties = theirs.Specialties();
    for (rules::Specialty& specialty : specialties) {
        for (rules::BigCategory& big : specialty.bigCategories) {
            std::erase_if(big.smallCategories, [&](const rules::SmallCategoryPtr& small) {
                return mine.Find(small->text) == nullptr;
            });
            for (rules::SmallCategoryPtr& small : big.smallCategories) {
                auto bare = std::make_shared<rules::SmallCategory>(*small);
                std::erase_if(bare->rules, [](const rules::Rule& rule) { return !rule.isDefault; });
                for (rules::Rule& rule : bare->rules) {
                    const int id = rule.id;
                    rule = rules::BareDefault();
                    rule.id = id;
                }
                small = std::move(bare);
            }
        }
    }
    return rules::Configuration(std::move(specialties));
}

} // namespace

CString RepeatedPlace(const rules::FileStructure& structure)
{
    const auto found = std::find_if(structure.begin(), structure.end(), [](const rules::StructureNote& note) {
        return note.kind == rules::StructureNote::Kind::Repeated;
    });
    if (found == structure.end()) return {};
    const rules::StructureNote& note = *found;
    if (note.level == rules::FileLevel::Rule || note.level == rules::FileLevel::Bill)
        return u"“%1”第 %2 条规则的“%3”"_s.arg(note.category, QString::number(note.position), note.element);
    return u"“%1”"_s.arg(note.category.isEmpty() ? note.element : note.category + u'\\' + note.element);
}

std::optional<QByteArray> MergeRuleFiles(const CString& name, const QByteArray& base, const QByteArray& mine,
                                         const QByteArray& theirs, const AnswerConflicts& answer)
{
    if (mine == base || mine == theirs) return theirs;
    if (theirs == base) return mine;
    const State mineState = Read(name, mine);
    const State theirState = Read(name, theirs);
    RefuseRepeated(name, mineState);
    RefuseRepeated(name, theirState);
    const rules::ConfigurationPtr common =
        base.isEmpty()
            ? std::make_shared<const rules::Configuration>(BareBeginning(*mineState.rules, *theirState.rules))
            : Read(name, base).rules;
    if (HasSameRules(*common, *mineState.rules)) return theirs;
    const rules::Merge merge(*common, *mineState.rules, *theirState.rules);
    std::vector<rules::Side> answers;
    if (!merge.Conflicts().empty()) {
        auto given = answer ? answer(merge.Conflicts()) : std::nullopt;
        if (!given) return std::nullopt;
        answers = std::move(*given);
    }
    try {
        return rules::WriteRules(theirs, merge.Result(answers));
    } catch (const xml::Error& error) {
        throw embedded::Error(
            u"配置“%1”合并的结果写不成规则文件：%2"_s.arg(name, CString::fromUtf8(error.what())));
    }
}

} // namespace shared
