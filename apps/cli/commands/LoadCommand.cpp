#include "cli/commands/LoadCommand.h"

#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "platform/Paths.h"
#include "presenter/CQdDeConfigPresenter.h"

using namespace Qt::StringLiterals;

namespace cli {

CommandInfo LoadCommand::Describe()
{
    CommandInfo info;
    info.name = u"load"_s;
    info.syntax = u"FILE"_s;
    info.summary = u"换用另一个规则文件作为当前配置"_s;
    info.description =
        u"FILE 是规则文件或配置名。原来的当前配置先保存。工程只记住配置名：规则文件夹以外的文件，\n"
        "下次打开的是规则文件夹中同名的配置。"_s;
    info.minPositional = info.maxPositional = 1;
    return info;
}

LoadCommand::LoadCommand() : Command(Describe()) {}

void LoadCommand::Run(const Arguments& arguments) const
{
    Session session(arguments);
    const CString path = ResolveRuleFile(arguments.Positional()[0]);
    const auto lock = LockRuleFiles(session.History(), {CurrentFile(), path});
    CheckRuleFile(path);
    KeepAndCheck(CurrentFile(), session.History());
    CQdDeConfigPresenter presenter({});
    if (!presenter.ReLoad(path)) throw Refusal(u"换用没有成功：%1"_s.arg(platform::ToNative(path)));
    const CString note = NoteOnCurrent(path);
    WriteText(u"已换用：%1\n"_s.arg(platform::ToNative(path)) + note);
}

} // namespace cli
