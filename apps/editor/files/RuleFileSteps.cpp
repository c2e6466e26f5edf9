#include "editor/files/RuleFileSteps.h"

#include "embedded/data/project/CurrentConfiguration.h"
#include "embedded/data/project/Look.h"
#include "embedded/windows/TemplateTransfer.h"
#include "host/RuleFilePlaces.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/ReplacedFile.h"
#include "shared/RuleFileState.h"
#include "store/WrappedFile.h"

#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

using embedded::CurrentConfiguration;
using embedded::Error;

const CString Ending = u".xml"_s;

CString Named(const CString& path)
{
    return platform::BeforeLastStop(platform::FileNameOf(path));
}

void RequireKind(const shared::RuleFileState& state, bool allowed)
{
    if (!allowed) throw Error(u"%1：%2"_s.arg(platform::ToNative(state.path), state.Describe()));
}

} // namespace

RuleFileSteps::RuleFileSteps(embedded::ProjectFolder project, Wait wait)
    : m_project(std::move(project)), m_history(m_project), m_wait(std::move(wait))
{
}

CString RuleFileSteps::Template() const
{
    return m_project.TemplateFile();
}

CString RuleFileSteps::PathOf(const CString& name) const
{
    return host::RuleFileIn(m_project.RuleFolder(), name);
}

bool RuleFileSteps::IsCurrent(const CString& path) const
{
    return path == PathOf(CurrentConfiguration(m_project.ProjectFile()).Name());
}

CString RuleFileSteps::NameFault(const CString& name, const CString& renamed) const
{
    CString fault = embedded::TemplateNameFault(name);
    if (!fault.isEmpty()) return fault;
    if (!CurrentConfiguration::IsPossibleName(name)) return u"名称中有不能使用的字符"_s;
    if (!renamed.isEmpty() && name == Named(renamed)) return u"请输入另一个名称"_s;
    // In any letter case: elsewhere the two names are one.
    for (const CString& file : platform::Files().FindFiles(m_project.RuleFolder(), Ending)) {
        if (file.compare(name + Ending, Qt::CaseInsensitive) != 0) continue;
        if (file != platform::FileNameOf(renamed)) return u"已经有叫“%1”的规则文件"_s.arg(name);
    }
    // A folder or anything else that is no rule file may bear the name, too.
    return renamed.isEmpty() && platform::Files().Exists(PathOf(name)) ? u"这个名称已经被占用"_s : CString();
}

CString RuleFileSteps::FreeName(const CString& name) const
{
    CString free = name;
    for (int number = 2; !NameFault(free).isEmpty() && embedded::TemplateNameFault(free).isEmpty(); ++number)
        free = name + u" (%1)"_s.arg(number);
    return free;
}

embedded::RuleFileLock RuleFileSteps::Lock(const CStringArray& paths) const
{
    return embedded::RuleFileLock(m_project, paths, m_wait ? m_wait() : embedded::RuleFileLock::GoOn());
}

void RuleFileSteps::RequireName(const CString& name, const CString& renamed) const
{
    const CString fault = NameFault(name, renamed);
    if (!fault.isEmpty()) throw Error(fault);
}

void RuleFileSteps::RequireOutside(const CString& path) const
{
    if (m_project.RuleFolder() == platform::FolderOf(path))
        throw Error(u"%1：已经在这个工程中"_s.arg(platform::ToNative(path)));
}

void RuleFileSteps::RequireReadable(const CString& path) const
{
    const shared::RuleFileState state = shared::ExamineRuleFile(path);
    RequireKind(state, state.kind == shared::RuleFileKind::Rules);
    if (path != PathOf(state.Name()))
        throw Error(u"%1：不在规则文件夹中，不能设为当前配置"_s.arg(platform::ToNative(path)));
    if (!CurrentConfiguration::IsPossibleName(state.Name()))
        throw Error(u"“%1”不能用作配置名，请先重命名"_s.arg(state.Name()));
}

void RuleFileSteps::Use(const CString& path) const
{
    if (!CurrentConfiguration(m_project.ProjectFile()).Use(Named(path)))
        throw Error(u"%1：写不进去，当前配置没有变"_s.arg(platform::ToNative(m_project.ProfileFile())));
}

void RuleFileSteps::MakeCurrent(const CString& path)
{
    const auto lock = Lock({path});
    RequireReadable(path);
    Use(path);
}

