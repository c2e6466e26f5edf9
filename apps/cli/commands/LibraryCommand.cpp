#include "cli/commands/LibraryCommand.h"

#include "cli/printing/JsonWriter.h"
#include "cli/printing/Output.h"
#include "cli/printing/TextTable.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Offices.h"
#include "cli/reading/Session.h"
#include "embedded/data/catalogue/Library.h"
#include "embedded/data/host/LibraryChoice.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using embedded::LibraryEntry;

CString ToTable(const CArray<LibraryEntry>& entries)
{
    TextTable table;
    table.AddRow({{}, u"用途"_s, u"代码"_s, u"名称"_s, u"地区"_s, u"年份"_s, u"项目"_s, u"指引的清单库"_s});
    for (const LibraryEntry& entry : entries) {
        table.AddRow({entry.isInUse ? u"*"_s : CString(), embedded::RoleLabel(entry.role), entry.name.code,
                      entry.name.name, entry.name.local, entry.name.year, CString::number(entry.items),
                      entry.name.billLibrary});
    }
    return table.ToText(0);
}

CString ToJson(const CArray<LibraryEntry>& entries)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject().Key(u"libraries").BeginArray();
    for (const LibraryEntry& entry : entries) {
        json.BeginObject();
        json.Key(u"role").Text(embedded::RoleWord(entry.role));
        json.Key(u"code").Text(entry.name.code);
        json.Key(u"name").Text(entry.name.name);
        json.Key(u"local").Text(entry.name.local);
        json.Key(u"year").Text(entry.name.year);
        json.Key(u"items").Number(entry.items);
        json.Key(u"billLibrary").Text(entry.name.billLibrary);
        json.Key(u"inUse").Bool(entry.isInUse);
        json.EndObject();
    }
    json.EndArray().EndObject();
    return json.Result();
}

/// What a person should know of the quota libraries in use whose guide is of another bill library: a line for
/// each, after the library of `role` was changed.
CString Hints(const CArray<LibraryEntry>& entries, embedded::LibraryRole role)
{
    CString bill;
    CString hints;
    for (const LibraryEntry& entry : entries) {
        if (entry.isInUse && entry.role == embedded::LibraryRole::Bill) bill = entry.name.code;
    }
    for (const LibraryEntry& entry : entries) {
        const bool isQuota = entry.role != embedded::LibraryRole::Bill;
        const bool isConcerned = role == embedded::LibraryRole::Bill || role == entry.role;
        if (!entry.isInUse || !isQuota || !isConcerned) continue;
        const CString hint = embedded::GuideHint(entry.role, entry.name, bill);
        if (!hint.isEmpty()) hints += u"提示：%1。\n"_s.arg(hint);
    }
    return hints;
}

} // namespace

CommandInfo LibraryCommand::Describe()
{
    CommandInfo info;
    info.name = u"library"_s;
    info.syntax = u"[use CODE] [--json]"_s;
    info.summary = u"列出工程的清单库和定额库，或改用另一个"_s;
    info.description = u"不带参数时列出工程的全部库，正在使用的标有“*”。每种用途使用一个库。\n"
                       "  use CODE    改用代码为 CODE 的库\n"
                       "定额库的指引（清单下的常用定额）是为一个清单库写的，只在使用那个清单库时列出。\n"
                       "规则中的清单和定额记着自己的库。改用别的库以后它们留在规则文件里，但配置对话框不再显"
                       "示，改回来就又看得到；\n"
                       "ktqdde show 照样列出，注明“其他库”。\n"
                       "增加、改名和去掉库用 ktqdde import libraries。"_s;
    info.maxPositional = 2;
    info.options = {{u"json"_s, {}, u"以 JSON 列出，写法见手册 docs/json.md"_s, {}}};
    return info;
}

LibraryCommand::LibraryCommand() : Command(Describe()) {}

void LibraryCommand::Run(const Arguments& arguments) const
{
    const QString project = NamedProject(arguments);
    const CStringArray& words = arguments.Positional();
    TellIfWithoutOffice(project);
    if (words.isEmpty()) {
        const CArray<LibraryEntry> entries = embedded::ListLibraries(project);
        return WriteText(arguments.Has(u"json"_s) ? ToJson(entries) : ToTable(entries));
    }
    if (words[0] != u"use") throw UsageError(u"没有“%1”这个操作，只有 use"_s.arg(words[0]));
    if (words.size() < 2) throw UsageError(u"缺少库的代码"_s);
    if (arguments.Has(u"json"_s)) throw UsageError(u"--json 只用于列出"_s);
    const LibraryEntry used = embedded::UseLibrary(project, words[1]);
    WriteText(u"%1：%2 %3\n规则中属于其他库的内容留在规则文件里，但配置对话框不再显示。\n"_s.arg(
        embedded::RoleLabel(used.role), used.name.code, used.name.name));
    WriteText(Hints(embedded::ListLibraries(project), used.role));
}

} // namespace cli
