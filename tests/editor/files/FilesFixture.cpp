#include "editor/files/FilesFixture.h"

#include "embedded/NewProject.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "store/WrappedFile.h"
#include "support/Patience.h"

#include <QtCore/QDir>

using namespace Qt::StringLiterals;

namespace test {

ProjectWithFiles::ProjectWithFiles()
{
    PutNewProject(m_folder.Native(u"工程"_s), {SQdDeInfo::BillMode, u"给排水"_s});
    m_folder.MakeFolder(u"工程\\app\\自动套配置"_s);
    Write(u"甲"_s, Rules("a"));
    Write(u"乙"_s, Rules("b"));
    Write(u"封装"_s, Wrapped(Rules("a")));
    embedded::CurrentConfiguration(Project().ProjectFile()).Use(u"甲"_s);
}

embedded::ProjectFolder ProjectWithFiles::Project() const
{
    return embedded::ProjectFolder(m_folder.Native(u"工程"_s));
}

CString ProjectWithFiles::Name(const CString& name)
{
    return u"工程\\app\\自动套配置\\"_s + name + u".xml"_s;
}

CString ProjectWithFiles::Path(const CString& name) const
{
    return m_folder.Path(Name(name));
}

void ProjectWithFiles::Write(const CString& name, const QByteArray& bytes) const
{
    m_folder.WriteFile(Name(name), bytes);
}

CString ProjectWithFiles::Current() const
{
    return embedded::CurrentConfiguration(Project().ProjectFile()).Name();
}

CStringArray ProjectWithFiles::Names() const
{
    CStringArray names = platform::Files().FindFiles(Project().RuleFolder(), u".xml"_s);
    names.sort();
    return names;
}

CStringArray ProjectWithFiles::Remains() const
{
    CStringArray names = QDir(m_folder.Native(u"工程\\app\\自动套配置"_s))
                             .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    names.removeIf([](const CString& name) { return name.endsWith(u".xml"); });
    return names;
}

QList<QByteArray> ProjectWithFiles::Kept(const CString& name) const
{
    QList<QByteArray> contents;
    for (const embedded::HistoryEntry& entry : History().List(Path(name)))
        contents.append(History().Read(entry));
    return contents;
}

QByteArray ProjectWithFiles::Rules(const QByteArray& comment)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" +
           u"<自动套清单定额配置信息 Version=\"1.0.0\">\n\t<!-- "_s.toUtf8() + comment +
           u" -->\n</自动套清单定额配置信息>\n"_s.toUtf8();
}

QByteArray ProjectWithFiles::Wrapped(const QByteArray& rules)
{
    QByteArray bytes;
    for (const QByteArray& field :
         store::ComposeFields({u"5"_s, u"1.0.0"_s, u"清单模式"_s, u"清单"_s, u"定额"_s, rules}))
        bytes += field;
    return bytes;
}

ProjectHolder::ProjectHolder(const embedded::ProjectFolder& project, const CString& ruleFile)
{
    QStringList arguments{platform::ToNative(project.Path())};
    if (!ruleFile.isEmpty()) arguments.append(ruleFile);
    m_process.start(QStringLiteral(KTQDDE_PROJECT_HOLDER), arguments);
    QByteArray said;
    WaitFor(u"the other program"_s, [&] {
        m_process.waitForReadyRead(10);
        said += m_process.readAllStandardOutput();
        return said.startsWith("open");
    });
}

ProjectHolder::~ProjectHolder()
{
    Kill();
}

void ProjectHolder::End()
{
    m_process.closeWriteChannel();
    WaitForEnd(m_process);
}

void ProjectHolder::Kill()
{
    test::Kill(m_process);
}

} // namespace test