/// Nobody sees the file before all of it is on the disk.
CString RuleFileSteps::WriteNew(const CString& name, const QByteArray& bytes) const
{
    platform::FileSystem& files = platform::Files();
    embedded::EnsureFolder(m_project.RuleFolder());
    CString path = PathOf(name);
    const auto lock = Lock({path});
    RequireName(name);
    const CString part = platform::PartBeside(m_project.RuleFolder() + u"\\~"_s);
    files.WriteInPlace(part, bytes);
    if (files.Rename(part, path)) return path;
    files.Remove(part);
    RequireName(name);
    throw Error(u"%1：建立不了"_s.arg(platform::ToNative(path)));
}

CString RuleFileSteps::Make(const CString& source, const CString& name)
{
    RequireName(name);
    const QByteArray bytes = embedded::ReadToLook(source);
    const shared::RuleFileState state = shared::ExamineRuleBytes(source, bytes);
    RequireKind(state, state.kind == shared::RuleFileKind::Rules);
    return WriteNew(name, bytes);
}

CString RuleFileSteps::Duplicate(const CString& path, const CString& name)
{
    RequireName(name);
    return WriteNew(name, embedded::ReadToLook(path));
}

CString RuleFileSteps::TakeIn(const CString& source, const CString& name)
{
    RequireOutside(source);
    RequireName(name);
    const QByteArray bytes = embedded::ReadToLook(source);
    const shared::RuleFileState state = shared::ExamineRuleBytes(source, bytes);
    RequireKind(state, state.kind == shared::RuleFileKind::Rules ||
                           state.kind == shared::RuleFileKind::Repeated ||
                           state.kind == shared::RuleFileKind::Wrapped);
    return WriteNew(name, bytes);
}

CString RuleFileSteps::Restore(const QByteArray& bytes, const CString& name)
{
    RequireName(name);
    const shared::RuleFileState state = shared::ExamineRuleBytes(PathOf(name), bytes);
    RequireKind(state, state.kind == shared::RuleFileKind::Rules);
    return WriteNew(name, bytes);
}

void RuleFileSteps::Keep(const CString& path)
{
    const embedded::Look look;
    if (!m_history.KeepInAnyCase(path)) throw Error(u"%1：文件已经不在"_s.arg(platform::ToNative(path)));
}

CString RuleFileSteps::Rename(const CString& path, const CString& name)
{
    CString target = PathOf(name);
    const auto lock = Lock({path, target});
    RequireName(name, path);
    Keep(path);
    const bool isCurrent = IsCurrent(path);
    platform::FileSystem& files = platform::Files();
    if (!files.Rename(path, target))
        throw Error(u"%1：不能重命名为“%2”"_s.arg(platform::ToNative(path), name));
    try {
        m_history.Follow(path, target);
        if (isCurrent) Use(target);
    } catch (const std::exception&) {
        if (files.Rename(target, path)) throw;
        throw Error(u"%1：已经重命名，但没有做完，当前配置没有变"_s.arg(platform::ToNative(target)));
    }
    return target;
}

void RuleFileSteps::Delete(const CString& path, const CString& next)
{
    const auto lock = Lock(next.isEmpty() ? CStringArray{path} : CStringArray{path, next});
    const bool isCurrent = IsCurrent(path);
    if (isCurrent && (next.isEmpty() || next == path))
        throw Error(u"“%1”是当前配置，先指定另一个当前配置才能删除"_s.arg(Named(path)));
    if (isCurrent) RequireReadable(next);
    Keep(path);
    if (isCurrent) Use(next);
    if (platform::Files().Remove(path)) return;
    if (isCurrent) Use(path);
    throw Error(u"%1：删除不了"_s.arg(platform::ToNative(path)));
}

void RuleFileSteps::Unwrap(const CString& path)
{
    const auto lock = Lock({path});
    CString reason;
    const auto wrapped = store::ParseWrapped(embedded::ReadToLook(path), &reason);
    if (!wrapped) throw Error(u"%1：不是完整的封装文件：%2"_s.arg(platform::ToNative(path), reason));
    const shared::RuleFileState inside = shared::ExamineRuleBytes(path, wrapped->content);
    RequireKind(inside,
                inside.kind == shared::RuleFileKind::Rules || inside.kind == shared::RuleFileKind::Repeated);
    Keep(path);
    platform::Files().Replace(path, wrapped->content);
}

} // namespace editor
