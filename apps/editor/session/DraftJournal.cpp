#include "editor/session/DraftJournal.h"

#include "editor/session/JournalSync.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/draft/EditLine.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLockFile>
#include <QtCore/QScopeGuard>
#include <QtCore/QUuid>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

const QString MarkName = u"open.lock"_s;
const QString BaseName = u"base.xml"_s;
const QString AboutName = u"about.json"_s;
const QString EditsName = u"edits.jsonl"_s;
const QString FileKey = u"ruleFile"_s;

/// The folder of all drafts of a project; both are native.
QString DraftsOf(const QString& projectFolder)
{
    return QDir(projectFolder).filePath(platform::ToNative(embedded::ProjectFolder::DraftsBelow()));
}

CString PathIn(const QString& folder, const QString& name)
{
    return platform::FromNative(QDir(folder).filePath(name));
}

/// Inside the project relative to it, so that a project may be moved.
QString StoredName(const QString& projectFolder, const CString& ruleFile)
{
    const QString native = platform::ToNative(ruleFile);
    const QString relative = QDir(projectFolder).relativeFilePath(native);
    return relative.startsWith(u"../"_s) ? native : relative;
}

/// The name under which the rule file of a draft is stored; empty where that cannot be read.
QString StoredNameIn(const QString& folder)
{
    const auto about = platform::Files().Read(PathIn(folder, AboutName));
    return about ? QJsonDocument::fromJson(*about).object().value(FileKey).toString() : QString();
}

QByteArray AboutText(const QString& projectFolder, const CString& ruleFile)
{
    return QJsonDocument(QJsonObject{{FileKey, StoredName(projectFolder, ruleFile)}}).toJson();
}

/// The path text of the rule file that is stored under a name; empty for what is none.
CString RuleFileOf(const QString& projectFolder, const QString& storedName)
{
    if (storedName.isEmpty()) return {};
    const QString native = QDir::cleanPath(QDir(projectFolder).absoluteFilePath(storedName));
    return platform::HasPathText(native) ? platform::FromNative(native) : CString();
}

/// Nothing for what is not whole.
std::optional<LostDraft> ReadDraft(const QString& folder, const CString& ruleFile)
{
    platform::FileSystem& files = platform::Files();
    const auto base = files.Read(PathIn(folder, BaseName));
    const auto lines = files.Read(PathIn(folder, EditsName));
    if (!base || !lines) return std::nullopt;
    LostDraft draft{folder, ruleFile, QFileInfo(QDir(folder).filePath(EditsName)).lastModified(), *base, {}};
    for (const QByteArray& line : lines->split('\n')) {
        auto edit = rules::EditOf(line);
        if (!edit) break; // what broke off in the middle, or the end
        draft.edits.push_back(std::move(*edit));
    }
    if (draft.edits.empty()) return std::nullopt;
    return draft;
}

QStringList DraftFolders(const QString& projectFolder)
{
    const QDir drafts(DraftsOf(projectFolder));
    QStringList folders;
    for (const QString& name : drafts.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        folders.append(drafts.filePath(name));
    return folders;
}

/// Whether the program that has made a draft still runs.
bool IsInUse(const QString& folder)
{
    QLockFile mark(QDir(folder).filePath(MarkName));
    mark.setStaleLockTime(0);
    return !mark.tryLock(0);
}

/// The drafts that were left behind of the rule files that `isWanted`, the latest first.
template <typename IsWanted>
std::vector<LostDraft> Find(const QString& projectFolder, IsWanted isWanted)
{
    std::vector<LostDraft> lost;
    for (const QString& folder : DraftFolders(projectFolder)) {
        const CString ruleFile = RuleFileOf(projectFolder, StoredNameIn(folder));
        if (ruleFile.isEmpty() || !isWanted(ruleFile)) continue;
        // Last, for asking takes the mark for a moment, in which a program that is about to begin a draft
        // would not get its own.
        if (IsInUse(folder)) continue;
        if (auto draft = ReadDraft(folder, ruleFile)) lost.push_back(std::move(*draft));
    }
    std::sort(lost.begin(), lost.end(),
              [](const LostDraft& a, const LostDraft& b) { return a.changed > b.changed; });
    return lost;
}

} // namespace

DraftJournal::DraftJournal(QString projectFolder, CString ruleFile, QByteArray base, Failed failed)
    : m_projectFolder(std::move(projectFolder)), m_ruleFile(std::move(ruleFile)), m_base(std::move(base)),
      m_failed(std::move(failed))
{
}

DraftJournal::~DraftJournal() = default;

void DraftJournal::Begin()
{
    const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QString folder = QDir(DraftsOf(m_projectFolder)).filePath(name);
    QDir().mkpath(folder);
    auto unfinished = qScopeGuard([&] { QDir(folder).removeRecursively(); });
    auto mark = std::make_unique<QLockFile>(QDir(folder).filePath(MarkName));
    mark->setStaleLockTime(0);
    if (!mark->tryLock(0))
        throw platform::FileError(PathIn(folder, MarkName), u"没有保存的修改的留底写不进去"_s);
    platform::FileSystem& files = platform::Files();
    files.WriteInPlace(PathIn(folder, BaseName), m_base);
    files.WriteInPlace(PathIn(folder, AboutName), AboutText(m_projectFolder, m_ruleFile));
    unfinished.dismiss();
    m_mark = std::move(mark);
    m_sync = std::make_unique<JournalSync>([this](const CString& reason) {
        if (m_failed) m_failed(reason);
    });
    m_folder = folder;
}

void DraftJournal::Add(const rules::Edit& edit)
{
    if (m_folder.isEmpty()) Begin();
    auto file = platform::Files().OpenForWriting(PathIn(m_folder, EditsName));
    file->SeekToEnd();
    file->Write(rules::LineOf(edit) + '\n');
    m_sync->Take(std::move(file));
}

void DraftJournal::End()
{
    if (m_folder.isEmpty()) return;
    m_sync.reset(); // elsewhere no file can be removed while it is open
    m_mark.reset();
    QDir(std::exchange(m_folder, QString())).removeRecursively();
}

std::vector<LostDraft> DraftJournal::FindLost(const QString& projectFolder, const CString& ruleFile)
{
    return Find(projectFolder, [&](const CString& file) { return file == ruleFile; });
}

std::vector<LostDraft> DraftJournal::FindWithoutFile(const QString& projectFolder)
{
    return Find(projectFolder, [](const CString& file) { return !platform::Files().Exists(file); });
}

void DraftJournal::Follow(const QString& projectFolder, const CString& from, const CString& to)
{
    for (const QString& folder : DraftFolders(projectFolder)) {
        if (RuleFileOf(projectFolder, StoredNameIn(folder)) != from) continue;
        try {
            platform::Files().Replace(PathIn(folder, AboutName), AboutText(projectFolder, to));
        } catch (const platform::FileError&) { // NOLINT(bugprone-empty-catch): it is offered as one whose
        }                                      // file is gone
    }
}

LostDraft DraftJournal::Attach(const QString& projectFolder, LostDraft draft, const CString& ruleFile)
{
    platform::Files().Replace(PathIn(draft.folder, AboutName), AboutText(projectFolder, ruleFile));
    draft.ruleFile = ruleFile;
    return draft;
}

void DraftJournal::Remove(const LostDraft& draft)
{
    QDir(draft.folder).removeRecursively();
}

} // namespace editor
