#include "cli/commands/NewCommand.h"

#include "cli/commands/NamedTarget.h"
#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "host/NvKtDataMng.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "store/RuleFile.h"

#include <exception>
#include <optional>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// The module takes what stands at the path when the template could not be copied there. `taken` is what it
/// answered.
void CheckCopy(const CString& path, bool taken)
{
    platform::FileSystem& files = platform::Files();
    if (taken && files.Read(path) == files.Read(store::TemplatePath())) return;
    const CString failed = u"新建没有成功：%1"_s.arg(platform::ToNative(path));
    const CString reason = WhyNotCopied(store::TemplatePath(), path);
    if (!reason.isEmpty()) throw Refusal(failed + u'：' + reason);
    CheckRuleFile(path);
    throw Refusal(failed);
}

/// What stood at the path before the module made a file there.
class Former
{
public:
    explicit Former(const CString& path)
        : m_path(path), m_stood(platform::Files().Exists(path)), m_bytes(platform::Files().Read(path))
    {
    }

    void PutBack() const
    {
        if (m_bytes) platform::Files().PutBack(m_path, *m_bytes);
        if (!m_stood) platform::Files().Remove(m_path);
    }

private:
    CString m_path;
    bool m_stood;
    std::optional<QByteArray> m_bytes;
};

} // namespace

CommandInfo NewCommand::Describe()
{
    CommandInfo info;
    info.name = u"new"_s;
    info.syntax = u"NAME [--force]"_s;
    info.summary = u"按模板新建配置，并设为当前配置"_s;
    info.description =
        u"把应用文件夹的模板 QdDeConfig.def 复制为规则文件夹中的 NAME.xml。原来的当前配置先保存。"_s;
    info.minPositional = info.maxPositional = 1;
    info.options = {OverwriteOption()};
    return info;
}

NewCommand::NewCommand() : Command(Describe()) {}

void NewCommand::Run(const Arguments& arguments) const
{
    NamedTarget target(arguments);
    const CString& path = target.Path();
    const CString former = target.Presenter().GetCurConfig();
    const Former file(path);
    const bool taken = target.Presenter().NewFile(path);
    try {
        CheckCopy(path, taken);
        NoteOnCurrent(path);
    } catch (const std::exception&) {
        if (taken) embedded::CurrentConfiguration(NvKtDataMng::CProj().GetPrjPath()).Use(former);
        file.PutBack();
        throw;
    }
    WriteText(u"已新建配置“%1”并设为当前配置：%2\n"_s.arg(target.Presenter().GetCurConfig(),
                                                          platform::ToNative(path)));
}

} // namespace cli
