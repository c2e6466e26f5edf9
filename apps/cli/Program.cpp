#include "cli/Program.h"

#include "cli/MakeCommands.h"
#include "cli/printing/Output.h"
#include "cli/printing/TextTable.h"
#include "cli/reading/Failure.h"
#include "platform/Console.h"

#include <algorithm>
#include <exception>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

CArray<Option> CommonOptions()
{
    return {{u"project"_s, u"DIR"_s, u"工程文件夹；不写时取环境变量 KTQDDE_PROJECT"_s, {}},
            {u"help"_s, {}, u"显示说明"_s, u'h'}};
}

CString UsageLine(const CommandInfo& info)
{
    const CString project = info.needsProject ? u"[--project DIR] "_s : CString();
    return u"用法：ktqdde %1%2%3%4\n"_s.arg(project, info.name, info.syntax.isEmpty() ? u""_s : u" "_s,
                                            info.syntax);
}

CString GeneralUsageLine()
{
    return u"用法：ktqdde [--project DIR] 命令 [参数]\n"_s;
}

CString OptionLines(const CArray<Option>& options)
{
    TextTable table;
    for (const Option& option : options) {
        CString spelling = option.letter.isNull() ? CString() : CString(u'-') + option.letter + u", "_s;
        spelling += u"--"_s + option.name;
        if (!option.valueName.isEmpty()) spelling += u' ' + option.valueName;
        table.AddRow({spelling, option.help});
    }
    return table.ToText(2);
}

CString CommandHelp(const CommandInfo& info)
{
    return UsageLine(info) + u"\n%1\n\n%2\n\n选项：\n"_s.arg(info.summary, info.description) +
           OptionLines(info.options + CommonOptions());
}

CString GeneralHelp(const std::vector<std::unique_ptr<Command>>& commands)
{
    TextTable table;
    for (const auto& command : commands)
        table.AddRow({command->Info().name, command->Info().summary});
    return GeneralUsageLine() + u"\n维护构件自动套清单、定额的规则。\n\n命令：\n"_s + table.ToText(2) +
           u"\n选项：\n"_s +
           OptionLines(CommonOptions() + CArray<Option>{{u"version"_s, {}, u"显示版本"_s, {}}}) +
           u"\n“ktqdde 命令 --help”显示该命令的说明。退出状态：0 完成，1 被拒绝或失败（原因见标准错误），2 用法不对，\n3 与办公室里的版本冲突，没有发布，4 办公室连不上，等着发布。\n"_s;
}

/// The words before the verb hold options of the program; the verb is the first positional word.
qsizetype VerbIndex(const CStringArray& words)
{
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (!words[i].startsWith(u'-')) return i;
        if (words[i] == u"--project"_s) ++i;
    }
    return words.size();
}

void CheckCount(const CommandInfo& info, const Arguments& arguments)
{
    const qsizetype count = arguments.Positional().size();
    if (count < info.minPositional) throw UsageError(u"缺少参数"_s);
    if (count > info.maxPositional)
        throw UsageError(u"多余的参数：%1"_s.arg(arguments.Positional()[info.maxPositional]));
}

int RunCommand(const Command& command, const CStringArray& words)
{
    const CommandInfo& info = command.Info();
    try {
        const Arguments arguments(words, info.options + CommonOptions());
        if (arguments.Has(u"help"_s)) {
            WriteText(CommandHelp(info));
            return Done;
        }
        CheckCount(info, arguments);
        command.Run(arguments);
        return Done;
    } catch (const UsageError& error) {
        platform::WriteErr(u"ktqdde %1：%2\n"_s.arg(info.name, CString::fromUtf8(error.what())) +
                           UsageLine(info));
        return WrongUsage;
    } catch (const NobodyListens&) {
        return Refused;
    } catch (const Refusal& refusal) {
        platform::WriteErr(u"ktqdde %1：%2\n"_s.arg(info.name, CString::fromUtf8(refusal.what())));
        return refusal.Status();
    } catch (const std::exception& error) {
        platform::WriteErr(u"ktqdde %1：%2\n"_s.arg(info.name, CString::fromUtf8(error.what())));
        return Refused;
    }
}

int RunWithoutVerb(const CStringArray& words, const std::vector<std::unique_ptr<Command>>& commands)
{
    const Arguments arguments(words, CommonOptions() + CArray<Option>{{u"version"_s, {}, {}, {}}});
    if (arguments.Has(u"help"_s)) {
        WriteText(GeneralHelp(commands));
    } else if (arguments.Has(u"version"_s)) {
        WriteText(u"ktqdde " KTQDDE_VERSION "\n"_s);
    } else {
        throw UsageError(u"缺少命令"_s);
    }
    return Done;
}

int RunWords(const CStringArray& words)
{
    const auto commands = MakeCommands();
    const qsizetype verb = VerbIndex(words);
    const CStringArray before = words.first(verb);
    if (verb == words.size() || before.contains(u"--help"_s) || before.contains(u"-h"_s) ||
        before.contains(u"--version"_s))
        return RunWithoutVerb(before, commands);
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const auto& command) { return command->Info().name == words[verb]; });
    if (found == commands.end())
        throw UsageError(u"没有命令“%1”，全部命令见 ktqdde --help"_s.arg(words[verb]));
    return RunCommand(**found, before + words.mid(verb + 1));
}

} // namespace

int RunProgram(const CStringArray& words) noexcept
{
    try {
        return RunWords(words);
    } catch (const UsageError& error) {
        platform::WriteErr(u"ktqdde：%1\n"_s.arg(CString::fromUtf8(error.what())) + GeneralUsageLine());
        return WrongUsage;
    } catch (const NobodyListens&) {
        return Refused;
    } catch (const std::exception& error) {
        platform::WriteErr(u"ktqdde：%1\n"_s.arg(CString::fromUtf8(error.what())));
        return Refused;
    }
}

} // namespace cli
