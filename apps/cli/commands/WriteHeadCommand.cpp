#include "cli/commands/WriteHeadCommand.h"

#include "cli/printing/Output.h"
#include "cli/printing/WrappedText.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "presenter/CAutoQdDeConfigFacade.h"
#include "store/RuleFileHead.h"
#include "store/WrappedFile.h"

#include <QtCore/QScopeGuard>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// The module passes over a head that it cannot write, and wraps the file without; and it removes the file in
/// between, which write protection does not prevent.
void WriteCheckedHead(const CString& path)
{
    platform::FileSystem& files = platform::Files();
    const QByteArray former = platform::Files().ReadWhole(path);
    files.OpenForWriting(path);
    auto putBack = qScopeGuard([&] { files.PutBack(path, former); });
    CAutoQdDeConfigFacade::WriteHead(path);
    const auto wrapped = store::ParseWrapped(files.Read(path).value_or(QByteArray()));
    if (!wrapped || !store::HoldsHead(*wrapped))
        throw Refusal(u"文件头写不成，文件没有改动：%1"_s.arg(platform::ToNative(path)));
    putBack.dismiss();
}

} // namespace

CommandInfo WriteHeadCommand::Describe()
{
    CommandInfo info;
    info.name = u"write-head"_s;
    info.syntax = u"FILE"_s;
    info.summary = u"给规则文件写上文件头并封装"_s;
    info.description =
        u"在 FILE 的根元素上写明模式和清单、定额库，再把它变成封装文件。封装以后它不再是 XML，\n"
        "规则文件可以用 ktqdde unwrap 取回。"_s;
    info.minPositional = info.maxPositional = 1;
    return info;
}

WriteHeadCommand::WriteHeadCommand() : Command(Describe()) {}

void WriteHeadCommand::Run(const Arguments& arguments) const
{
    Session session(arguments);
    const CString path = ResolveRuleFile(arguments.Positional()[0]);
    const auto lock = LockRuleFiles(session.History(), {path});
    session.History().Keep(path);
    CheckRuleFile(path);
    WriteCheckedHead(path);
    WriteText(u"已写文件头并封装：%1\n"_s.arg(platform::ToNative(path)) + DescribeWrapped(ReadWrapped(path)));
}

} // namespace cli
