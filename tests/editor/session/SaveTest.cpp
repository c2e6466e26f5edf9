#include "editor/session/SessionFixture.h"
#include "host/NvQdInfo.h"
#include "platform/Files.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLockFile>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using editor::DraftFile;
using editor::DraftJournal;
using test::NoConflicts;
using test::NotAsked;

namespace {

/// The file system in force, with one file told apart: what it comes to hold, and whether it can be written.
class OneFile : public platform::FileSystemProxy
{
public:
    explicit OneFile(CString ending, bool isRefused = false)
        : FileSystemProxy(platform::Files()), m_ending(std::move(ending)), m_isRefused(isRefused),
          m_installed(*this)
    {
    }

    /// What it held whenever somebody was about to write it or had replaced it; of equals beside each other
    /// the first.
    const std::vector<QByteArray>& States() const noexcept { return m_states; }

    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString& path) override
    {
        Refuse(path);
        Note(path);
        return Target().OpenForWriting(path);
    }
    bool MoveOver(const CString& from, const CString& to) override
    {
        Refuse(to);
        const bool moved = Target().MoveOver(from, to);
        Note(to);
        return moved;
    }

private:
    void Refuse(const CString& path) const
    {
        if (m_isRefused && path.endsWith(m_ending)) throw platform::FileError(path, u"磁盘满了"_s);
    }
    void Note(const CString& path)
    {
        if (!path.endsWith(m_ending)) return;
        const QByteArray now = platform::RealFileSystem().Read(path).value_or(QByteArray());
        if (m_states.empty() || m_states.back() != now) m_states.push_back(now);
    }

    CString m_ending;
    bool m_isRefused;
    std::vector<QByteArray> m_states;
    platform::ScopedFileSystem m_installed;
};

/// The session on the sample with an edit that is not saved.
class SaveOfADraft : public test::SessionTest
{
protected:
    SaveOfADraft()
    {
        OpenAt(Pipes);
        Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    }

    bool IsSaved() const { return Saved()->Find(Pipes)->rules.front().Text() == u"材质＝铜管;"_s; }
    QString NativePath() const { return m_folder.Native(u"project/app/自动套配置/DefaultConfig.xml"_s); }

    /// How many numbers of a base the number dialog keeps from proposing.
    qsizetype KnownNumbers(const CString& base)
    {
        CArray<SQdInfo> items;
        m_project->Roles().libraries->GetQdInfoByQdNum(base, items);
        return items.size();
    }
    /// Proposes and accepts one, as the dialog does; gives how many there were before.
    qsizetype Propose(const CString& base)
    {
        const qsizetype before = KnownNumbers(base);
        SQdInfo info;
        EXPECT_TRUE(m_project->Roles().libraries->GetQdInfo(base, info));
        EXPECT_EQ(KnownNumbers(base), before + 1);
        return before;
    }
};

const CString Base = u"030901001"_s;

} // namespace

TEST_F(SaveOfADraft, WritesAFileThatIsGoneOnlyWhenTheUserSaysSo)
{
    ASSERT_TRUE(QFile::remove(NativePath()));
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Cancelled) << "nobody to ask";
    EXPECT_EQ(m_session->Save(NoConflicts, [] { return false; }), DraftFile::SaveEnd::Cancelled);
    EXPECT_FALSE(QFile::exists(NativePath()));
    EXPECT_TRUE(m_session->IsChanged());
    EXPECT_EQ(m_session->Save(NoConflicts, [] { return true; }), DraftFile::SaveEnd::Saved);
    EXPECT_TRUE(IsSaved());
    EXPECT_FALSE(m_session->IsChanged());
}

TEST_F(SaveOfADraft, MergesWithAFileThatHasComeBackWhileTheUserWasAsked)
{
    AddOutside(HotPipes, RuleFor(u"材质"_s, u"铝管"_s));
    ASSERT_TRUE(QFile::rename(NativePath(), NativePath() + u".away"_s));
    const auto bringBack = [&] {
        EXPECT_TRUE(QFile::rename(NativePath() + u".away"_s, NativePath()));
        return true;
    };
    EXPECT_EQ(m_session->Save(NoConflicts, bringBack), DraftFile::SaveEnd::Merged);
    EXPECT_TRUE(IsSaved());
    EXPECT_EQ(Saved()->Find(HotPipes)->rules.front().Text(), u"材质＝铝管;"_s);
}

TEST_F(SaveOfADraft, MakesAFileThatWasNeverThereWithoutAsking)
{
    m_session->Open(Path(u"New"_s));
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    EXPECT_EQ(m_session->Save(NoConflicts, NotAsked), DraftFile::SaveEnd::Saved);
    ASSERT_TRUE(QFile::remove(m_folder.Native(u"project/app/自动套配置/New.xml"_s)));
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"金管"_s));
    EXPECT_EQ(m_session->Save(NoConflicts, [] { return false; }), DraftFile::SaveEnd::Cancelled)
        << "by now it stood there";
}

TEST_F(SaveOfADraft, AsksForARecoveredDraftWhoseFileIsGone)
{
    Restart();
    const auto lost = DraftJournal::FindLost(m_project->Folder(), Path());
    ASSERT_EQ(lost.size(), 1U);
    ASSERT_TRUE(QFile::remove(NativePath()));
    m_session->Recover(lost.front());
    EXPECT_EQ(m_session->Save(NoConflicts, [] { return false; }), DraftFile::SaveEnd::Cancelled);
    EXPECT_FALSE(QFile::exists(NativePath()));

    m_session->Close();
    m_session->Open(Path(u"New"_s));
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    Restart();
    const auto made = DraftJournal::FindLost(m_project->Folder(), Path(u"New"_s));
    ASSERT_EQ(made.size(), 1U);
    m_session->Recover(made.front());
    EXPECT_EQ(m_session->Save(NoConflicts, NotAsked), DraftFile::SaveEnd::Saved) << "it never stood there";
}

