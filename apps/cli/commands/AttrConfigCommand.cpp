#include "cli/commands/AttrConfigCommand.h"

#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Session.h"
#include "host/NvKtProfile.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "presenter/CAutoQdDeConfigFacade.h"
#include "xml/Dom.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

void CheckReadable(const CString& path)
{
    const xml::Document document = xml::Document::Create();
    if (!document.Load(path))
        throw Refusal(u"文件读不了：%1：%2"_s.arg(platform::ToNative(path), document.Reason().ToString()));
}

} // namespace

CommandInfo AttrConfigCommand::Describe()
{
    CommandInfo info;
    info.name = u"attr-config"_s;
    info.summary = u"重建属性配置文件 AttrConfig.xml"_s;
    info.description = u"按程序的属性列表和 AttributeInformation.xml 重建应用文件夹中的属性配置文件。"_s;
    return info;
}

AttrConfigCommand::AttrConfigCommand() : Command(Describe()) {}

void AttrConfigCommand::Run(const Arguments& arguments) const
{
    const Session session(arguments);
    const CString folder = NvKtProfile::GetAppProfile().GetAppFolder();
    const CString path = folder + u"\\AttrConfig.xml"_s;
    // The module would replace a broken attribute file and say nothing about either.
    CheckReadable(folder + u"\\AttributeInformation.xml"_s);
    if (platform::Files().Exists(path)) CheckReadable(path);
    CAutoQdDeConfigFacade::AttrConfig();
    CheckReadable(path);
    WriteText(u"已重建：%1\n"_s.arg(platform::ToNative(path)));
}

} // namespace cli
