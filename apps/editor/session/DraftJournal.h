#pragma once

#include "rules/draft/Edit.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>

#include <functional>
#include <memory>
#include <vector>

class QLockFile;

namespace editor {

class JournalSync;

/// What a program that ended in the middle has left of a draft.
struct LostDraft
{
    QString folder;                 ///< native; names it
    CString ruleFile;               ///< path text
    QDateTime changed;              ///< when the last edit was made
    QByteArray base;                ///< what the rule file held when the draft was begun
    std::vector<rules::Edit> edits; ///< in order, those that were undone and the undoing included
};

/// Writes down the edits of a draft as they are made, so that a program that dies between edit and save loses
/// none of them. It lies in a folder of its own below "history/drafts" of the project: "base.xml", what the
/// rule file held, "about.json" and "edits.jsonl", one edit a line (see rules/draft/EditLine.h), and a mark
/// by which other programs see that its own one still runs. Nothing is made before the first edit. What is
/// written is safe from the end of the program at once, and from that of the machine as soon as the disk has
/// taken it, which is asked of it behind the windows.
class DraftJournal
{
public:
    /// Called on another thread, with the reason in words, when the disk does not take what was written.
    using Failed = std::function<void(const CString& reason)>;

    /// `projectFolder` is native.
    DraftJournal(QString projectFolder, CString ruleFile, QByteArray base, Failed failed = {});
    /// Leaves what is written where it is, and waits until the disk has it.
    ~DraftJournal();
    DraftJournal(const DraftJournal&) = delete;
    DraftJournal& operator=(const DraftJournal&) = delete;

    /// Writes down one more edit. Raises `platform::FileError`.
    void Add(const rules::Edit& edit);
    /// The draft has come to its end: removes all that was written.
    void End();

    /// The drafts of a rule file that were left behind by programs that run no more, the latest first. What
    /// cannot be read is passed over.
    static std::vector<LostDraft> FindLost(const QString& projectFolder, const CString& ruleFile);
    /// The same of all rule files that stand there no more: removed, moved or given another name past this
    /// program.
    static std::vector<LostDraft> FindWithoutFile(const QString& projectFolder);
    /// A rule file has got another name, and what was left behind of it goes with it, also that of programs
    /// which still run. What cannot be written stays one whose file is gone.
    static void Follow(const QString& projectFolder, const CString& from, const CString& to);
    /// The draft is one of that rule file from now on. Raises `platform::FileError`; nothing has changed
    /// then.
    static LostDraft Attach(const QString& projectFolder, LostDraft draft, const CString& ruleFile);
    /// Removes one for good.
    static void Remove(const LostDraft& draft);

private:
    void Begin();

    QString m_projectFolder;
    CString m_ruleFile;
    QByteArray m_base;
    QString m_folder; ///< native; empty before the first edit
    std::unique_ptr<QLockFile> m_mark;
    Failed m_failed;
    std::unique_ptr<JournalSync> m_sync; ///< null before the first edit
};

} // namespace editor
