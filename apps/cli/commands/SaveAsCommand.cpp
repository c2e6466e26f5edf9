#include "cli/commands/SaveAsCommand.h"

#include "cli/commands/NamedTarget.h"
#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "platform/Paths.h"

using namespace Qt::StringLiterals;

namespace cli {

CommandInfo SaveAsCommand::Describe()
{
    CommandInfo info;
    info.name = u"save-as"_s;
    info.syntax = u"NAME [--force]"_s;
    info.summary = u"把当前配置另存为 NAME"_s;
    info.description = u"在规则文件夹中写出 NAME.xml。当前配置不变。"_s;
    info.minPositional = info.maxPositional = 1;
    info.options = {OverwriteOption()};
    return info;
}

SaveAsCommand::SaveAsCommand() : Command(Describe()) {}

void SaveAsCommand::Run(const Arguments& arguments) const
{
    NamedTarget target(arguments);
    const CString& path = target.Path();
    if (!target.Presenter().SaveAs(path))
        throw Refusal(
            u"另存没有成功：%1：%2"_s.arg(platform::ToNative(path), WhyNotCopied(CurrentFile(), path)));
    WriteText(u"已另存为：%1；当前配置仍是“%2”\n"_s.arg(platform::ToNative(path),
                                                        target.Presenter().GetCurConfig()));
}

} // namespace cli
