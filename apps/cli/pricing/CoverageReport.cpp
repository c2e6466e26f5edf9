#include "cli/pricing/CoverageReport.h"

#include "cli/printing/JsonWriter.h"
#include "cli/printing/TextTable.h"
#include "rules/bill/Units.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// How many groups of a category the terminal shows.
constexpr std::size_t GroupsShown = 10;

using rules::CategoryCoverage;
using rules::UncaughtGroup;

CString Share(std::uint64_t part, std::uint64_t whole)
{
    return CString::number(100.0 * static_cast<double>(part) / static_cast<double>(whole), 'f', 1) + u'%';
}

CString HitsTable(const CategoryCoverage& category)
{
    TextTable table;
    table.AddRow({u"规则"_s, u"命中"_s, u"占比"_s, u"内容"_s});
    for (std::size_t i = 0; i < category.hits.size(); ++i) {
        if (category.hits[i] == 0) continue;
        const rules::Rule& rule = category.category->rules[i];
        table.AddRow({CString::number(i + 1), CString::number(category.hits[i]),
                      Share(category.hits[i], category.Components()),
                      rule.isDefault ? u"默认规则 "_s + rule.Text() : rule.Text()});
    }
    if (category.withoutRule > 0)
        table.AddRow({u"—"_s, CString::number(category.withoutRule),
                      Share(category.withoutRule, category.Components()), u"没有规则适用"_s});
    return table.ToText(2);
}

CString NeverHitTable(const CategoryCoverage& category)
{
    TextTable table;
    for (std::size_t i = 0; i < category.hits.size(); ++i)
        if (category.hits[i] == 0) {
            const rules::Rule& rule = category.category->rules[i];
            table.AddRow({u"第 %1 条"_s.arg(i + 1), rule.isDefault ? u"默认规则"_s : rule.Text()});
        }
    return table.IsEmpty() ? CString() : u"  从未命中：\n"_s + table.ToText(4);
}

CString QuantityText(const CategoryCoverage& category, const UncaughtGroup& group)
{
    if (category.measure.item.isEmpty() || group.missing == group.components) return {};
    const CString missing = group.missing > 0 ? u"（%1 个缺）"_s.arg(group.missing) : CString();
    return rules::UnitOfMeasure::Of(category.measure.unit).Format(group.quantity) + u' ' +
           category.measure.unit + missing;
}

CString UncaughtTable(const CategoryCoverage& category)
{
    if (category.uncaught.empty()) return {};
    TextTable table;
    table.AddRow(
        CStringArray{u"构件数"_s, category.measure.item.isEmpty() ? u"工程量"_s : category.measure.item} +
        category.attributes);
    const std::size_t shown = std::min(category.uncaught.size(), GroupsShown);
    CStringArray lines;
    for (std::size_t i = 0; i < shown; ++i) {
        const UncaughtGroup& group = category.uncaught[i];
        CStringArray cells{CString::number(group.components), QuantityText(category, group)};
        for (const CString& value : group.values)
            cells.append(value.isEmpty() ? u"—"_s : value);
        table.AddRow(cells);
        const CString line = BatchLine(category, group);
        lines.append(line.isEmpty() ? u"（没有能写成条件的属性：%1）"_s.arg(group.firstId) : line);
    }
    CString text = u"  没有规则收下的构件，按规则看的属性分组，工程量大的在前：\n"_s + table.ToText(4);
    if (category.uncaught.size() > shown)
        text += u"    ……另有 %1 组，全部见 --json\n"_s.arg(category.uncaught.size() - shown);
    text += u"  照它们各加一条规则的 batch 行（清单和定额另加）：\n"_s;
    for (const CString& line : lines)
        text += u"    "_s + line + u'\n';
    return text;
}

CString Totals(const CoverageReport& report)
{
    const rules::Coverage& coverage = report.coverage;
    std::uint64_t caught = 0;
    std::uint64_t onDefault = 0;
    std::uint64_t without = 0;
    for (const CategoryCoverage& category : coverage.categories) {
        onDefault += category.onDefault;
        without += category.withoutRule;
        caught += category.Components() - category.onDefault - category.withoutRule;
    }
    CString text = u"构件 %1 个 ＝ 规则命中 %2 ＋ 默认规则 %3 ＋ 没有规则 %4"_s.arg(
        CString::number(report.category.isEmpty() ? coverage.components : caught + onDefault + without),
        CString::number(caught), CString::number(onDefault), CString::number(without));
    if (report.category.isEmpty())
        text += u" ＋ 编号重复 %1 ＋ 类别不明 %2"_s.arg(coverage.idsTwice).arg(coverage.unknownCategory);
    text += u'\n';
    if (report.otherCategories > 0)
        text += u"构件表没有构件的类别 %1 个，它们的规则 %2 条从未命中\n"_s.arg(report.otherCategories)
                    .arg(report.otherRules);
    return text;
}

