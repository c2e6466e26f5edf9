#include "cli/reading/Session.h"

#include "cli/reading/Failure.h"
#include "cli/reading/Offices.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "host/NvKtDataMng.h"
#include "platform/Console.h"

#include <QtCore/QtGlobal>

using namespace Qt::StringLiterals;

namespace cli {

std::optional<QString> FindNamedProject(const Arguments& arguments)
{
    QString folder = arguments.Value(u"project"_s);
    if (folder.isEmpty()) folder = qEnvironmentVariable("KTQDDE_PROJECT");
    if (folder.isEmpty()) return std::nullopt;
    return folder;
}

QString NamedProject(const Arguments& arguments)
{
    const auto folder = FindNamedProject(arguments);
    if (!folder) throw UsageError(u"没有指明工程：用 --project DIR 或环境变量 KTQDDE_PROJECT"_s);
    return *folder;
}

Session::Session(const Arguments& arguments) : Session(NamedProject(arguments))
{
    const CString spec = arguments.Value(u"spec"_s);
    if (spec.isEmpty()) return;
    CStringArray names;
    NvKtDataMng::CAtt().GetAllSpecNames(names);
    if (!names.contains(spec)) throw Refusal(u"没有专业“%1”，现有专业：%2"_s.arg(spec, names.join(u"、"_s)));
    m_host.UseSpec(spec);
}

Session::Session(const QString& nativeFolder)
    : m_folder(nativeFolder), m_host(nativeFolder), m_installed(host::Install(m_host.Roles()))
{
    TellIfWithoutOffice(m_host);
    const CString note = embedded::CurrentConfiguration(m_host.ProjectPath()).CutNote();
    if (!note.isEmpty()) platform::WriteErr(note + u'\n');
}

CString Session::Spec() const
{
    return NvKtDataMng::CProj().GetCurrentSpec();
}

bool Session::IsBillMode() const
{
    return NvKtDataMng::CAtt().GetQdDeMode() == SQdDeInfo::BillMode;
}

} // namespace cli
