#include "cli/commands/rules/CheckCommand.h"

#include "cli/printing/FindingText.h"
#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/check/Check.h"
#include "rules/check/Mends.h"
#include "rules/model/Snapshot.h"
#include "shared/GatherCheckFacts.h"

#include <algorithm>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// The least severity that fails; nothing for none.
std::optional<rules::Severity> FailingLevel(const Arguments& arguments)
{
    const CString level = arguments.Value(u"fail-on"_s);
    if (level.isEmpty() || level == u"error") return rules::Severity::Error;
    if (level == u"warning") return rules::Severity::Warning;
    if (level == u"never") return std::nullopt;
    throw UsageError(u"--fail-on 只能是 error、warning 或 never：%1"_s.arg(level));
}

/// Whether a category is the named one or lies in it: by the full text, its beginning, or its own name.
bool IsWanted(const CString& category, const CString& named)
{
    return category == named || category.startsWith(named + u'\\') || category.endsWith(u'\\' + named);
}

void RequireCategory(const CString& named, const rules::CheckFacts& facts,
                     const rules::Configuration& configuration)
{
    bool isKnown = std::any_of(facts.categories.begin(), facts.categories.end(),
                               [&](const auto& entry) { return IsWanted(entry.first, named); });
    for (const rules::Specialty& specialty : configuration.Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories)
                isKnown = isKnown || IsWanted(small->text, named);
    if (!isKnown) throw Refusal(u"没有类别“%1”"_s.arg(named));
}

/// Whether a save loses what the finding is about.
bool IsLostBySave(rules::FindingCode code)
{
    using enum rules::FindingCode;
    return code == UnknownCategory || code == UnknownElement || code == RepeatedElement;
}

bool IsOf(const CString& spec, const rules::Finding& finding)
{
    return finding.category == spec || finding.category.startsWith(spec + u'\\');
}

/// Writes the script of one specialty; the rules of the others stay, since a save replaces one only.
void WriteMends(const CString& path, const std::vector<rules::Finding>& findings, const CString& spec)
{
    CStringArray lines;
    CStringArray saves;
    int elsewhere = 0;
    for (const rules::Finding* const finding : rules::MendsInOrder(findings)) {
        const CString line = MendLine(*finding);
        if (!IsOf(spec, *finding))
            ++elsewhere;
        else if (finding->mend->op == u"Save")
            saves = {line};
        else if (!lines.contains(line))
            lines.append(line);
    }
    if (!lines.isEmpty()) saves = {u"{\"op\": \"Save\"}\n"_s};
    platform::Files().WriteInPlace(path, (lines + saves).join(QString()).toUtf8());
    CString told = u"脚本已写到：%1，%2 行\n"_s.arg(platform::ToNative(path)).arg((lines + saves).size());
    if (elsewhere > 0) told += u"其余专业还有 %1 行，用 --spec 指明专业\n"_s.arg(elsewhere);
    const bool isLosing = std::any_of(findings.begin(), findings.end(), [&](const rules::Finding& finding) {
        return IsOf(spec, finding) && IsLostBySave(finding.code);
    });
    if (isLosing) told += u"注意：执行脚本会保存“%1”，上面说到的内容届时会丢失\n"_s.arg(spec);
    platform::WriteErr(told);
}

} // namespace

CommandInfo CheckCommand::Describe()
{
    CommandInfo info;
    info.name = u"check"_s;
    info.syntax =
        u"[--config FILE] [--spec NAME] [--category TEXT] [--json] [--fail-on error|warning|never] [--mends FILE]"_s;
    info.summary = u"检查规则：永远不会适用的、有空档的、写错的、重复的"_s;
    info.description = u"检查一个规则文件的全部专业，每个发现一行：哪条规则、多严重、代码、一句话。\n"
                       "各代码的意思见手册 docs/checks.md。规则文件不会改动。\n"
                       "--mends 把能自动改的写成 ktqdde batch 的脚本，只含一个专业的，最后一行保存；\n"
                       "脚本先看过再用：保存时，类别里没有的内容会丢失。"_s;
    info.options = {
        {u"config"_s, u"FILE"_s, u"规则文件或配置名；不写时为工程的当前配置"_s, {}},
        {u"spec"_s, u"NAME"_s, u"--mends 写哪个专业的；不写时为工程的当前专业"_s, {}},
        {u"category"_s, u"TEXT"_s, u"只要这个类别的：给排水\\管道\\给水管、给排水\\管道或给水管"_s, {}},
        {u"json"_s, {}, u"以 JSON 输出，写法见手册 docs/json.md"_s, {}},
        {u"fail-on"_s,
         u"LEVEL"_s,
         u"有这个级别以上的发现时退出状态为 1：error（不写时）、warning 或 never"_s,
         {}},
        {u"mends"_s, u"FILE"_s, u"把能自动改的写成 batch 脚本，FILE 不能已经存在"_s, {}}};
    return info;
}

CheckCommand::CheckCommand() : Command(Describe()) {}

void CheckCommand::Run(const Arguments& arguments) const
{
    const std::optional<rules::Severity> level = FailingLevel(arguments);
    Session session(arguments);
    const CString file = ChooseRuleFile(arguments.Value(u"config"_s));
    if (!platform::Files().Exists(file)) CheckRuleFile(file);
    std::optional<CString> mends;
    if (arguments.Has(u"mends"_s)) {
        mends = ResolvePath(arguments.Value(u"mends"_s));
        if (platform::Files().Exists(*mends)) throw Refusal(u"%1 已经存在"_s.arg(platform::ToNative(*mends)));
    }
    CString reason;
    rules::FileStructure structure;
    const rules::ConfigurationPtr configuration = rules::ReadRuleFile(file, reason, &structure);
    if (!configuration) RefuseWrapped(file);
    if (!configuration) throw Refusal(u"%1：%2"_s.arg(platform::ToNative(file), reason));
    const rules::CheckFacts facts = shared::CheckFactsOf(session.Host(), session.IsBillMode());
    std::vector<rules::Finding> findings = rules::Check(*configuration, structure, facts);
    if (const CString category = arguments.Value(u"category"_s); !category.isEmpty()) {
        RequireCategory(category, facts, *configuration);
        std::erase_if(findings,
                      [&](const rules::Finding& finding) { return !IsWanted(finding.category, category); });
    }
    WriteText(arguments.Has(u"json"_s)
                  ? FindingsJson(findings, platform::ToNative(file), session.IsBillMode())
                  : FindingsText(findings));
    if (mends) WriteMends(*mends, findings, session.Spec());
    const FindingCounts counts(findings);
    if (level && counts.AtLeast(*level) > 0) throw Refusal(u"检查没有通过：%1"_s.arg(counts.Text()));
}

} // namespace cli
