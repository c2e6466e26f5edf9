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

/// More than a file system lets a name have.
constexpr int LongestStored = 4096;

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
    if (CanNameFile(name)) return;
    throw Error(
        u"%1：[%2] 中的 %3“%4”不能用作配置名，请改正"_s.arg(platform::ToNative(m_ini), Section, Key, name));
}

CString CurrentConfiguration::CutNote() const
{
    const CString whole = platform::ProfileFile(m_ini).Read(Section, Key, {}, LongestStored);
    if (whole.size() <= LongestName) return {};
    return u"%1：当前配置名“%2”超过 %3 个字符，只读得回前面的，打开的是“%4”；请给它改个短的名称"_s.arg(
        platform::ToNative(m_ini), whole, CString::number(LongestName), Name());
}

bool CurrentConfiguration::IsPossibleName(const CString& name)
{
    return CanNameFile(name) && name.size() <= LongestName && name == name.trimmed();
}

bool CurrentConfiguration::CanNameFile(const CString& name)
{
    static const CString Forbidden = u"/\\:*?\"<>|"_s;
    return !name.isEmpty() && xml::IsText(name) &&
           std::none_of(name.begin(), name.end(), [](QChar character) {
               return Forbidden.contains(character) || character.category() == QChar::Other_Control;
           });
}

CString CurrentConfiguration::DefaultName()
{
    return u"DefaultConfig"_s;
}

} // namespace embedded
