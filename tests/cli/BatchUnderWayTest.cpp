#include "cli/TwoProgramsFixture.h"

using namespace Qt::StringLiterals;
using test::AddRule;
using test::Cli;
using test::Power;
using test::RulesOf;
using test::Save;
using test::TwoProgramsFixture;
using test::Water;

namespace {

/// A batch that is under way, and talked to line by line.
class BatchUnderWay : public TwoProgramsFixture
{
protected:
    BatchUnderWay()
        : m_batch(Start(QStringLiteral(KTQDDE_PROGRAM),
                        {u"--project"_s, u"project"_s, u"batch"_s, u"-"_s, u"--keep-going"_s}))
    {
    }

    ~BatchUnderWay() override { test::Kill(*m_batch); }

    /// The answer to a line.
    QString Ask(const QByteArray& line)
    {
        m_batch->write(line);
        test::WaitFor(u"an answer"_s, [&] {
            m_batch->waitForReadyRead(10);
            return m_batch->canReadLine();
        });
        return QString::fromUtf8(m_batch->readLine());
    }

    Process m_batch;
};

} // namespace

TEST_F(BatchUnderWay, SaveIsRefusedWhenTheSameSpecialtyWasSavedMeanwhile)
{
    EXPECT_TRUE(Ask(AddRule(Water)).contains(u"\"ok\":true"_s));
    ASSERT_EQ(m_cli.Batch(AddRule(Water) + AddRule(Water) + Save).status, 0);
    const QByteArray before = Content();
    const QString answer = Ask(Save);
    EXPECT_TRUE(answer.contains(u"\"ok\":false"_s)) << answer.toStdString();
    EXPECT_TRUE(answer.contains(u"专业“给排水”已被另一个程序改过"_s)) << answer.toStdString();
    EXPECT_EQ(Content(), before);
    EXPECT_TRUE(Ask("{\"op\":\"SaveAs\",\"file\":\"./mine.xml\"}\n").contains(u"\"ok\":true"_s));
    EXPECT_EQ(RulesOf(m_cli.Folder().ReadFile(u"mine.xml"_s), Water), 2);
    EXPECT_FALSE(Ask(Save).contains(u"\"ok\":true"_s)) << "what SaveAs wrote is another file";
    EXPECT_EQ(Content(), before);
}

TEST_F(BatchUnderWay, SaveGoesOnWhenAnotherSpecialtyWasSavedMeanwhile)
{
    Ask(AddRule(Water));
    ASSERT_EQ(m_cli.Batch(AddRule(Power) + Save, {u"--spec"_s, Power.name}).status, 0);
    EXPECT_TRUE(Ask(Save).contains(u"\"ok\":true"_s));
    EXPECT_EQ(RulesOf(Content(), Power), 2);
    EXPECT_EQ(RulesOf(Content(), Water), 2);
}

TEST_F(BatchUnderWay, FileThatBreaksMeanwhileIsNotTakenForAnEmptyOne)
{
    Ask(AddRule(Water));
    const QByteArray broken = m_first.left(m_first.size() - 20);
    m_cli.Folder().WriteFile(Cli::RuleFile(), broken);
    const QString answer = Ask(Save);
    EXPECT_TRUE(answer.contains(u"规则文件读不了"_s)) << answer.toStdString();
    EXPECT_FALSE(Ask("{\"op\":\"SaveAs\",\"file\":\"./mine.xml\"}\n").contains(u"\"ok\":true"_s));
    EXPECT_EQ(Content(), broken);
}

TEST_F(BatchUnderWay, FileThatBreaksMeanwhileIsNotSavedOverOnTheWayToAnotherOne)
{
    m_cli.Folder().WriteFile(u"other.xml"_s, m_first);
    Ask(AddRule(Water));
    const QByteArray broken = m_first.left(m_first.size() - 20);
    m_cli.Folder().WriteFile(Cli::RuleFile(), broken);
    for (const QByteArray line : {"{\"op\":\"ReLoad\",\"file\":\"./other.xml\"}\n",
                                  "{\"op\":\"NewFile\",\"file\":\"./new.xml\"}\n"}) {
        const QString answer = Ask(line);
        EXPECT_TRUE(answer.contains(u"\"ok\":false"_s)) << answer.toStdString();
        EXPECT_TRUE(answer.contains(u"规则文件读不了"_s)) << answer.toStdString();
        EXPECT_EQ(Content(), broken);
    }
    EXPECT_FALSE(m_cli.Folder().Exists(u"new.xml"_s));
}

TEST_F(BatchUnderWay, AfterItsOwnSavesAndLoadsItGoesOnSaving)
{
    for (int save = 0; save < 2; ++save) {
        Ask(AddRule(Water));
        EXPECT_TRUE(Ask(Save).contains(u"\"ok\":true"_s));
    }
    EXPECT_TRUE(Ask("{\"op\":\"SaveAs\",\"file\":\"./mine.xml\"}\n").contains(u"\"ok\":true"_s));
    EXPECT_TRUE(Ask("{\"op\":\"ReLoad\",\"file\":\"./mine.xml\"}\n").contains(u"\"ok\":true"_s));
    Ask(AddRule(Water));
    EXPECT_TRUE(Ask(Save).contains(u"\"ok\":true"_s));
    EXPECT_EQ(RulesOf(m_cli.Folder().ReadFile(u"mine.xml"_s), Water), 4);
}

TEST_F(BatchUnderWay, SaveAsAndNewFileReplaceNothingButRuleFiles)
{
    const QByteArray note = "my notes\n";
    m_cli.Folder().WriteFile(u"note.txt"_s, note);
    const QByteArray ini = m_cli.Folder().ReadFile(u"project\\project.ktqd"_s);
    for (const QByteArray op : {"SaveAs", "NewFile"}) {
        for (const QByteArray file : {"./note.txt", "./project/project.ktqd"}) {
            const QString answer = Ask("{\"op\":\"" + op + "\",\"file\":\"" + file + "\"}\n");
            EXPECT_TRUE(answer.contains(u"不是规则文件，不能替换"_s)) << answer.toStdString();
        }
    }
    EXPECT_EQ(m_cli.Folder().ReadFile(u"note.txt"_s), note);
    EXPECT_EQ(m_cli.Folder().ReadFile(u"project\\project.ktqd"_s), ini);
}
