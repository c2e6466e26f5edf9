#include "editor/session/DraftFile.h"

#include "editor/project/Project.h"
#include "embedded/data/project/Look.h"
#include "host/NvKtDataMng.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "presenter/CQdDeConfigPresenter.h"
#include "rules/document/RuleWriter.h"
#include "rules/model/Snapshot.h"
#include "shared/RuleFileState.h"
#include "store/RuleFile.h"

#include <QtCore/QTemporaryDir>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

QByteArray ReadOrRaise(const CString& path)
{
    CString reason;
    const auto bytes = platform::Files().Read(path, &reason);
    if (!bytes) throw platform::FileError(path, reason);
    return *bytes;
}

/// What the module makes of a rule file that is missing.
QByteArray NewBytes()
{
    const QTemporaryDir folder;
    const CString path = platform::FromNative(folder.path()) + u"\\new.xml"_s;
    const CQdDeConfigPresenter made(path); // writes it
    return ReadOrRaise(path);
}

/// The bytes of a rule file that can be worked on, or that is missing. Read as a whole, while no other
/// program writes it; nobody is kept away afterwards, for a save asks again what the file holds.
QByteArray BytesToWorkOn(Project& project, const CString& path)
{
    const auto lock = project.Lock(path);
    const embedded::Look look;
    const shared::RuleFileState state = shared::ExamineRuleFile(path);
    if (state.kind == shared::RuleFileKind::Missing) return NewBytes();
    if (!state.IsSafe()) throw std::runtime_error(state.Describe().toStdString());
    return ReadOrRaise(path);
}

rules::ConfigurationPtr ReadOrRaise(const QByteArray& bytes, const CString& path)
{
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRules(bytes, reason);
    if (!read) throw platform::FileError(path, reason);
    return read;
}

} // namespace

DraftFile::DraftFile(Project& project, CString path) : DraftFile(project, path, BytesToWorkOn(project, path))
{
}

DraftFile::DraftFile(Project& project, CString path, const QByteArray& begunOn)
    : m_project(project), m_path(std::move(path))
{
    Take(begunOn);
}

CString DraftFile::Name() const
{
    return platform::BeforeLastStop(platform::FileNameOf(m_path));
}

void DraftFile::Take(const QByteArray& bytes)
{
    rules::FileStructure structure;
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRules(bytes, reason, &structure);
    if (!read) throw platform::FileError(m_path, reason);
    m_bytes = bytes;
    m_rules = std::move(read);
    m_structure = std::move(structure);
}

bool DraftFile::HasChangedOnDisk() const
{
    const embedded::Look look;
    return platform::Files().Exists(m_path) && platform::Files().Read(m_path) != m_bytes;
}

DraftFile::SaveEnd DraftFile::Save(const rules::Configuration& wanted, const AnswerConflicts& answer)
{
    // Held from the reading to the writing, whatever events a question handles in between.
    const auto held = m_project.HoldFiles();
    const auto lock = m_project.Lock(m_path);
    if (!platform::Files().Exists(m_path)) {
        Write(rules::WriteRules(m_bytes, wanted));
        return SaveEnd::Saved;
    }
    if (!m_project.KeepCopy(m_path)) return SaveEnd::Cancelled;
    const QByteArray now = ReadOrRaise(m_path);
    if (now == m_bytes) {
        Write(rules::WriteRules(m_bytes, wanted));
        return SaveEnd::Saved;
    }
    const shared::RuleFileState state = shared::ExamineRuleFile(m_path);
    if (!state.IsSafe()) throw platform::FileError(m_path, state.Describe());
    const rules::Merge merge(*m_rules, wanted, *ReadOrRaise(now, m_path));
    std::vector<rules::Side> answers;
    if (!merge.Conflicts().empty()) {
        auto given = answer(merge.Conflicts());
        if (!given) return SaveEnd::Cancelled;
        answers = std::move(*given);
    }
    Write(rules::WriteRules(now, merge.Result(answers)));
    return SaveEnd::Merged;
}

/// As the module's save: the file in one go, then the version of the host on it.
void DraftFile::Write(const QByteArray& bytes)
{
    static_cast<void>(platform::Files().CreateFolder(platform::FolderOf(m_path)));
    platform::Files().Replace(m_path, bytes);
    Take(bytes); // what stands there from now on, whatever comes of the version
    NvKtXmlVertion::SetXmlVersion(store::VersionText(), m_path);
    if (const auto written = platform::Files().Read(m_path)) Take(*written);
}

} // namespace editor
