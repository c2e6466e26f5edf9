#include "cli/commands/RefreshCommand.h"

#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "platform/Console.h"
#include "platform/Paths.h"
#include "presenter/RefreshAutoConfig.h"

using namespace Qt::StringLiterals;

namespace cli {

CommandInfo RefreshCommand::Describe()
{
    CommandInfo info;
    info.name = u"refresh"_s;
    info.syntax = u"FILE"_s;
    info.summary = u"让模块检查 FILE 并把它设为当前配置"_s;
    info.description = u"即模块入口 RefreshAutoConfig：原来的当前配置先保存，FILE 合用就成为当前配置，\n"
                       "否则当前配置不变，并说明原因。工程只记住配置名：规则文件夹以外的文件，\n"
                       "下次打开的是规则文件夹中同名的配置。"_s;
    info.minPositional = info.maxPositional = 1;
    return info;
}

RefreshCommand::RefreshCommand() : Command(Describe()) {}

void RefreshCommand::Run(const Arguments& arguments) const
{
    Session session(arguments);
    const CString path = ResolveRuleFile(arguments.Positional()[0]);
    const auto lock = LockRuleFiles(session.History(), {CurrentFile(), path});
    KeepAndCheck(CurrentFile(), session.History());
    CString message;
    if (!RefreshAutoConfig(message, path)) {
        platform::WriteErr(message + u'\n');
        CheckRuleFile(path);
        throw Refusal(message);
    }
    const CString note = NoteOnCurrent(path);
    WriteText(u"已设为当前配置：%1\n"_s.arg(platform::ToNative(path)) + note);
}

} // namespace cli
