#include "editor/session/DraftFile.h"

#include "editor/project/Project.h"
#include "embedded/data/host/XmlTools.h"
#include "embedded/data/project/Look.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "presenter/CQdDeConfigPresenter.h"
#include "rules/document/RuleWriter.h"
#include "rules/model/Snapshot.h"
#include "shared/RuleFileState.h"
#include "store/RuleFile.h"
#include "xml/Dom.h"

#include <QtCore/QTemporaryDir>

#include <new>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// What the module makes of a rule file that is missing.
QByteArray NewBytes()
{
    const QTemporaryDir folder;
    const CString path = platform::FromNative(folder.path()) + u"\\new.xml"_s;
    const CQdDeConfigPresenter made(path); // writes it
    return platform::Files().ReadWhole(path);
}

rules::ConfigurationPtr RulesOf(const QByteArray& bytes, const CString& path)
{
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRules(bytes, reason);
    if (!read) throw platform::FileError(path, reason);
    return read;
}

/// The bytes of a rule file, and a document that has loaded them.
struct LoadedFile
{
    QByteArray bytes;
    xml::Document document;
    bool stood = true; ///< there was a file
};

/// A rule file that can be worked on, or what the module makes where there is none. Read as a whole, while no
/// other program writes it; nobody is kept away afterwards, for a save asks again what the file holds.
LoadedFile LoadToWorkOn(Project& project, const CString& path)
{
    const auto lock = project.Lock(path);
    const embedded::Look look;
    LoadedFile loaded{{}, xml::Document::Create(), platform::Files().Exists(path)};
    if (loaded.document.IsNull()) throw std::bad_alloc();
    CString reason;
    const auto bytes = loaded.stood ? platform::Files().Read(path, &reason) : NewBytes();
    shared::RuleFileState state{path, shared::RuleFileKind::Unreadable, {.text = reason}};
    if (bytes) {
        loaded.bytes = *bytes;
        loaded.document.LoadBytes(*bytes);
        state = shared::ExamineLoaded(path, *bytes, loaded.document);
    }
    if (!state.IsSafe()) throw std::runtime_error(state.Describe().toStdString());
    return loaded;
}

} // namespace

DraftFile::DraftFile(Project& project, CString path) : m_project(project), m_path(std::move(path))
{
    LoadedFile loaded = LoadToWorkOn(project, m_path);
    m_bytes = std::move(loaded.bytes);
    m_rules = std::make_unique<FileRules>(m_path, m_bytes);
    m_stood = loaded.stood;
}

DraftFile::DraftFile(Project& project, CString path, const CString& first)
    : m_project(project), m_path(std::move(path))
{
    LoadedFile loaded = LoadToWorkOn(project, m_path);
    m_bytes = std::move(loaded.bytes);
    m_rules = std::make_unique<FileRules>(m_bytes, loaded.document, first);
    m_stood = loaded.stood;
}

// A draft of a file that did not stand was begun on what the module makes.
DraftFile::DraftFile(Project& project, CString path, const QByteArray& begunOn)
    : m_project(project), m_path(std::move(path)), m_bytes(begunOn),
      m_rules(std::make_unique<FileRules>(m_path, begunOn)), m_stood(begunOn != NewBytes())
{
}

DraftFile::~DraftFile() = default;

CString DraftFile::Name() const
{
    return platform::BeforeLastStop(platform::FileNameOf(m_path));
}

bool DraftFile::HasChangedOnDisk() const
{
    const embedded::Look look;
    return platform::Files().Exists(m_path) && platform::Files().Read(m_path) != m_bytes;
}

DraftFile::SaveEnd DraftFile::Save(const rules::Configuration& wanted, const AnswerConflicts& answer,
                                   const AskWhetherAnew& mayWriteAnew)
{
    // Held from the reading to the writing, whatever events a question handles in between.
    const auto held = m_project.HoldFiles();
    const auto lock = m_project.Lock(m_path);
    platform::FileSystem& files = platform::Files();
    if (!files.Exists(m_path) && m_stood && !(mayWriteAnew && mayWriteAnew())) return SaveEnd::Cancelled;
    if (!files.Exists(m_path)) { // nor has it come back while somebody was asked
        Write(rules::WriteRules(m_bytes, wanted));
        return SaveEnd::Saved;
    }
    if (!m_project.KeepCopy(m_path)) return SaveEnd::Cancelled;
    const QByteArray now = platform::Files().ReadWhole(m_path);
    if (now == m_bytes) {
        Write(rules::WriteRules(m_bytes, wanted));
        return SaveEnd::Saved;
    }
    const shared::RuleFileState state = shared::ExamineRuleFile(m_path);
    if (!state.IsSafe()) throw platform::FileError(m_path, state.Describe());
    const rules::Merge merge(*Rules(), wanted, *RulesOf(now, m_path));
    std::vector<rules::Side> answers;
    if (!merge.Conflicts().empty()) {
        auto given = answer(merge.Conflicts());
        if (!given) return SaveEnd::Cancelled;
        answers = std::move(*given);
    }
    Write(rules::WriteRules(now, merge.Result(answers)));
    return SaveEnd::Merged;
}

/// The rules and the version of the host, in one go.
void DraftFile::Write(const QByteArray& rules)
{
    const QByteArray bytes = embedded::WithXmlVersion(rules, store::VersionText());
    auto read = std::make_unique<FileRules>(m_path, bytes); // whatever cannot be read again is not written
    static_cast<void>(platform::Files().CreateFolder(platform::FolderOf(m_path)));
    platform::Files().Replace(m_path, bytes);
    m_bytes = bytes;
    m_rules = std::move(read);
    m_stood = true;
}

} // namespace editor
