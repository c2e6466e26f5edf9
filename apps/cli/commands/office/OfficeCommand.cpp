#include "cli/commands/office/OfficeCommand.h"

#include "cli/printing/JsonWriter.h"
#include "cli/printing/Output.h"
#include "cli/printing/TextTable.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Offices.h"
#include "embedded/data/office/Office.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using embedded::Office;
using embedded::OfficeRight;
using embedded::OfficeStatus;

void Create(const CString& name)
{
    WatchedWork work;
    try {
        Office::Create(name, work.Progress());
    } catch (const embedded::Cancelled&) {
        throw Refusal(u"已取消，什么也没有建立"_s);
    }
    WriteText(u"已建立办公室：%1\n"_s.arg(name));
}

void Upgrade(const CString& name)
{
    const int former = Office::Upgrade(name);
    WriteText(former == Office::SchemaVersion
                  ? u"办公室“%1”已经是结构版本 %2\n"_s.arg(name, CString::number(former))
                  : u"办公室“%1”已从结构版本 %2 升级到 %3\n"_s.arg(name, CString::number(former),
                                                                   CString::number(Office::SchemaVersion)));
}

CString RightKey(OfficeRight right)
{
    switch (right) {
    case OfficeRight::None:
        return u"none"_s;
    case OfficeRight::Reader:
        return u"reader"_s;
    case OfficeRight::Editor:
        return u"editor"_s;
    case OfficeRight::Keeper:
        return u"keeper"_s;
    }
    return {};
}

CString SchemaText(const OfficeStatus& status)
{
    if (status.schema == 0) return u"还没有建立"_s;
    CString text = CString::number(status.schema);
    if (status.schema < status.knownSchema) text += u"（要用 ktqdde office upgrade 升级）"_s;
    if (status.schema > status.knownSchema) text += u"（要用新版程序）"_s;
    return text;
}

/// Why what is in the office was not looked at.
CString NotSeen(const OfficeStatus& status)
{
    return status.right == OfficeRight::None ? u"没有看：用户没有权限"_s : u"没有看：要用新版程序"_s;
}

CString ToText(const OfficeStatus& status)
{
    TextTable table;
    table.AddRow({u"办公室"_s, status.name});
    table.AddRow({u"服务器"_s, status.server + (status.isEncrypted ? u"，加密"_s : CString())});
    table.AddRow({u"用户"_s, status.user});
    table.AddRow({u"权限"_s, embedded::RightWord(status.right)});
    table.AddRow({u"结构版本"_s, SchemaText(status)});
    if (status.contents) {
        table.AddRow({u"配置"_s, CString::number(status.contents->configurations)});
        table.AddRow({u"库"_s, CString::number(status.contents->libraries)});
    } else if (status.schema > 0) {
        const CString notSeen = NotSeen(status);
        table.AddRow({u"配置"_s, notSeen});
        table.AddRow({u"库"_s, notSeen});
    }
    return table.ToText(0);
}

CString ToJson(const OfficeStatus& status)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"office").Text(status.name);
    json.Key(u"server").Text(status.server);
    json.Key(u"user").Text(status.user);
    json.Key(u"right").Text(RightKey(status.right));
    json.Key(u"encrypted").Bool(status.isEncrypted);
    json.Key(u"schema").Number(status.schema);
    json.Key(u"knownSchema").Number(status.knownSchema);
    if (status.contents) {
        json.Key(u"revision").Number(status.contents->revision);
        json.Key(u"configurations").Number(status.contents->configurations);
        json.Key(u"libraries").Number(status.contents->libraries);
    }
    json.EndObject();
    return json.Result();
}

} // namespace

CommandInfo OfficeCommand::Describe()
{
    CommandInfo info;
    info.name = u"office"_s;
    info.syntax = u"create|status|upgrade NAME [--json]"_s;
    info.summary = u"办公室：在服务器上建立、查看、升级"_s;
    info.description =
        u"办公室是一个 PostgreSQL 数据库，装着几个工程共用的类别、属性、库、清单编号和发布的配置。\n"
        "NAME 是连接服务文件 pg_service.conf 中的一节；口令由 .pgpass 保管，本程序不保存也不显示。\n"
        "  create NAME     在那个数据库中建立办公室，内容是本程序自带的库；建立的人是管理员\n"
        "  status NAME     看连不连得上、自己的权限、有什么；--json 以 JSON 输出\n"
        "  upgrade NAME    把旧版程序建立的办公室升级到本程序的结构\n"
        "怎样从头设立一个办公室，见手册 docs/office.md；工程用 ktqdde init --office 加入。"_s;
    info.minPositional = info.maxPositional = 2;
    info.options = {{u"json"_s, {}, u"status 以 JSON 输出，写法见手册 docs/json.md"_s, {}}};
    info.needsProject = false;
    return info;
}

OfficeCommand::OfficeCommand() : Command(Describe()) {}

void OfficeCommand::Run(const Arguments& arguments) const
{
    const CString action = arguments.Positional()[0];
    const CString name = OfficeNamed(arguments.Positional()[1]);
    if (arguments.Has(u"json"_s) && action != u"status") throw UsageError(u"--json 只用于 status"_s);
    if (action == u"create") return Create(name);
    if (action == u"upgrade") return Upgrade(name);
    if (action != u"status") throw UsageError(u"不认识的操作：%1"_s.arg(action));
    const OfficeStatus status = Office::Status(name);
    WriteText(arguments.Has(u"json"_s) ? ToJson(status) : ToText(status));
}

} // namespace cli
