#include "editor/files/RuleFileEntry.h"

#include "embedded/data/project/Look.h"
#include "rules/compare/Content.h"
#include "rules/model/Snapshot.h"

namespace editor {

qsizetype RuleFileEntry::Rules() const
{
    qsizetype sum = 0;
    for (const SpecialtyCount& count : counts)
        sum += count.rules;
    return sum;
}

RuleFileEntry ExamineEntry(const CString& path)
{
    RuleFileEntry entry{shared::ExamineRuleFile(path)};
    if (entry.state.kind != shared::RuleFileKind::Rules) return entry;
    const embedded::Look look;
    CString reason;
    if (const rules::ConfigurationPtr configuration = rules::ReadRuleFile(path, reason))
        for (const rules::Specialty& specialty : configuration->Specialties())
            entry.counts.append({specialty.name, static_cast<qsizetype>(rules::CountOf(specialty))});
    return entry;
}

} // namespace editor
