#include "cli/commands/InitCommand.h"

#include "cli/printing/Output.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Offices.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "embedded/data/engine/Progress.h"
#include "embedded/data/host/CreateProject.h"
#include "presenter/CAutoQdDeConfigFacade.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

SQdDeInfo::EQdDeMode ModeOf(const CString& text)
{
    if (text.isEmpty() || text == u"bill") return SQdDeInfo::BillMode;
    if (text == u"quota") return SQdDeInfo::QuotaMode;
    throw UsageError(u"--mode 只能是 bill 或 quota，不能是“%1”"_s.arg(text));
}

void Create(const QString& folder, const embedded::ProjectOptions& options)
{
    WatchedWork work;
    try {
        embedded::CreateProject(folder, options, work.Progress());
    } catch (const embedded::Cancelled&) {
        throw Refusal(u"已取消，什么也没有建立"_s);
    }
}

} // namespace

CommandInfo InitCommand::Describe()
{
    CommandInfo info;
    info.name = u"init"_s;
    info.syntax =
        u"DIR [--mode bill|quota] [--spec NAME] [--bill-library CODE] [--quota-library CODE] [--office NAME]"_s;
    info.summary = u"新建工程"_s;
    info.description =
        u"在文件夹 DIR 中建立工程：应用文件夹、工程文件 project.ktqd 和 ini 文件。DIR 不存在时新建。\n"
        "DIR 的应用文件夹中已有 catalogue.db 时，专业和库从其中选。Ctrl+C 取消，什么也不留下。\n"
        "--office 使工程属于一个办公室：类别、属性和库是办公室的，配置由 ktqdde cloud 发布和取来；\n"
        "见手册 docs/office.md。"_s;
    info.minPositional = info.maxPositional = 1;
    info.options = {
        {u"mode"_s, u"bill|quota"_s, u"清单模式（不写时）或定额模式"_s, {}},
        {u"spec"_s, u"NAME"_s, u"当前专业；不写时为第一个专业"_s, {}},
        {u"bill-library"_s, u"CODE"_s, u"清单库的代码；不写时为第一个清单库"_s, {}},
        {u"quota-library"_s, u"CODE"_s, u"该模式的定额库的代码；不写时为与清单库配套的第一个"_s, {}},
        {u"office"_s, u"NAME"_s, u"工程所属的办公室"_s, {}}};
    info.needsProject = false;
    return info;
}

InitCommand::InitCommand() : Command(Describe()) {}

void InitCommand::Run(const Arguments& arguments) const
{
    const QString folder = arguments.Positional()[0];
    ResolvePath(folder);
    embedded::ProjectOptions options;
    options.mode = ModeOf(arguments.Value(u"mode"_s));
    options.spec = arguments.Value(u"spec"_s);
    options.billLibrary = arguments.Value(u"bill-library"_s);
    options.quotaLibrary = arguments.Value(u"quota-library"_s);
    if (arguments.Has(u"office"_s)) options.office = OfficeNamed(arguments.Value(u"office"_s));
    Create(folder, options);
    const Session session(folder);
    // Without it the ranges of all attributes are open until somebody rebuilds the file.
    CAutoQdDeConfigFacade::AttrConfig();
    CString kind = session.IsBillMode() ? u"清单模式"_s : u"定额模式"_s;
    if (!options.office.isEmpty()) kind += u"，办公室 "_s + options.office;
    WriteText(u"已建立工程：%1（%2，专业 %3）\n"_s.arg(folder, kind, session.Spec()));
}

} // namespace cli
