#include "cli/NewCommand.h"

#include "cli/Failure.h"
#include "cli/Output.h"
#include "cli/RuleFiles.h"
#include "cli/Session.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "presenter/CQdDeConfigPresenter.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

CommandInfo Describe()
{
    CommandInfo info;
    info.name = u"new"_s;
    info.syntax = u"NAME [--force]"_s;
    info.summary = u"按模板新建配置，并设为当前配置"_s;
    info.description =
        u"把应用文件夹的模板 QdDeConfig.def 复制为规则文件夹中的 NAME.xml。原来的当前配置先保存。"_s;
    info.minPositional = info.maxPositional = 1;
    info.options = {{u"force"_s, {}, u"覆盖已有的同名配置"_s, {}}};
    return info;
}

} // namespace

NewCommand::NewCommand() : Command(Describe()) {}

void NewCommand::Run(const Arguments& arguments) const
{
    const Session session(arguments);
    const CString name = arguments.Positional()[0];
    const CString path = ConfigurationPath(name);
    if (platform::Files().Exists(path) && !arguments.Has(u"force"_s))
        throw Refusal(u"配置“%1”已经存在，覆盖请加 --force"_s.arg(name));
    CheckedCurrentFile();
    CQdDeConfigPresenter presenter({});
    if (!presenter.NewFile(path)) {
        CheckRuleFile(path);
        throw Refusal(u"新建没有成功：%1"_s.arg(platform::ToNative(path)));
    }
    WriteText(u"已新建配置“%1”并设为当前配置：%2\n"_s.arg(name, platform::ToNative(path)));
}

} // namespace cli
