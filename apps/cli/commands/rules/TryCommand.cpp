#include "cli/commands/rules/TryCommand.h"

#include "cli/pricing/PricingJson.h"
#include "cli/pricing/PricingRules.h"
#include "cli/printing/Output.h"
#include "cli/printing/TextTable.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Session.h"
#include "rules/match/CellText.h"
#include "shared/GatherPricingFacts.h"
#include "shared/PricingText.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// The component of the command line.
struct Trial
{
    CStringArray headers;
    std::vector<CString> cells;
    CString name;
};

Trial TrialOf(const CStringArray& words)
{
    Trial trial;
    for (const CString& word : words) {
        const qsizetype sign = word.indexOf(u'=');
        const CString name = rules::WithoutBlanks(word.left(sign)).toString();
        if (sign < 0 || name.isEmpty()) throw UsageError(u"要写成“名称=值”：%1"_s.arg(word));
        if (trial.headers.contains(name)) throw UsageError(u"“%1”写了两次"_s.arg(name));
        trial.headers.append(name);
        trial.cells.push_back(word.mid(sign + 1));
        if (name == rules::OwnName) trial.name = trial.cells.back();
    }
    return trial;
}

CString QuantityText(const rules::Quantity& quantity, const CString& unit)
{
    return quantity.IsKnown() ? shared::QuantityIn(quantity, unit) : u"缺："_s + shared::FaultText(quantity);
}

CString ItemsText(const rules::ComponentResult& result, const rules::Bill& bill)
{
    if (result.lines.empty()) return {};
    TextTable table;
    table.AddRow({u"编号"_s, u"名称"_s, u"单位"_s, u"数量"_s});
    for (const rules::ItemLine& line : result.lines) {
        const rules::BillRow& row = bill.rows[line.row];
        table.AddRow({row.number, row.name, row.unit, QuantityText(line.quantity, row.unit)});
        for (const rules::ItemLine& quota : line.quotas) {
            const rules::BillRow& below = row.quotas[quota.row];
            table.AddRow(
                {u"  "_s + below.number, below.name, below.unit, QuantityText(quota.quantity, below.unit)});
        }
    }
    return u"\n套的项：\n"_s + table.ToText(2);
}

CString MissesText(const rules::Trace& trace, const rules::SmallCategory& category)
{
    TextTable table;
    for (const rules::RuleTrace* const miss : shared::NearestFirst(trace, category)) {
        const rules::Rule& rule = category.rules[static_cast<std::size_t>(miss->rule)];
        table.AddRow({u"第 %1 条"_s.arg(miss->rule + 1),
                      u"%1/%2"_s.arg(miss->holding).arg(rule.conditions.size()), rule.Text(),
                      shared::MissText(*miss, category)});
    }
    return table.IsEmpty() ? CString()
                           : u"\n不适用的规则，最接近的在前（满足的条件数/条件数）：\n"_s + table.ToText(2);
}

CString RuleText(const rules::ComponentResult& result)
{
    if (result.rule == rules::NoRule) return u"没有规则适用\n"_s;
    const rules::Rule& rule = result.category->rules[static_cast<std::size_t>(result.rule)];
    return u"适用的规则：第 %1 条　%2%3\n"_s.arg(result.rule + 1)
        .arg(rule.Text(), rule.isDefault ? u"（默认规则）"_s : CString());
}

CString TrialText(const rules::TakeoffComponent& component, const rules::ComponentResult& result,
                  const rules::Trace& trace, const rules::Bill& bill)
{
    CString text = u"类别：%1\n"_s.arg(component.category) + RuleText(result);
    const bool isBare = result.outcome == rules::Outcome::OnDefault && result.lines.empty();
    if (result.refusal != rules::Refusal::None)
        text += shared::RefusalText(result.refusal) + u'\n';
    else if (isBare)
        text += u"默认规则没有清单或定额项\n"_s;
    text += ItemsText(result, bill);
    for (const rules::Remark& remark : result.remarks)
        text += u"注意："_s + rules::Describe(remark) + u'\n';
    return text + MissesText(trace, *result.category);
}

} // namespace

CommandInfo TryCommand::Describe()
{
    CommandInfo info;
    info.name = u"try"_s;
    info.syntax = u"--category TEXT [属性=值 ...] [--json] [--config FILE]"_s;
    info.summary = u"试一个构件：哪条规则适用，套什么，别的规则为什么不适用"_s;
    info.description =
        u"构件的属性和工程量写成“名称=值”，名称是属性的名称或代码、计算式里的名称或计算项，\n"
        "例如 材质=镀锌钢管 公称直径=65 水平管长度=12.5 立管长度=0；“具体构件=名称”是构件自己的名称。\n"
        "没有适用的规则按接近的程度列出，最接近的在前。什么也不写入。"_s;
    info.maxPositional = std::numeric_limits<int>::max();
    info.options = {{u"category"_s, u"TEXT"_s, u"小类：给排水\\管道\\给水管，或给水管"_s, {}},
                    PricingConfigOption(),
                    {u"json"_s, {}, u"以 JSON 输出，写法见手册 docs/json.md"_s, {}}};
    return info;
}

TryCommand::TryCommand() : Command(Describe()) {}

void TryCommand::Run(const Arguments& arguments) const
{
    if (!arguments.Has(u"category"_s)) throw UsageError(u"缺少 --category TEXT"_s);
    const Trial trial = TrialOf(arguments.Positional());
    const Session session(arguments);
    const rules::ConfigurationPtr configuration = ReadPricingRules(PricingFile(arguments), session);
    const CString category = NamedCategory(arguments.Value(u"category"_s), *configuration);
    rules::BillBuilder builder(configuration, shared::PricingFactsOf(session.Host(), ModeOf(session)),
                               trial.headers);
    const rules::TakeoffComponent component{{}, category, trial.name, trial.cells};
    const rules::ComponentResult result = builder.Add(component);
    const rules::Trace trace = builder.Explain(component).value();
    const rules::Bill bill = builder.Finish();
    WriteText(arguments.Has(u"json"_s) ? TrialJson(component, result, trace, bill)
                                       : TrialText(component, result, trace, bill));
}

} // namespace cli
