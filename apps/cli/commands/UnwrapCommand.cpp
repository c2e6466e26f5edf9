#include "cli/commands/UnwrapCommand.h"

#include "cli/printing/Output.h"
#include "cli/printing/WrappedText.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Overwriting.h"
#include "cli/reading/RuleFiles.h"
#include "platform/Files.h"
#include "platform/Paths.h"

using namespace Qt::StringLiterals;

namespace cli {

CommandInfo UnwrapCommand::Describe()
{
    CommandInfo info;
    info.name = u"unwrap"_s;
    info.syntax = u"FILE -o OUT [--force]"_s;
    info.summary = u"从封装文件中取回规则文件"_s;
    info.description =
        u"显示封装文件 FILE 的各项，并把其中的规则文件逐字节写到 OUT。不完整的文件和别的文件一概不收。"_s;
    info.minPositional = info.maxPositional = 1;
    info.options = {{u"output"_s, u"OUT"_s, u"写到这个文件"_s, u'o'},
                    {u"force"_s, {}, u"覆盖已有的 OUT"_s, {}}};
    info.needsProject = false;
    return info;
}

UnwrapCommand::UnwrapCommand() : Command(Describe()) {}

void UnwrapCommand::Run(const Arguments& arguments) const
{
    if (!arguments.Has(u"output"_s)) throw UsageError(u"缺少 -o OUT"_s);
    const CString target = ResolvePath(arguments.Value(u"output"_s));
    const store::WrappedFile file = ReadWrapped(ResolvePath(arguments.Positional()[0]));
    RefuseToOverwrite(arguments, target);
    if (platform::Files().KindOf(target) != platform::FileKind::Other) CheckReplaceable(target);
    const auto kept = KeepBeforeReplacing(arguments, target);
    platform::Files().WriteInPlace(target, file.content);
    WriteText(DescribeWrapped(file) + u"规则文件已写到：%1\n"_s.arg(platform::ToNative(target)));
}

} // namespace cli
