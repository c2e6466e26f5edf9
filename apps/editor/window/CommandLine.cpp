#include "editor/window/CommandLine.h"

#include <QtCore/QCommandLineParser>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

void AddOptions(QCommandLineParser& parser)
{
    parser.addOptions({{{u"h"_s, u"help"_s}, {}},
                       {u"version"_s, {}},
                       {u"sample"_s, {}},
                       {u"wizard"_s, {}, u"CONFIG"_s},
                       {u"note"_s, {}, u"TEXT"_s},
                       {u"no-back"_s, {}}});
}

void CheckWords(const QCommandLineParser& parser, bool parsed)
{
    if (!parser.unknownOptionNames().isEmpty())
        throw UsageError(u"没有选项“%1”"_s.arg(parser.unknownOptionNames().first()));
    if (!parsed) throw UsageError(u"选项后面缺少值，或不该有值"_s);
    if (parser.positionalArguments().size() > 1)
        throw UsageError(u"多余的参数：%1"_s.arg(parser.positionalArguments()[1]));
    if (!parser.isSet(u"wizard"_s) && (parser.isSet(u"note"_s) || parser.isSet(u"no-back"_s)))
        throw UsageError(u"--note 和 --no-back 只与 --wizard 一起使用"_s);
}

} // namespace

UsageError::UsageError(const QString& message) : std::runtime_error(message.toStdString()) {}

UsageError::~UsageError() = default;

CommandLine CommandLine::Parse(const QStringList& words)
{
    QCommandLineParser parser;
    AddOptions(parser);
    const bool parsed = parser.parse(QStringList{u"ktqdde-editor"_s} + words);
    CheckWords(parser, parsed);
    CommandLine line;
    line.help = parser.isSet(u"help"_s);
    line.version = parser.isSet(u"version"_s);
    line.sample = parser.isSet(u"sample"_s);
    line.project = parser.positionalArguments().value(0);
    if (parser.isSet(u"wizard"_s)) line.wizard = parser.value(u"wizard"_s);
    line.note = parser.value(u"note"_s);
    line.allowBack = !parser.isSet(u"no-back"_s);
    return line;
}

QString CommandLine::HelpText()
{
    return u"用法：ktqdde-editor [PROJECT] [--sample] [--wizard CONFIG [--note TEXT] [--no-back]]\n"
           "\n"
           "维护构件自动套清单、定额的规则。\n"
           "\n"
           "PROJECT 是工程文件夹；不写时打开上一次的工程，没有时显示开始页。\n"
           "\n"
           "选项：\n"
           "  --sample         打开示例工程；PROJECT 或（不写时）用户数据文件夹中还没有时建立它\n"
           "  --wizard CONFIG  只运行向导。CONFIG 是规则文件，或规则文件夹中的配置名\n"
           "  --note TEXT      向导的说明\n"
           "  --no-back        向导不能回到上一步\n"
           "  -h, --help       显示说明\n"
           "  --version        显示版本\n"
           "\n"
           "向导结束时在标准输出写出结果：1 下一步，-1 上一步，0 取消。\n"
           "退出状态：0 正常结束或下一步，1 失败（原因见标准错误），2 用法不对，3 向导以上一步结束，\n"
           "4 向导以取消结束。\n"
           "环境变量 KTQDDE_EDITOR_SETTINGS 指定保存最近的工程等设置的文件。\n"_s;
}

} // namespace editor
