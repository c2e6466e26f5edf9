#include "shared/RuleChanges.h"

#include "rules/compare/Content.h"
#include "rules/compare/DifferenceText.h"
#include "rules/model/Snapshot.h"

using namespace Qt::StringLiterals;

namespace shared {

namespace {

void AddRules(const rules::SmallCategory& category, CStringArray& lines)
{
    lines += category.text;
    for (const rules::Rule& rule : category.rules) {
        const CString text = rule.Text();
        lines += u"  "_s + (text.isEmpty() ? u"（无条件）"_s : text);
        for (const CString& item : rules::ItemLines(rule))
            lines += u"      "_s + item;
    }
}

} // namespace

CStringArray RuleLines(const rules::Configuration& configuration)
{
    CStringArray lines;
    for (const rules::Specialty& specialty : configuration.Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories)
                if (!rules::HoldsBareDefaultAlone(*small)) AddRules(*small, lines);
    return lines;
}

std::optional<CStringArray> RuleChangeLines(const QByteArray& before, const QByteArray& after)
{
    CString reason;
    const rules::ConfigurationPtr former = rules::ReadRules(before, reason);
    const rules::ConfigurationPtr present = former ? rules::ReadRules(after, reason) : nullptr;
    if (!present) return std::nullopt;
    const rules::Comparison comparison = rules::Compare(*former, *present);
    CStringArray lines = rules::DifferenceLines(comparison);
    if (comparison.HasNoDifferences() && comparison.renumbered == 0 && before != after)
        lines += u"文件中别的内容不同（版本、文件头或写法）。"_s;
    return lines;
}

} // namespace shared
