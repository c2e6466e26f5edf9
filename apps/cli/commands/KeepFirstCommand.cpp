#include "cli/commands/KeepFirstCommand.h"

#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "platform/Paths.h"
#include "shared/RuleFileState.h"

using namespace Qt::StringLiterals;

namespace cli {

CommandInfo KeepFirstCommand::Describe()
{
    CommandInfo info;
    info.name = u"keep-first"_s;
    info.syntax = u"[FILE]"_s;
    info.summary = u"规则文件中专业重复时，每个只留读得到的第一段"_s;
    info.description =
        u"FILE "
        u"是规则文件或配置名，不写时为工程的当前配置。文件先留一份历史副本，去掉的各段以后可以从中取回。\n"
        "没有专业重复的文件不改动。"_s;
    info.minPositional = 0;
    info.maxPositional = 1;
    return info;
}

KeepFirstCommand::KeepFirstCommand() : Command(Describe()) {}

void KeepFirstCommand::Run(const Arguments& arguments) const
{
    Session session(arguments);
    const CString path = ChooseRuleFile(arguments.Positional().value(0));
    const auto lock = LockRuleFiles(session.History(), {path});
    if (shared::ExamineRuleFile(path).kind != shared::RuleFileKind::Repeated) {
        CheckRuleFile(path);
        WriteText(u"没有重复的专业，文件没有改动：%1\n"_s.arg(platform::ToNative(path)));
        return;
    }
    session.History().Keep(path);
    shared::KeepFirstSpecialties(path);
    CheckRuleFile(path);
    WriteText(u"重复的专业只留了第一段，原来的内容在历史副本中：%1\n"_s.arg(platform::ToNative(path)));
}

} // namespace cli
