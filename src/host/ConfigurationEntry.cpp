#include "host/ConfigurationEntry.h"

#include "host/ProjectIni.h"
#include "platform/Paths.h"
#include "platform/ProfileFile.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

/// More than a file system lets a name have.
constexpr int LongestStored = 4096;

} // namespace

ConfigurationEntry::ConfigurationEntry(const CString& projectFile) : m_ini(ProjectIni(projectFile)) {}

CString ConfigurationEntry::Name() const
{
    // Read counts the end of a text along.
    const CString name = platform::ProfileFile(m_ini).Read(Section(), Key(), {}, LongestName + 1);
    return name.isEmpty() ? DefaultName() : name;
}

CString ConfigurationEntry::WholeName() const
{
    return platform::ProfileFile(m_ini).Read(Section(), Key(), {}, LongestStored);
}

bool ConfigurationEntry::Write(const CString& name) const
{
    return platform::ProfileFile(m_ini).Write(Section(), Key(), name);
}

QString ConfigurationEntry::NativeIni() const
{
    return platform::ToNative(m_ini);
}

CString ConfigurationEntry::Section()
{
    return u"QdDeConfigInfo"_s;
}

CString ConfigurationEntry::Key()
{
    return u"ConfigName"_s;
}

CString ConfigurationEntry::DefaultName()
{
    return u"DefaultConfig"_s;
}

} // namespace host