TEST_F(SaveOfADraft, WritesRulesAndVersionInOneGo)
{
    platform::RealFileSystem().WriteInPlace(Path(),
                                            QByteArray(Bytes()).replace(" Version=\"", " Version=\"0.0."));
    ASSERT_TRUE(Bytes().contains(" Version=\"0.0."));
    m_session->Undo().undo();
    ASSERT_TRUE(m_session->TakeOver());
    m_session->Undo().undo();
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    const QByteArray before = Bytes();
    const OneFile file(u"\\DefaultConfig.xml"_s);
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Saved);
    EXPECT_EQ(file.States(), (std::vector{before, Bytes()}));
    EXPECT_TRUE(IsSaved());
    EXPECT_FALSE(Bytes().contains(" Version=\"0.0."));
    EXPECT_TRUE(Bytes().contains(" Version=\""));
    EXPECT_EQ(m_session->File().Bytes(), Bytes());
}

TEST_F(SaveOfADraft, ThatCannotBeWrittenIsToldAndTheFileStays)
{
    const QByteArray before = Bytes();
    {
        const OneFile full(u"\\DefaultConfig.xml"_s, true);
        EXPECT_THROW(m_session->Save(NoConflicts), platform::FileError);
    }
    EXPECT_EQ(Bytes(), before);
    EXPECT_TRUE(m_session->IsChanged());
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Saved);
    EXPECT_TRUE(IsSaved());
}

TEST_F(SaveOfADraft, KeepsTheFileFromOtherProgramsWhileTheUserIsAsked)
{
    ASSERT_TRUE(QFile::remove(NativePath()));
    int marks = 0;
    const auto look = [&] {
        QCoreApplication::processEvents();
        const QDir locks(m_folder.Native(u"project/history/locks"_s));
        for (const QString& name : locks.entryList({u"*.lock"_s}, QDir::Files)) {
            QLockFile mark(locks.filePath(name));
            EXPECT_FALSE(mark.tryLock(0)) << name.toStdString();
            ++marks;
        }
        return true;
    };
    EXPECT_EQ(m_session->Save(NoConflicts, look), DraftFile::SaveEnd::Saved);
    EXPECT_EQ(marks, 1);
}

TEST_F(SaveOfADraft, FreesTheNumbersThatWereProposedForItsRules)
{
    const qsizetype before = Propose(Base);
    ASSERT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Saved);
    EXPECT_EQ(KnownNumbers(Base), before);

    Insert(Pipes, 0, RuleFor(u"材质"_s, u"金管"_s));
    Propose(Base);
    m_session->Reset();
    EXPECT_EQ(KnownNumbers(Base), before) << "dropped";

    Propose(Base);
    m_session->Open(Path());
    EXPECT_EQ(KnownNumbers(Base), before) << "opened anew";
}

TEST_F(SaveOfADraft, CancelledOneKeepsTheProposedNumbers)
{
    const qsizetype before = Propose(Base);
    ASSERT_TRUE(QFile::remove(NativePath()));
    ASSERT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Cancelled);
    EXPECT_EQ(KnownNumbers(Base), before + 1);
}

TEST_F(SaveOfADraft, RecoveryThatCannotBeWrittenDownLeavesTheFormerOne)
{
    Restart();
    const auto lost = DraftJournal::FindLost(m_project->Folder(), Path());
    ASSERT_EQ(lost.size(), 1U);
    {
        const OneFile full(u"edits.jsonl"_s, true);
        m_session->Recover(lost.front());
        EXPECT_FALSE(m_session->JournalFault().isEmpty());
        EXPECT_TRUE(m_session->IsChanged());
    }
    EXPECT_EQ(DraftJournal::FindLost(m_project->Folder(), Path()).size(), 1U);
}

TEST_F(SaveOfADraft, EditsThatDoNotGoWithTheirFileAreRefusedAndWhatIsOpenStays)
{
    Restart();
    auto lost = DraftJournal::FindLost(m_project->Folder(), Path());
    ASSERT_EQ(lost.size(), 1U);
    lost.front().edits.front().splices.front().position = 999;
    m_session->Open(Path(u"给排水示例"_s));
    EXPECT_THROW(m_session->Recover(lost.front()), std::logic_error);
    EXPECT_EQ(m_session->File().Path(), Path(u"给排水示例"_s));
    EXPECT_FALSE(m_session->IsChanged());
    EXPECT_EQ(DraftJournal::FindLost(m_project->Folder(), Path()).size(), 1U);
}

TEST_F(SaveOfADraft, EditsThatCameToNothingGiveWayToWhatTheFileHoldsNow)
{
    m_session->Undo().undo();
    Restart();
    AddOutside(HotPipes, RuleFor(u"材质"_s, u"铝管"_s));
    const auto lost = DraftJournal::FindLost(m_project->Folder(), Path());
    ASSERT_EQ(lost.size(), 1U);
    m_session->Recover(lost.front());
    EXPECT_FALSE(m_session->IsChanged());
    EXPECT_EQ(m_session->Draft().Find(HotPipes)->rules.front().Text(), u"材质＝铝管;"_s);
}
