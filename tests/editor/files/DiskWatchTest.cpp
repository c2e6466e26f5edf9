#include "editor/files/DiskWatch.h"

#include "editor/files/FilesFixture.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "support/Patience.h"
#include "support/Watching.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <functional>
#include <utility>

using namespace Qt::StringLiterals;
using editor::DiskChange;
using test::Watching;

namespace {

using Kind = DiskChange::Kind;

/// Another program that does something to a file at once when it has been read for the first time.
class BehindTheReading : public platform::FileSystemProxy
{
public:
    BehindTheReading(CString path, std::function<void()> step)
        : FileSystemProxy(platform::Files()), m_path(std::move(path)), m_step(std::move(step)),
          m_installed(*this)
    {
    }

    std::optional<QByteArray> Read(const CString& path, CString* reason) override
    {
        auto bytes = Target().Read(path, reason);
        if (path == m_path && m_step) std::exchange(m_step, nullptr)();
        return bytes;
    }

private:
    CString m_path;
    std::function<void()> m_step;
    platform::ScopedFileSystem m_installed;
};

/// Writes go past the program's file system, as those of another program do, unless a test says otherwise.
class DiskWatch : public test::ProjectWithFiles
{
protected:
    DiskWatch()
        : m_watch(Project().RuleFolder(), [this](const QList<DiskChange>& changes) { m_changes += changes; })
    {
    }

    QString Native(const CString& name) const { return platform::ToNative(Path(name)); }
    void WriteElsewhere(const CString& name, const QByteArray& bytes) const
    {
        QFile file(Native(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    /// Gives a file the time of that day.
    void Stamp(const CString& name, int day) const
    {
        QFile file(Native(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime(QDate(2020, 1, day), QTime(12, 0)),
                                     QFileDevice::FileModificationTime));
    }
    void Expect(const CString& name, Kind kind)
    {
        const DiskChange change{Path(name), kind};
        test::WaitInLoopFor(name, [&] { return m_changes.contains(change); });
        m_changes.clear();
    }

    QList<DiskChange> m_changes;
    editor::DiskWatch m_watch;
};

} // namespace

TEST_F(DiskWatch, TellsWhatAnotherProgramChangesMakesAndRemoves)
{
    if (test::WatchingHere() == Watching::Nothing) GTEST_SKIP() << test::NoWatching;
    WriteElsewhere(u"乙"_s, Rules("other"));
    Expect(u"乙"_s, Kind::Changed);
    WriteElsewhere(u"新的"_s, Rules("n"));
    Expect(u"新的"_s, Kind::Appeared);
    QFile::remove(Native(u"甲"_s));
    Expect(u"甲"_s, Kind::Gone);
}

TEST_F(DiskWatch, GoesOnWatchingAFileThatWasReplaced)
{
    if (test::WatchingHere() == Watching::Nothing) GTEST_SKIP() << test::NoWatching;
    for (const char* const content : {"one", "two"}) {
        WriteElsewhere(u"part"_s, Rules(content));
        QFile::remove(Native(u"乙"_s));
        QFile::rename(Native(u"part"_s), Native(u"乙"_s));
        Expect(u"乙"_s, Kind::Changed);
    }
    WriteElsewhere(u"乙"_s, Rules("three"));
    Expect(u"乙"_s, Kind::Changed);
}

TEST_F(DiskWatch, DoesNotTellWhatThisProgramWrites)
{
    platform::Files().WriteInPlace(Path(u"乙"_s), Rules("ours"));
    platform::Files().WriteInPlace(Path(u"新的"_s), Rules("ours"));
    platform::Files().Replace(Path(u"甲"_s), Rules("ours"));
    platform::Files().Rename(Path(u"封装"_s), Path(u"改名"_s));
    m_watch.Look();
    EXPECT_TRUE(m_changes.isEmpty());
    if (test::WatchingHere() == Watching::Nothing) GTEST_SKIP() << test::NoWatching;
    platform::Files().Remove(Path(u"改名"_s));
    // Told last, so what was to be told before would have been.
    WriteElsewhere(u"最后"_s, Rules("other"));
    const DiskChange last{Path(u"最后"_s), Kind::Appeared};
    test::WaitInLoopFor(u"the last change"_s, [&] { return m_changes.contains(last); });
    EXPECT_EQ(m_changes, QList<DiskChange>({last}));
}

TEST_F(DiskWatch, DoesNotTellWhatIsTouchedOrWrittenAgain)
{
    WriteElsewhere(u"乙"_s, Rules("b"));
    Stamp(u"甲"_s, 1);
    m_watch.Look();
    EXPECT_TRUE(m_changes.isEmpty());
}

TEST_F(DiskWatch, FindsWhatHasTheSameLengthAndTime)
{
    if (test::WatchingHere() != Watching::EveryWrite) GTEST_SKIP() << test::NotEveryWrite;
    Stamp(u"乙"_s, 1);
    m_watch.Look();
    WriteElsewhere(u"乙"_s, Rules("B"));
    Stamp(u"乙"_s, 1);
    Expect(u"乙"_s, Kind::Changed);
}

TEST_F(DiskWatch, TellsWhatIsWrittenWhileItLooksAtAFileThatWasReplaced)
{
    if (test::WatchingHere() != Watching::EveryWrite) GTEST_SKIP() << test::NotEveryWrite;
    WriteElsewhere(u"part"_s, Rules("one"));
    QFile::remove(Native(u"乙"_s));
    QFile::rename(Native(u"part"_s), Native(u"乙"_s));
    // In place, of which the folder says nothing.
    const BehindTheReading other(Path(u"乙"_s), [this] { WriteElsewhere(u"乙"_s, Rules("two")); });
    const DiskChange change{Path(u"乙"_s), Kind::Changed};
    test::WaitInLoopFor(u"both changes"_s, [&] { return m_changes.count(change) == 2; });
}

TEST_F(DiskWatch, FindsAtTheNextLookWhatWasWrittenDuringTheFormer)
{
    const DiskChange change{Path(u"乙"_s), Kind::Changed};
    WriteElsewhere(u"乙"_s, Rules("one"));
    Stamp(u"乙"_s, 1);
    {
        const BehindTheReading other(Path(u"乙"_s), [this] {
            WriteElsewhere(u"乙"_s, Rules("two"));
            Stamp(u"乙"_s, 2);
        });
        m_watch.Look();
        EXPECT_EQ(m_changes, QList<DiskChange>({change}));
    }
    m_watch.Look();
    EXPECT_EQ(m_changes, QList<DiskChange>({change, change}));
}

TEST_F(DiskWatch, FindsTheFolderThatIsMadeLater)
{
    if (test::WatchingHere() == Watching::Nothing) GTEST_SKIP() << test::NoWatching;
    const CString folder = m_folder.Path(u"工程\\app\\later"_s);
    QList<DiskChange> changes;
    const editor::DiskWatch watch(folder, [&](const QList<DiskChange>& found) { changes += found; });
    ASSERT_TRUE(QDir().mkpath(platform::ToNative(folder)));
    QFile file(platform::ToNative(folder + u"\\x.xml"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(Rules("x"));
    file.close();
    test::WaitInLoopFor(u"the file"_s, [&] { return !changes.isEmpty(); });
    EXPECT_EQ(changes.first().kind, Kind::Appeared);
}
