#include "cli/printing/FindingText.h"

#include "cli/printing/JsonWriter.h"
#include "cli/printing/TextTable.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

void WriteId(JsonWriter& json, QStringView name, int id)
{
    if (id != 0) json.Key(name).Number(id);
}

void WriteIds(JsonWriter& json, const std::vector<int>& ids)
{
    json.BeginArray();
    for (const int id : ids)
        json.Number(id);
    json.EndArray();
}

template <typename Record, typename Fields>
void WriteRecord(JsonWriter& json, const Record& record, const Fields& fields)
{
    json.BeginObject();
    for (const auto& field : fields)
        json.Key(field.name).Text(record.*field.field);
    json.EndObject();
}

void WritePath(JsonWriter& json, const rules::Mend& mend, const CString& category)
{
    json.Key(u"path").BeginObject();
    json.Key(u"category").Text(category);
    // Ids may be 0, and a path without one means the same.
    WriteId(json, u"configId", mend.configId);
    WriteId(json, u"conditionId", mend.conditionId);
    WriteId(json, u"qdId", mend.qdId);
    WriteId(json, u"deId", mend.deId);
    json.EndObject();
}

void WriteMend(JsonWriter& json, const rules::Mend& mend, const CString& category)
{
    json.BeginObject();
    json.Key(u"op").Text(mend.op);
    if (mend.op != u"Save") WritePath(json, mend, category);
    if (!mend.array.isEmpty()) {
        json.Key(u"array").BeginArray();
        for (const CString& text : mend.array)
            json.Text(text);
        json.EndArray();
    }
    if (!mend.ids.empty()) {
        json.Key(u"ids");
        WriteIds(json, mend.ids);
    }
    if (!mend.deIdsByQd.empty()) {
        json.Key(u"deIdsByQd").BeginObject();
        for (const auto& [bill, ids] : mend.deIdsByQd) {
            json.Key(QString::number(bill));
            WriteIds(json, ids);
        }
        json.EndObject();
    }
    if (mend.qd) {
        json.Key(u"qd");
        WriteRecord(json, *mend.qd, QdFields);
    }
    if (mend.de) {
        json.Key(u"de");
        WriteRecord(json, *mend.de, DeFields);
    }
    json.EndObject();
}

CString PlaceText(const rules::Finding& finding)
{
    return finding.position > 0 ? u"第 %1 条"_s.arg(finding.position) : u"—"_s;
}

} // namespace

CString SeverityText(rules::Severity severity)
{
    switch (severity) {
    case rules::Severity::Note:
        return u"提示"_s;
    case rules::Severity::Warning:
        return u"警告"_s;
    case rules::Severity::Error:
        break;
    }
    return u"错误"_s;
}

CString SeverityWord(rules::Severity severity)
{
    switch (severity) {
    case rules::Severity::Note:
        return u"note"_s;
    case rules::Severity::Warning:
        return u"warning"_s;
    case rules::Severity::Error:
        break;
    }
    return u"error"_s;
}

FindingCounts::FindingCounts(const std::vector<rules::Finding>& findings)
{
    for (const rules::Finding& finding : findings)
        switch (rules::SeverityOf(finding.code)) {
        case rules::Severity::Note:
            ++notes;
            break;
        case rules::Severity::Warning:
            ++warnings;
            break;
        case rules::Severity::Error:
            ++errors;
            break;
        }
}

int FindingCounts::AtLeast(rules::Severity severity) const
{
    int count = errors;
    if (severity != rules::Severity::Error) count += warnings;
    if (severity == rules::Severity::Note) count += notes;
    return count;
}

CString FindingCounts::Text() const
{
    return u"错误 %1 处，警告 %2 处，提示 %3 处"_s.arg(errors).arg(warnings).arg(notes);
}

CString FindingsText(const std::vector<rules::Finding>& findings)
{
    if (findings.empty()) return u"没有发现问题\n"_s;
    CString text;
    for (std::size_t i = 0; i < findings.size();) {
        const CString& category = findings[i].category;
        TextTable table;
        for (; i < findings.size() && findings[i].category == category; ++i)
            table.AddRow({PlaceText(findings[i]), SeverityText(rules::SeverityOf(findings[i].code)),
                          rules::CodeText(findings[i].code), findings[i].text});
        text += (category.isEmpty() ? u"整个文件"_s : category) + u'\n' + table.ToText(2) + u'\n';
    }
    return text + FindingCounts(findings).Text() + u'\n';
}

CString FindingsJson(const std::vector<rules::Finding>& findings, const QString& file, bool isBillMode)
{
    const FindingCounts counts(findings);
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"file").Text(file);
    json.Key(u"mode").Text(isBillMode ? u"bill"_s : u"quota"_s);
    json.Key(u"totals").BeginObject();
    json.Key(u"error").Number(counts.errors);
    json.Key(u"warning").Number(counts.warnings);
    json.Key(u"note").Number(counts.notes);
    json.EndObject();
    json.Key(u"findings").BeginArray();
    for (const rules::Finding& finding : findings) {
        json.BeginObject();
        json.Key(u"code").Text(rules::CodeText(finding.code));
        json.Key(u"severity").Text(SeverityWord(rules::SeverityOf(finding.code)));
        json.Key(u"category").Text(finding.category);
        if (finding.position > 0) {
            json.Key(u"rule").Number(finding.position);
            json.Key(u"id").Number(finding.ruleId);
        }
        json.Key(u"text").Text(finding.text);
        json.Key(u"others");
        WriteIds(json, finding.others);
        if (finding.mend) {
            json.Key(u"mend");
            WriteMend(json, *finding.mend, finding.category);
        }
        json.EndObject();
    }
    json.EndArray().EndObject();
    return json.Result();
}

CString MendLine(const rules::Finding& finding)
{
    if (!finding.mend) return {};
    JsonWriter json(JsonWriter::Style::OneLine);
    WriteMend(json, *finding.mend, finding.category);
    return json.Result();
}

} // namespace cli
