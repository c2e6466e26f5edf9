#include "cli/CliTesting.h"
#include "cli/TakeoffTesting.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

class Overwriting : public testing::Test
{
protected:
    /// Exports bill items into a file of the folder that stands there already.
    test::Outcome Export(const QString& nativeName) const
    {
        return m_cli.RunInProject({u"export"_s, u"bill"_s, nativeName, u"--force"_s});
    }

    Cli m_cli{u"bill"_s};
};

} // namespace

TEST_F(Overwriting, FilesThatAProjectCannotDoWithoutAreNotReplaced)
{
    m_cli.Folder().MakeFolder(u"project\\history\\copies"_s);
    m_cli.Folder().WriteFile(u"project\\history\\copies\\one.xml"_s, "a copy");
    for (const CString& file : {u"project\\project.ktqd"_s, u"project\\SysRegedit.ini"_s,
                                u"project\\app\\catalogue.db"_s, u"project\\history\\copies\\one.xml"_s}) {
        const QByteArray before = m_cli.Folder().ReadFile(file);
        const test::Outcome outcome = Export(m_cli.Folder().Native(file));
        EXPECT_EQ(outcome.status, 1) << file.toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"是工程自己的文件，不能覆盖"_s)) << outcome.err.toStdString();
        EXPECT_EQ(m_cli.Folder().ReadFile(file), before) << file.toStdString();
    }
    EXPECT_EQ(m_cli.RunInProject({u"show"_s}).status, 0);
}

TEST_F(Overwriting, NorAreThoseOfAnotherProjectOrByAnotherWay)
{
    EXPECT_EQ(m_cli.Run({u"init"_s, u"other"_s}).status, 0);
    ASSERT_TRUE(QFile::link(m_cli.Folder().Native(u"other"_s), m_cli.Folder().Native(u"way"_s)));
    for (const QString& way : {u"project/../other/app/./catalogue.db"_s, u"way/project.ktqd"_s}) {
        const test::Outcome outcome = Export(way);
        EXPECT_EQ(outcome.status, 1) << way.toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"是工程自己的文件，不能覆盖"_s)) << outcome.err.toStdString();
    }
    EXPECT_EQ(m_cli.Run({u"--project"_s, u"other"_s, u"show"_s}).status, 0);
}

TEST_F(Overwriting, OtherFilesAreReplacedWhereThatIsAskedFor)
{
    for (const CString& file : {u"project\\items.csv"_s, u"project\\app\\items.csv"_s, u"items.csv"_s}) {
        m_cli.Folder().WriteFile(file, "old");
        EXPECT_EQ(Export(m_cli.Folder().Native(file)).status, 0) << file.toStdString();
        EXPECT_NE(m_cli.Folder().ReadFile(file), "old") << file.toStdString();
    }
}

TEST_F(Overwriting, TableThatIsPricedIsNotReplacedByItsBill)
{
    const QByteArray table = test::Head.toUtf8();
    m_cli.Folder().WriteFile(u"t.csv"_s, table);
    for (const QString& output : {u"t.csv"_s, u"project/../t.csv"_s, m_cli.Folder().Native(u"t.csv"_s)}) {
        const test::Outcome outcome =
            m_cli.RunInProject({u"apply"_s, u"t.csv"_s, u"-o"_s, output, u"--force"_s});
        EXPECT_EQ(outcome.status, 1) << output.toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"就是要读的构件表"_s)) << outcome.err.toStdString();
        EXPECT_EQ(m_cli.Folder().ReadFile(u"t.csv"_s), table) << output.toStdString();
    }
}
