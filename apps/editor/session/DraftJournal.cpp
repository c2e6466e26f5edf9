#include "editor/session/DraftJournal.h"

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

const QString DraftsFolder = u"history/drafts"_s;
const QString MarkName = u"open.lock"_s;
const QString BaseName = u"base.xml"_s;
const QString AboutName = u"about.json"_s;
const QString EditsName = u"edits.jsonl"_s;
const QString FileKey = u"ruleFile"_s;

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

/// Nothing for what is not whole.
std::optional<LostDraft> ReadDraft(const QString& projectFolder, const QString& folder,
                                   const CString& ruleFile)
{
    platform::FileSystem& files = platform::Files();
    const auto about = files.Read(PathIn(folder, AboutName));
    const auto base = files.Read(PathIn(folder, BaseName));
    const auto lines = files.Read(PathIn(folder, EditsName));
    if (!about || !base || !lines) return std::nullopt;
    const QJsonObject told = QJsonDocument::fromJson(*about).object();
    if (told.value(FileKey).toString() != StoredName(projectFolder, ruleFile)) return std::nullopt;
    LostDraft draft{folder, ruleFile, QFileInfo(QDir(folder).filePath(EditsName)).lastModified(), *base, {}};
    for (const QByteArray& line : lines->split('\n')) {
        auto edit = rules::EditOf(line);
        if (!edit) break; // what broke off in the middle, or the end
        draft.edits.push_back(std::move(*edit));
    }
    if (draft.edits.empty()) return std::nullopt;
    return draft;
}

} // namespace

DraftJournal::DraftJournal(QString projectFolder, CString ruleFile, QByteArray base)
    : m_projectFolder(std::move(projectFolder)), m_ruleFile(std::move(ruleFile)), m_base(std::move(base))
{
}

DraftJournal::~DraftJournal() = default;

void DraftJournal::Begin()
{
    const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QString folder = QDir(m_projectFolder).filePath(DraftsFolder + u'/' + name);
    QDir().mkpath(folder);
    auto unfinished = qScopeGuard([&] { QDir(folder).removeRecursively(); });
    auto mark = std::make_unique<QLockFile>(QDir(folder).filePath(MarkName));
    mark->setStaleLockTime(0);
    if (!mark->tryLock(0))
        throw platform::FileError(PathIn(folder, MarkName), u"没有保存的修改的留底写不进去"_s);
    const QJsonObject about{{FileKey, StoredName(m_projectFolder, m_ruleFile)}};
    platform::FileSystem& files = platform::Files();
    files.WriteInPlace(PathIn(folder, BaseName), m_base);
    files.WriteInPlace(PathIn(folder, AboutName), QJsonDocument(about).toJson());
    unfinished.dismiss();
    m_mark = std::move(mark);
    m_folder = folder;
}

void DraftJournal::Add(const rules::Edit& edit)
{
    if (m_folder.isEmpty()) Begin();
    const auto file = platform::Files().OpenForWriting(PathIn(m_folder, EditsName));
    file->SeekToEnd();
    file->Write(rules::LineOf(edit) + '\n');
}

void DraftJournal::End()
{
    if (m_folder.isEmpty()) return;
    m_mark.reset();
    QDir(std::exchange(m_folder, QString())).removeRecursively();
}

std::vector<LostDraft> DraftJournal::FindLost(const QString& projectFolder, const CString& ruleFile)
{
    std::vector<LostDraft> lost;
    const QDir drafts(QDir(projectFolder).filePath(DraftsFolder));
    for (const QString& name : drafts.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString folder = drafts.filePath(name);
        QLockFile mark(QDir(folder).filePath(MarkName));
        mark.setStaleLockTime(0);
        if (!mark.tryLock(0)) continue; // its program still runs
        if (auto draft = ReadDraft(projectFolder, folder, ruleFile)) lost.push_back(std::move(*draft));
    }
    std::sort(lost.begin(), lost.end(),
              [](const LostDraft& a, const LostDraft& b) { return a.changed > b.changed; });
    return lost;
}

void DraftJournal::Remove(const LostDraft& draft)
{
    QDir(draft.folder).removeRecursively();
}

} // namespace editor
