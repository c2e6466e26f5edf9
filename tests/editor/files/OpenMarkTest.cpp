#include "editor/files/OpenMark.h"

#include "editor/files/FilesFixture.h"
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSysInfo>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

class OpenMark : public test::ProjectWithFiles
{
protected:
    QDir Marks() const { return QDir(m_folder.Native(u"工程\\history\\locks"_s)); }
    qsizetype Count() const { return Marks().entryList({u"open-*.lock"_s}, QDir::Files).size(); }

    /// A mark as another process makes it.
    void Forge(qint64 process, const QString& program, const QString& host) const
    {
        QDir().mkpath(Marks().path());
        QFile file(Marks().filePath(u"open-forged.lock"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(u"%1\n%2\n%3\n"_s.arg(process).arg(program, host).toUtf8());
    }
    void Age(int days) const
    {
        QFile file(Marks().filePath(u"open-forged.lock"_s));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addDays(-days), QFileDevice::FileModificationTime));
    }
};

} // namespace

TEST_F(OpenMark, StandsAsLongAsTheProjectIsOpen)
{
    {
        const editor::OpenMark mark(Project());
        EXPECT_EQ(Count(), 1);
        const editor::OpenMark another(Project());
        EXPECT_EQ(Count(), 2);
        EXPECT_EQ(editor::OtherProgramWithProject(Project()), std::nullopt); // both are ours
    }
    EXPECT_EQ(Count(), 0);
}

TEST_F(OpenMark, OfAnotherProcessIsToldUntilThatEnds)
{
    test::ProjectHolder other(Project());
    const auto told = editor::OtherProgramWithProject(Project());
    ASSERT_TRUE(told.has_value());
    EXPECT_TRUE(told->contains(u"进程 %1"_s.arg(other.Process()))) << told->toStdString();
    EXPECT_TRUE(told->contains(QSysInfo::machineHostName()));
    other.End();
    EXPECT_EQ(editor::OtherProgramWithProject(Project()), std::nullopt);
    EXPECT_EQ(Count(), 0);
}

TEST_F(OpenMark, OfAProcessThatDiedIsTakenAway)
{
    test::ProjectHolder other(Project());
    EXPECT_EQ(Count(), 1);
    other.Kill();
    EXPECT_EQ(Count(), 1);
    EXPECT_EQ(editor::OtherProgramWithProject(Project()), std::nullopt);
    EXPECT_EQ(Count(), 0);
}

TEST_F(OpenMark, OfAnotherMachineCountsUntilItIsTooOldToBeTrue)
{
    Forge(4711, u"ktqdde-editor"_s, u"elsewhere"_s);
    Age(1);
    const auto other = editor::OtherProgramWithProject(Project());
    ASSERT_TRUE(other.has_value());
    EXPECT_TRUE(other->contains(u"ktqdde-editor（进程 4711，机器 elsewhere")) << other->toStdString();
    Age(30);
    EXPECT_EQ(editor::OtherProgramWithProject(Project()), std::nullopt);
}

TEST_F(OpenMark, IsDoneWithoutWhereNothingCanBeWritten)
{
    const embedded::ProjectFolder missing(m_folder.Native(u"没有"_s));
    const editor::OpenMark mark(missing);
    EXPECT_EQ(editor::OtherProgramWithProject(missing), std::nullopt);
    EXPECT_FALSE(m_folder.Exists(u"没有"_s));
}
