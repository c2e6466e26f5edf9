#include "StoreTesting.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "support/StrictXml.h"
#include "xml/Dom.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>

using namespace Qt::StringLiterals;

namespace test {

CString RuleFile(const CString& inner)
{
    return u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<自动套清单定额配置信息 Version=\"1.2.3\">"_s +
           inner + u"</自动套清单定额配置信息>\n"_s;
}

CString Plumbing(const CString& inner)
{
    return u"<给排水 id=\"1\" name=\"给排水\">"_s + inner + u"</给排水>"_s;
}

CString PlumbingRules(const CString& rules)
{
    return Plumbing(u"<LMember name='管道'><SMember name='给水管'><Config>"_s + rules +
                    u"</Config></SMember></LMember>"_s);
}

CPath RulePath(int configId)
{
    return CPath{1, 11, 111, configId, 0, 0, 0, 0};
}

std::vector<int> Ids(const std::vector<ConfigNode*>& rules)
{
    std::vector<int> ids;
    for (const ConfigNode* rule : rules)
        ids.push_back(rule->GetId());
    return ids;
}

ConditionNode Condition(const CString& value)
{
    return ConditionNode(u"A"_s, true, u"＝"_s, {}, {}, value, {}, {});
}

FileFixture::FileFixture() = default;

FileFixture::~FileFixture()
{
    const QString root = platform::ToNative(m_host.Folder().Root());
    QDirIterator files(root, {u"*.xml"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (m_broken.contains(path.mid(root.size() + 1).replace(u'/', u'\\'))) continue;
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_TRUE(IsStrictXml(file.readAll())) << path.toStdString();
    }
}

CString FileFixture::Put(const CString& name, const CString& text) const
{
    return m_host.Folder().WriteFile(name, text.toUtf8());
}

CString FileFixture::PutBroken(const CString& name, const QByteArray& bytes)
{
    MayBeBroken(name);
    return m_host.Folder().WriteFile(name, bytes);
}

CString FileFixture::Xml(const CString& name) const
{
    return CanonicalXml(Bytes(name));
}

CStringArray FileFixture::Specialties(const CString& name) const
{
    CStringArray result;
    for (const CString& line : Xml(name).split(u'\n'))
        if (line.startsWith(u" <"_s))
            result << line.mid(2).section(u' ', 0, 0) + u'/' +
                          line.section(u" name=\""_s, 1).section(u'"', 0, 0);
    return result;
}

VersionRecorder::VersionRecorder(MemoryHost& host)
    : m_host(host), m_installed(host::Install(RolesWith(host, this)))
{
}

host::Roles VersionRecorder::RolesWith(MemoryHost& host, host::IXmlTools* tools)
{
    host::Roles roles = host.Roles();
    roles.xml = tools;
    return roles;
}

bool VersionRecorder::SetXmlVersion(const CString& version, const CString& file)
{
    Calls.push_back({version, file, platform::RealFileSystem().Read(file).value_or(QByteArray())});
    return Result;
}

NoEngine::NoEngine()
{
    xml::SetEngineAvailable(false);
}

NoEngine::~NoEngine()
{
    xml::SetEngineAvailable(true);
}

CString NoEngineText()
{
    return u"无法创建DOMDocument对象，请检查是否安装了MS XML Parser 运行库!"_s;
}

} // namespace test
