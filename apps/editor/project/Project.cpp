#include "editor/project/Project.h"

#include "editor/messages/Boxes.h"
#include "editor/steps/FileWait.h"
#include "embedded/data/catalogue/Library.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/host/LibraryChoice.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "embedded/data/project/ProjectFolder.h"
#include "host/RuleFilePlaces.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QDir>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

bool GoOnWithoutCopy(const embedded::Error& error)
{
    return AskYesNo(u"留不了历史副本：%1\n仍然继续"_s.arg(error.Message()));
}

} // namespace

Project::Project(const QString& nativeFolder)
    : m_folder(QDir::cleanPath(QDir(nativeFolder).absolutePath())), m_host(nativeFolder), m_windows(m_host)
{
    embedded::CurrentConfiguration(m_host.ProjectPath()).RequirePossible();
}

void Project::BecomeHost(QWidget* frame)
{
    m_windows.SetMainFrame(frame);
    m_installed.emplace(host::Install(Roles()));
    m_files.emplace(
        m_host.History(),
        [folder = embedded::ProjectFolder(m_folder)](const CString& path) { return folder.IsRuleFile(path); },
        &GoOnWithoutCopy,
        embedded::KeepingFiles::Others{
            [this] { return Spec(); },
            [this](const CString& path, const embedded::HistoryEntry& copy) { TellWrittenOver(path, copy); },
            &WaitInWindow});
}

host::Roles Project::Roles()
{
    host::Roles roles = m_host.Roles();
    roles.windows = &m_windows;
    return roles;
}

bool Project::KeepCopy(const CString& ruleFile)
{
    try {
        m_files->Keep(ruleFile);
        return true;
    } catch (const platform::FileError&) {
        return false;
    }
}

std::optional<embedded::RuleFileLock> Project::Lock(const CString& ruleFile)
{
    try {
        return embedded::RuleFileLock(m_host.History().Project(), {ruleFile}, WaitInWindow());
    } catch (const embedded::Occupied&) {
        throw;
    } catch (const embedded::Error&) {
        return std::nullopt;
    }
}

void Project::TellWrittenOver(const CString& ruleFile, const embedded::HistoryEntry& copy)
{
    ShowWarning(u"%1\n其间另一个程序也保存了专业“%2”的规则，文件里现在是刚保存的内容；"
                u"另一个程序保存的那一版留在历史副本中，编号 %3"_s.arg(platform::ToNative(ruleFile), Spec(),
                                                                       copy.id));
}

QString Project::Name() const
{
    return QDir(m_folder).dirName();
}

SQdDeInfo::EQdDeMode Project::Mode()
{
    return m_host.Roles().project->GetQdDeMode();
}

CString Project::Spec()
{
    return m_host.Roles().project->GetCurrentSpec();
}

CStringArray Project::Specs()
{
    CStringArray names;
    m_host.Roles().categories->GetAllSpecNames(names);
    return names;
}

qint64 Project::CountCategories(const CStringArray& specs)
{
    host::ICategories& categories = *m_host.Roles().categories;
    qint64 count = 0;
    for (const CString& spec : specs) {
        SNvKtSpecId specId;
        CArray<SNvKtBigCategoryId> bigIds;
        categories.SpecNameToId(spec, specId);
        categories.GetAllBigCategoryIdsBySpec(specId, bigIds);
        for (const SNvKtBigCategoryId& bigId : bigIds) {
            CArray<SNvKtSmallCategoryId> smallIds;
            categories.GetAllSmallCategoryIdsByBigCategory(bigId, smallIds);
            count += smallIds.size();
        }
    }
    return count;
}

embedded::LibraryRole Project::QuotaRole()
{
    return embedded::QuotaRole(Mode());
}

CArray<embedded::LibraryName> Project::Libraries(embedded::LibraryRole role) const
{
    return m_host.LibrariesOf(role);
}

CString Project::LibraryInUse(embedded::LibraryRole role) const
{
    return m_host.LibraryInUse(role);
}

CString Project::GuideHint()
{
    const embedded::LibraryRole role = QuotaRole();
    const CString code = LibraryInUse(role);
    for (const embedded::LibraryName& quota : Libraries(role)) {
        if (quota.code == code)
            return embedded::GuideHint(role, quota, LibraryInUse(embedded::LibraryRole::Bill));
    }
    return {};
}

CString Project::BillLibrary()
{
    return m_host.Roles().libraries->GetQdFileName();
}

CString Project::QuotaLibrary()
{
    host::ILibraries& libraries = *m_host.Roles().libraries;
    return Mode() == SQdDeInfo::BillMode ? libraries.GetQdDeFileName() : libraries.GetDeFileName();
}

CString Project::RuleFolder() const
{
    return m_host.RuleFolder();
}

// Not asked of a presenter: making one already opens the file, or makes it.
CString Project::CurrentRuleFile() const
{
    const embedded::CurrentConfiguration current(m_host.ProjectPath());
    current.RequirePossible();
    const CString name = current.Name();
    return host::RuleFileIn(RuleFolder(), name);
}

CStringArray Project::RuleFiles() const
{
    const CString current = CurrentRuleFile();
    CStringArray names = platform::Files().FindFiles(RuleFolder(), u".xml"_s);
    names.removeAll(platform::FileNameOf(current));
    names.sort();
    CStringArray paths{current};
    for (const CString& name : names)
        paths.append(RuleFolder() + u'\\' + name);
    return paths;
}

} // namespace editor
