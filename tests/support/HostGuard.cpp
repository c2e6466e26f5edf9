#include "support/HostGuard.h"

#include "support/StandardCatalogue.h"

using namespace Qt::StringLiterals;

namespace test {

HostGuard::HostGuard()
{
    FillStandardCatalogue(m_host);
    m_host.SetAppFolder(m_folder.MakeFolder(u"app"_s));
    m_host.SetProjectPath(m_folder.MakeFolder(u"project"_s) + u"\\工程.prj"_s);
    Reinstall();
}

CString HostGuard::AppFolder() const
{
    return m_folder.Path(u"app"_s);
}

CString HostGuard::ProjectFolder() const
{
    return m_folder.Path(u"project"_s);
}

void HostGuard::Reinstall()
{
    // The former installation must end first, or it would give back its own predecessor over the new one.
    m_installed.reset();
    m_installed = std::make_unique<host::Installation>(host::Install(m_host.Roles()));
}

} // namespace test
