#include "embedded/data/project/CurrentConfiguration.h"

#include "embedded/data/engine/Error.h"
#include "platform/Paths.h"
#include "xml/Dom.h"

#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

CurrentConfiguration::CurrentConfiguration(const CString& projectFile) : m_entry(projectFile) {}

CString CurrentConfiguration::Name() const
{
    return m_entry.Name();
}

bool CurrentConfiguration::Use(const CString& name) const
{
    return m_entry.Write(name);
}

CString CurrentConfiguration::NotWrittenText()
{
    return u"工程文件 SysRegedit.ini 不能写入，仍然使用原来的配置"_s;
}

void CurrentConfiguration::RequirePossible() const
{
    const CString name = Name();
    if (CanNameFile(name)) return;
    throw Error(u"%1：[%2] 中的 %3“%4”不能用作配置名，请改正"_s.arg(
        m_entry.NativeIni(), host::ConfigurationEntry::Section(), host::ConfigurationEntry::Key(), name));
}

CString CurrentConfiguration::CutNote() const
{
    const CString whole = m_entry.WholeName();
    if (whole.size() <= LongestName) return {};
    return u"%1：当前配置名“%2”超过 %3 个字符，只读得回前面的，打开的是“%4”；请给它改个短的名称"_s.arg(
        m_entry.NativeIni(), whole, CString::number(LongestName), Name());
}

bool CurrentConfiguration::IsPossibleName(const CString& name)
{
    return CanNameFile(name) && name.size() <= LongestName && name == name.trimmed();
}

bool CurrentConfiguration::CanNameFile(const CString& name)
{
    return !name.isEmpty() && xml::IsText(name) &&
           std::none_of(name.begin(), name.end(), [](QChar character) {
               return platform::IsForbiddenInFileNames(character) ||
                      character.category() == QChar::Other_Control;
           });
}

CString CurrentConfiguration::DefaultName()
{
    return host::ConfigurationEntry::DefaultName();
}

} // namespace embedded
