#include "editor/session/DraftJournal.h"

#include "editor/session/SessionFixture.h"
#include "platform/Files.h"
#include "support/Patience.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSemaphore>
#include <QtCore/QSysInfo>

#include <atomic>
#include <utility>

using namespace Qt::StringLiterals;
using editor::DraftJournal;

namespace {

/// A disk that takes the lines of a journal only when it is let, or not at all.
class SlowDisk : public platform::FileSystemProxy
{
public:
    explicit SlowDisk(bool isBroken = false)
        : FileSystemProxy(platform::Files()), m_isBroken(isBroken), m_installed(*this)
    {
    }

    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString& path) override
    {
        auto file = Target().OpenForWriting(path);
        if (!path.endsWith(u"\\edits.jsonl"_s)) return file;
        return std::make_unique<Output>(std::move(file), *this);
    }

    void Let() { m_let.release(); }
    /// How much of the file the disk holds.
    qint64 Held() const noexcept { return m_held; }

private:
    class Output : public platform::OutputFile
    {
    public:
        Output(std::unique_ptr<platform::OutputFile> file, SlowDisk& disk)
            : m_file(std::move(file)), m_disk(disk)
        {
        }
        qint64 Size() const override { return m_file->Size(); }
        void Reserve(qint64 size) override { m_file->Reserve(size); }
        void Write(const QByteArray& bytes) override { m_file->Write(bytes); }
        void SeekToEnd() override { m_file->SeekToEnd(); }
        void Resize(qint64 size) override { m_file->Resize(size); }
        void Sync() override
        {
            m_disk.m_let.acquire();
            const qint64 size = m_file->Size();
            if (m_disk.m_isBroken) throw platform::FileError(u"\\edits.jsonl"_s, u"磁盘坏了"_s);
            m_file->Sync();
            m_disk.m_held = size;
        }

    private:
        std::unique_ptr<platform::OutputFile> m_file;
        SlowDisk& m_disk;
    };

    bool m_isBroken;
    QSemaphore m_let;
    std::atomic<qint64> m_held = 0;
    platform::ScopedFileSystem m_installed;
};

class DraftsOfSample : public test::SessionTest
{
protected:
    QString Folder() const { return m_project->Folder(); }
    std::size_t Lost(const CString& path) const { return DraftJournal::FindLost(Folder(), path).size(); }
    /// A program that has ended before it saved.
    void LoseADraft()
    {
        OpenAt(Pipes);
        Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
        Restart();
    }
    void RenameOutside(const CString& to) const
    {
        ASSERT_TRUE(platform::RealFileSystem().Rename(Path(), Path(to)));
    }
};

} // namespace

TEST_F(DraftsOfSample, EditsAreHandedToTheDiskWhileTheUserGoesOn)
{
    SlowDisk disk;
    OpenAt(Pipes);
    for (const CString& value : {u"铜管"_s, u"金管"_s, u"银管"_s}) // none of them waits for the disk
        Insert(Pipes, 0, RuleFor(u"材质"_s, value));
    EXPECT_EQ(disk.Held(), 0);
    const QDir drafts(Folder() + u"/history/drafts"_s);
    const QString name = drafts.entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0);
    const qint64 written = QFileInfo(drafts.filePath(name + u"/edits.jsonl"_s)).size();
    ASSERT_GT(written, 0);
    for (int i = 0; i < 3; ++i)
        disk.Let();
    test::WaitFor(u"the disk"_s, [&] { return disk.Held() == written; });
    m_session->Close();
}

TEST_F(DraftsOfSample, DiskThatTakesNoEditsIsTold)
{
    SlowDisk disk(true);
    OpenAt(Pipes);
    int told = 0;
    QObject::connect(m_session.get(), &editor::WorkSession::JournalFailed, m_session.get(), [&] { ++told; });
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    EXPECT_EQ(m_session->JournalFault(), CString());
    disk.Let();
    test::WaitInLoopFor(u"the fault"_s, [&] { return told == 1; });
    EXPECT_TRUE(m_session->JournalFault().contains(u"磁盘坏了"_s));
    m_session->Close();
}

TEST_F(DraftsOfSample, DraftGoesWithAFileThatGetsAnotherName)
{
    LoseADraft();
    RenameOutside(u"新名"_s);
    DraftJournal::Follow(Folder(), Path(), Path(u"新名"_s));
    EXPECT_EQ(Lost(Path()), 0U);
    const auto lost = DraftJournal::FindLost(Folder(), Path(u"新名"_s));
    ASSERT_EQ(lost.size(), 1U);
    m_session->Recover(lost.front());
    EXPECT_EQ(m_session->File().Path(), Path(u"新名"_s));
    EXPECT_EQ(m_session->Draft().Find(Pipes)->rules.front().Text(), u"材质＝铜管;"_s);
}

TEST_F(DraftsOfSample, DraftOfAnotherFileDoesNotFollow)
{
    LoseADraft();
    DraftJournal::Follow(Folder(), Path(u"给排水示例"_s), Path(u"新名"_s));
    EXPECT_EQ(Lost(Path()), 1U);
    EXPECT_EQ(Lost(Path(u"新名"_s)), 0U);
}

TEST_F(DraftsOfSample, WhoLooksForLostOnesLeavesADraftAloneThatIsBeingBegun)
{
    const QString folder = Folder() + u"/history/drafts/begun"_s; // its program is about to take the mark
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile mark(folder + u"/open.lock"_s);
    ASSERT_TRUE(mark.open(QIODevice::WriteOnly));
    mark.write("2147483647\nnobody\n" + QSysInfo::machineHostName().toUtf8() + '\n');
    mark.close();
    EXPECT_EQ(Lost(Path()), 0U);
    EXPECT_TRUE(DraftJournal::FindWithoutFile(Folder()).empty());
    EXPECT_TRUE(mark.exists()) << "that of a program which has died goes when somebody takes it";
}

TEST_F(DraftsOfSample, DraftIsFoundWhenItsFileIsGone)
{
    LoseADraft();
    EXPECT_TRUE(DraftJournal::FindWithoutFile(Folder()).empty());
    RenameOutside(u"别处"_s);
    const auto lost = DraftJournal::FindWithoutFile(Folder());
    ASSERT_EQ(lost.size(), 1U);
    EXPECT_EQ(lost.front().ruleFile, Path());
    EXPECT_EQ(lost.front().edits.size(), 1U);
    const auto attached = DraftJournal::Attach(Folder(), lost.front(), Path(u"别处"_s));
    EXPECT_EQ(attached.ruleFile, Path(u"别处"_s));
    EXPECT_TRUE(DraftJournal::FindWithoutFile(Folder()).empty());
    EXPECT_EQ(Lost(Path(u"别处"_s)), 1U);
}
