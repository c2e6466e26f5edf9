#include "cli/commands/BatchCommand.h"

#include "cli/batch/BatchRunner.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "platform/Files.h"

#include <iostream>
#include <string>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

void RunStandardInput(BatchRunner& runner)
{
    std::string line;
    while (std::getline(std::cin, line))
        runner.RunLine(QByteArray::fromStdString(line));
}

void RunFile(BatchRunner& runner, const QByteArray& content)
{
    for (const QByteArray& line : content.split('\n'))
        runner.RunLine(line);
}

QByteArray ReadScript(const QString& script)
{
    CString reason;
    const auto content = platform::Files().Read(ResolvePath(script), &reason);
    if (!content) throw Refusal(u"脚本读不了：%1：%2"_s.arg(script, reason));
    return *content;
}

} // namespace

CommandInfo BatchCommand::Describe()
{
    CommandInfo info;
    info.name = u"batch"_s;
    info.syntax = u"SCRIPT [--config FILE] [--spec NAME] [--keep-going]"_s;
    info.summary = u"按脚本成批增删改规则，每行一个操作"_s;
    info.description =
        u"SCRIPT 是 UTF-8 文本文件，“-”表示标准输入。每行一个 JSON 对象，就是一个操作，例如：\n"
        "  {\"op\":\"AddConfig\",\"path\":{\"category\":\"给排水\\\\管道\\\\给水管\"}}\n"
        "  {\"op\":\"Save\"}\n"
        "每个操作在标准输出上得到一行 JSON 回答。空行跳过。第一个没有做成的操作结束整个脚本，\n"
        "其后什么也不保存；--keep-going 则继续做下去。修改只在脚本写明 Save、SaveAs（以及换文件的 ReLoad、\n"
        "NewFile，它们先保存旧文件）的地方写入文件。各键和回答的写法见手册 docs/json.md。\n操作："_s +
        BatchOperationNames().join(u"、"_s);
    info.minPositional = info.maxPositional = 1;
    info.options = {{u"config"_s, u"FILE"_s, u"规则文件或配置名，不存在时新建；不写时为工程的当前配置"_s, {}},
                    {u"spec"_s, u"NAME"_s, u"只在这一次使用的专业"_s, {}},
                    {u"keep-going"_s, {}, u"没有做成的操作之后继续"_s, {}}};
    return info;
}

BatchCommand::BatchCommand() : Command(Describe()) {}

void BatchCommand::Run(const Arguments& arguments) const
{
    Session session(arguments);
    const QString script = arguments.Positional()[0];
    const bool fromInput = script == u"-";
    const QByteArray content = fromInput ? QByteArray() : ReadScript(script);
    const CString path = ChooseRuleFile(arguments.Value(u"config"_s));
    BatchFiles files(session, path);
    const auto presenter = files.Open(arguments.Has(u"config"_s));
    const RecordCompletion records(session.Host());
    BatchRunner runner(*presenter, files, records, arguments.Has(u"keep-going"_s));
    fromInput ? RunStandardInput(runner) : RunFile(runner, content);
    runner.Finish();
}

} // namespace cli
