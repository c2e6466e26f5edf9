#include "embedded/data/project/CurrentConfiguration.h"

#include "platform/Paths.h"
#include "platform/ProfileFile.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString Section = u"QdDeConfigInfo"_s;
const CString Key = u"ConfigName"_s;

} // namespace

CurrentConfiguration::CurrentConfiguration(const CString& projectFile)
    : m_ini(platform::FolderOf(projectFile) + u"\\SysRegedit.ini"_s)
{
}

CString CurrentConfiguration::Name() const
{
    // Read counts the end of a text along.
    const CString name = platform::ProfileFile(m_ini).Read(Section, Key, {}, LongestName + 1);
    return name.isEmpty() ? DefaultName() : name;
}

bool CurrentConfiguration::Use(const CString& name) const
{
    return platform::ProfileFile(m_ini).Write(Section, Key, name);
}

CString CurrentConfiguration::DefaultName()
{
    return u"DefaultConfig"_s;
}

} // namespace embedded
