#include "editor/files/DiskWatch.h"

#include "editor/files/FilesFixture.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "support/Patience.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>

using namespace Qt::StringLiterals;
using editor::DiskChange;

namespace {

using Kind = DiskChange::Kind;

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
    WriteElsewhere(u"乙"_s, Rules("other"));
    Expect(u"乙"_s, Kind::Changed);
    WriteElsewhere(u"新的"_s, Rules("n"));
    Expect(u"新的"_s, Kind::Appeared);
    QFile::remove(Native(u"甲"_s));
    Expect(u"甲"_s, Kind::Gone);
}

TEST_F(DiskWatch, GoesOnWatchingAFileThatWasReplaced)
{
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
    QFile file(Native(u"甲"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(
        file.setFileTime(QDateTime(QDate(2020, 1, 1), QTime(12, 0)), QFileDevice::FileModificationTime));
    file.close();
    m_watch.Look();
    EXPECT_TRUE(m_changes.isEmpty());
}

TEST_F(DiskWatch, DoesNotTellWhatItIsToldToKnow)
{
    m_watch.Knows(Path(u"乙"_s), Rules("known"));
    m_watch.Knows(Path(u"甲"_s), std::nullopt);
    WriteElsewhere(u"乙"_s, Rules("known"));
    QFile::remove(Native(u"甲"_s));
    m_watch.Look();
    EXPECT_TRUE(m_changes.isEmpty());
}

TEST_F(DiskWatch, FindsWhatHasTheSameLengthAndTime)
{
    const QDateTime time(QDate(2020, 1, 1), QTime(12, 0));
    const auto stamp = [&] {
        QFile file(Native(u"乙"_s));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    };
    stamp();
    m_watch.Look();
    WriteElsewhere(u"乙"_s, Rules("B"));
    stamp();
    Expect(u"乙"_s, Kind::Changed);
}

TEST_F(DiskWatch, FindsTheFolderThatIsMadeLater)
{
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
