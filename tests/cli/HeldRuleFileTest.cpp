#include "cli/TwoProgramsFixture.h"
#include "embedded/data/history/History.h"
#include "embedded/data/history/RuleFileLock.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <optional>

using namespace Qt::StringLiterals;
using test::AddRule;
using test::Cli;
using test::Edits;
using test::RulesOf;
using test::Save;
using test::TwoProgramsFixture;
using test::Water;

namespace {

/// This process holds the rule file, as a program does in the middle of a save.
class HeldRuleFile : public TwoProgramsFixture
{
protected:
    HeldRuleFile()
    {
        m_held.emplace(embedded::ProjectFolder(m_cli.Folder().Native(u"project"_s)),
                       CStringArray{m_cli.Folder().Path(Cli::RuleFile())});
        m_mark = QDir(MarkFolder()).filePath(Marks().value(0));
    }

    test::Outcome SaveNow()
    {
        m_cli.SetVariable(u"KTQDDE_LOCK_WAIT"_s, u"0"_s);
        return m_cli.Batch(AddRule(Water) + Save);
    }

    std::optional<embedded::RuleFileLock> m_held;
    QString m_mark;
};

} // namespace

TEST_F(HeldRuleFile, EveryProgramThatWritesIsRefusedAndSaysWhoHoldsIt)
{
    m_cli.SetVariable(u"KTQDDE_LOCK_WAIT"_s, u"0"_s);
    const QString id =
        embedded::History(embedded::ProjectFolder(m_cli.Folder().Native(u"project"_s))).ListAll().value(0).id;
    for (const QStringList& words : QList<QStringList>{{u"batch"_s, u"-"_s},
                                                       {u"new"_s, u"other"_s},
                                                       {u"save-as"_s, u"other"_s},
                                                       {u"load"_s, u"DefaultConfig"_s},
                                                       {u"refresh"_s, u"DefaultConfig"_s},
                                                       {u"write-head"_s, u"DefaultConfig"_s},
                                                       {u"history"_s, u"restore"_s, id}}) {
        const test::Outcome outcome = m_cli.RunInProject(words);
        EXPECT_EQ(outcome.status, 1) << words[0].toStdString();
        EXPECT_TRUE(outcome.Err().contains(u"（进程 %1，机器 "_s.arg(QCoreApplication::applicationPid())))
            << words[0].toStdString() << outcome.err.toStdString();
    }
    EXPECT_EQ(Content(), m_first);
    EXPECT_EQ(m_cli.RunInProject({u"show"_s}).status, 0) << "reading needs no lock";
}

TEST_F(HeldRuleFile, ProgramWaitsWithAWordUntilItIsFree)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"KTQDDE_LOCK_WAIT"_s, u"3600"_s);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_cli.Folder().Native({}));
    process.start(QStringLiteral(KTQDDE_PROGRAM),
                  {u"--project"_s, u"project"_s, u"batch"_s, Water.name + u".jsonl"_s});
    QByteArray word;
    test::WaitFor(u"a word"_s, [&] {
        process.waitForReadyRead(10);
        word += process.readAllStandardError();
        return word.contains("等它放开");
    });
    EXPECT_EQ(Content(), m_first);
    m_held.reset();
    test::WaitForEnd(process);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(RulesOf(Content(), Water), 1 + Edits);
}

TEST_F(HeldRuleFile, MarkOfAProgramThatHasDiedIsTakenOver)
{
    QFile mark(m_mark);
    ASSERT_TRUE(mark.open(QIODevice::ReadOnly));
    QList<QByteArray> lines = mark.readAll().split('\n');
    mark.close();
    m_held.reset();
    QProcess dead;
    dead.start(QStringLiteral(KTQDDE_PROGRAM), {u"--version"_s});
    ASSERT_TRUE(dead.waitForStarted());
    lines[0] = QByteArray::number(dead.processId());
    test::WaitForEnd(dead);
    ASSERT_TRUE(mark.open(QIODevice::WriteOnly));
    mark.write(lines.join('\n'));
    mark.close();
    EXPECT_EQ(SaveNow().status, 0);
    EXPECT_TRUE(Marks().isEmpty());
}

TEST_F(HeldRuleFile, MarkThatNobodyHasSignedIsTakenOverWhenItIsOld)
{
    m_held.reset();
    QFile mark(m_mark);
    const auto saveWithNewMark = [&] {
        mark.close();
        EXPECT_TRUE(mark.open(QIODevice::WriteOnly));
        EXPECT_TRUE(mark.setFileTime(QDateTime::currentDateTime(), QFile::FileModificationTime));
        return SaveNow().status;
    };
    // On a machine that stands still for a minute in between the mark is old.
    int status = saveWithNewMark();
    if (status == 0) status = saveWithNewMark();
    EXPECT_EQ(status, 1) << "its program may be about to sign";
    ASSERT_TRUE(mark.setFileTime(QDateTime::currentDateTime().addSecs(-120), QFile::FileModificationTime));
    mark.close();
    EXPECT_EQ(SaveNow().status, 0);
}
