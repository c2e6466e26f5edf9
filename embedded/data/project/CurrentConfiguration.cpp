#include "embedded/data/project/CurrentConfiguration.h"

#include "embedded/data/engine/Error.h"
#include "host/ProjectIni.h"
#include "platform/Paths.h"
#include "platform/ProfileFile.h"
#include "xml/Dom.h"

#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString Section = u"QdDeConfigInfo"_s;
const CString Key = u"ConfigName"_s;

} // namespace

CurrentConfiguration::CurrentConfiguration(const CString& projectFile) : m_ini(host::ProjectIni(projectFile))
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

void CurrentConfiguration::RequirePossible() const
{
    const CString name = Name();
    if (IsPossibleName(name)) return;
    throw Error(
        u"%1：[%2] 中的 %3“%4”不能用作配置名，请改正"_s.arg(platform::ToNative(m_ini), Section, Key, name));
}

bool CurrentConfiguration::IsPossibleName(const CString& name)
{
    static const CString Forbidden = u"/\\:*?\"<>|"_s;
    return !name.isEmpty() && name.size() <= LongestName && name == name.trimmed() && xml::IsText(name) &&
           std::none_of(name.begin(), name.end(), [](QChar character) {
               return Forbidden.contains(character) || character.category() == QChar::Other_Control;
           });
}

CString CurrentConfiguration::DefaultName()
{
    return u"DefaultConfig"_s;
}

} // namespace embedded