void PutCondition(JsonWriter& json, const CString& attribute, const CString& value)
{
    json.BeginArray();
    for (const CString& text :
         {attribute, u"1"_s, u"＝"_s, CString(), CString(), value, CString(), CString()})
        json.Text(text);
    json.EndArray();
}

void PutGroup(JsonWriter& json, const CategoryCoverage& category, const UncaughtGroup& group)
{
    json.BeginObject();
    json.Key(u"components").Number(static_cast<qint64>(group.components));
    json.Key(u"quantity")
        .Text(group.missing == group.components || category.measure.item.isEmpty() ? CString()
                                                                                   : group.quantity.ToText());
    json.Key(u"missing").Number(static_cast<qint64>(group.missing));
    json.Key(u"firstId").Text(group.firstId);
    json.Key(u"values").BeginObject();
    for (qsizetype i = 0; i < category.attributes.size(); ++i)
        json.Key(category.attributes[i]).Text(group.values[static_cast<std::size_t>(i)]);
    json.EndObject();
    json.Key(u"batch").Text(BatchLine(category, group));
    json.EndObject();
}

void PutCategory(JsonWriter& json, const CategoryCoverage& category)
{
    json.BeginObject();
    json.Key(u"category").Text(category.category->text);
    json.Key(u"components").Number(static_cast<qint64>(category.Components()));
    json.Key(u"default").Number(static_cast<qint64>(category.onDefault));
    json.Key(u"withoutRule").Number(static_cast<qint64>(category.withoutRule));
    json.Key(u"rules").BeginArray();
    for (std::size_t i = 0; i < category.hits.size(); ++i) {
        const rules::Rule& rule = category.category->rules[i];
        json.BeginObject();
        json.Key(u"rule").Number(static_cast<qint64>(i + 1));
        json.Key(u"id").Number(rule.id);
        json.Key(u"text").Text(rule.Text());
        json.Key(u"isDefault").Bool(rule.isDefault);
        json.Key(u"hits").Number(static_cast<qint64>(category.hits[i]));
        json.EndObject();
    }
    json.EndArray();
    json.Key(u"measure").Text(category.measure.item);
    json.Key(u"unit").Text(category.measure.unit);
    json.Key(u"uncaught").BeginArray();
    for (const UncaughtGroup& group : category.uncaught)
        PutGroup(json, category, group);
    json.EndArray().EndObject();
}

} // namespace

CString BatchLine(const CategoryCoverage& category, const UncaughtGroup& group)
{
    const bool hasValue = std::any_of(group.values.begin(), group.values.end(),
                                      [](const CString& value) { return !value.isEmpty(); });
    if (!hasValue) return {};
    JsonWriter json(JsonWriter::Style::OneLine);
    json.BeginObject();
    json.Key(u"op").Text(u"AddConfig");
    json.Key(u"path").BeginObject().Key(u"category").Text(category.category->text);
    json.EndObject();
    json.Key(u"conditions").BeginArray();
    for (qsizetype i = 0; i < category.attributes.size(); ++i) {
        const CString& value = group.values[static_cast<std::size_t>(i)];
        if (!value.isEmpty()) PutCondition(json, category.attributes[i], value);
    }
    json.EndArray().EndObject();
    return json.Result().trimmed();
}

CString CoverageText(const CoverageReport& report)
{
    CString text;
    for (const CategoryCoverage& category : report.coverage.categories) {
        const auto hit = std::count_if(category.hits.begin(), category.hits.end(),
                                       [](std::uint64_t count) { return count > 0; });
        text += u"%1　构件 %2 个，规则 %3 条，命中过 %4 条\n"_s.arg(category.category->text)
                    .arg(category.Components())
                    .arg(category.hits.size())
                    .arg(hit) +
                HitsTable(category) + NeverHitTable(category) + UncaughtTable(category) + u'\n';
    }
    return text + Totals(report);
}

CString CoverageJson(const CoverageReport& report)
{
    const rules::Coverage& coverage = report.coverage;
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"table").Text(report.table);
    json.Key(u"config").Text(report.ruleFile);
    json.Key(u"components").Number(static_cast<qint64>(coverage.components));
    json.Key(u"idsTwice").Number(static_cast<qint64>(coverage.idsTwice));
    json.Key(u"unknownCategory").Number(static_cast<qint64>(coverage.unknownCategory));
    json.Key(u"otherCategories").Number(static_cast<qint64>(report.otherCategories));
    json.Key(u"otherRules").Number(static_cast<qint64>(report.otherRules));
    json.Key(u"categories").BeginArray();
    for (const CategoryCoverage& category : coverage.categories)
        PutCategory(json, category);
    json.EndArray().EndObject();
    return json.Result();
}

} // namespace cli
