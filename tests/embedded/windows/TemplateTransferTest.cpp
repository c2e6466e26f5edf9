#include "embedded/windows/TemplateTransfer.h"

#include "embedded/windows/TemplateFile.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::ConflictDecision;

namespace {

/// A file "云\甲.xml" to be copied into the folder "机".
class TemplateTransfer : public ::testing::Test
{
protected:
    TemplateTransfer()
    {
        m_folder.MakeFolder(u"云"_s);
        m_folder.MakeFolder(u"机"_s);
        m_folder.WriteFile(u"云\\甲.xml"_s, "new");
    }

    /// Copies with a user who takes these decisions in order.
    embedded::TransferOutcome Transfer(std::vector<ConflictDecision> decisions = {})
    {
        std::size_t next = 0;
        return embedded::TransferTemplate(m_folder.Path(u"云\\甲.xml"_s), m_folder.Path(u"机"_s), u"甲"_s,
                                          [&](const CString& folder, const CString& name) {
                                              EXPECT_EQ(folder, m_folder.Path(u"机"_s));
                                              m_asked.append(name);
                                              return decisions.at(next++);
                                          });
    }
    QStringList Files() const { return QDir(m_folder.Native(u"机"_s)).entryList(QDir::Files); }

    test::TempFolder m_folder;
    CStringArray m_asked;
};

TEST_F(TemplateTransfer, CopiesToAFreeNameWithoutAsking)
{
    const auto outcome = Transfer();
    EXPECT_TRUE(outcome.done);
    EXPECT_EQ(outcome.name + outcome.backup + outcome.fault, u"甲"_s);
    EXPECT_EQ(m_folder.ReadFile(u"机\\甲.xml"_s), "new");
}

TEST(TemplateFiles, ComeInTheOrderOfSortedListsWhateverTheLocaleIs)
{
    const test::TempFolder folder;
    for (const CString& name : {u"给水"_s, u"阀门10"_s, u"安装"_s, u"阀门9"_s})
        folder.WriteFile(name + u".xml"_s, "<x/>");
    CStringArray names;
    for (const embedded::TemplateFile& file : embedded::FindTemplates(folder.Root()))
        names.append(file.name);
    EXPECT_EQ(names, (CStringArray{u"安装"_s, u"阀门9"_s, u"阀门10"_s, u"给水"_s}));
}

TEST_F(TemplateTransfer, LeavesAnEqualFileAloneWithoutAsking)
{
    m_folder.WriteFile(u"机\\甲.xml"_s, "new");
    test::FaultyFileSystem files;
    EXPECT_TRUE(Transfer().done);
    EXPECT_EQ(files.WritePoints(), 0);
}

TEST_F(TemplateTransfer, KeepsADatedCopyOfWhatItOverwrites)
{
    m_folder.WriteFile(u"机\\甲.xml"_s, "old");
    const auto outcome = Transfer({{ConflictDecision::Overwrite, {}}});
    EXPECT_TRUE(outcome.done);
    EXPECT_EQ(m_asked, CStringArray{u"甲"_s});
    EXPECT_EQ(m_folder.ReadFile(u"机\\甲.xml"_s), "new");
    const QRegularExpression dated(u"^甲\\.xml\\.\\d{8}-\\d{6}\\.bak$"_s);
    EXPECT_TRUE(dated.match(outcome.backup).hasMatch()) << outcome.backup.toStdString();
    EXPECT_EQ(m_folder.ReadFile(u"机\\"_s + outcome.backup), "old");
}

TEST_F(TemplateTransfer, TwoCopiesOfOneSecondStandSideBySide)
{
    for (const QByteArray& old : {QByteArray("a"), QByteArray("b"), QByteArray("c")}) {
        m_folder.WriteFile(u"机\\甲.xml"_s, old);
        EXPECT_EQ(m_folder.ReadFile(u"机\\"_s + Transfer({{ConflictDecision::Overwrite, {}}}).backup), old);
    }
    EXPECT_EQ(Files().size(), 4);
}

TEST_F(TemplateTransfer, AsksAgainAboutAnotherNameThatIsTaken)
{
    m_folder.WriteFile(u"机\\甲.xml"_s, "old");
    m_folder.WriteFile(u"机\\乙.xml"_s, "other");
    const auto outcome = Transfer({{ConflictDecision::Rename, u"乙"_s}, {ConflictDecision::Rename, u"丙"_s}});
    EXPECT_EQ(outcome.name, u"丙"_s);
    EXPECT_EQ(m_asked, (CStringArray{u"甲"_s, u"乙"_s}));
    EXPECT_EQ(m_folder.ReadFile(u"机\\甲.xml"_s) + m_folder.ReadFile(u"机\\乙.xml"_s), "oldother");
    EXPECT_EQ(m_folder.ReadFile(u"机\\丙.xml"_s), "new");
}

TEST_F(TemplateTransfer, CancelDoesNothingAndIsNoFault)
{
    m_folder.WriteFile(u"机\\甲.xml"_s, "old");
    const auto outcome = Transfer({{}});
    EXPECT_FALSE(outcome.done);
    EXPECT_EQ(outcome.fault, CString());
    EXPECT_EQ(m_folder.ReadFile(u"机\\甲.xml"_s), "old");
    EXPECT_EQ(Files().size(), 1);
}

TEST_F(TemplateTransfer, RefusesABadOtherName)
{
    m_folder.WriteFile(u"机\\甲.xml"_s, "old");
    EXPECT_FALSE(Transfer({{ConflictDecision::Rename, u"..\\乙"_s}}).done);
    EXPECT_EQ(Files().size(), 1);
}

TEST_F(TemplateTransfer, EveryFailingWriteLeavesTheFormerFile)
{
    using test::Fault;
    for (const Fault fault : {Fault::RefuseOpen, Fault::NoRoom, Fault::Write, Fault::Resize, Fault::Sync}) {
        for (const int point : {0, 1}) { // the copy, then the file
            m_folder.WriteFile(u"机\\甲.xml"_s, "o");
            test::FaultyFileSystem files;
            files.Inject(fault);
            files.OnlyAt(point);
            const auto outcome = Transfer({{ConflictDecision::Overwrite, {}}});
            EXPECT_FALSE(outcome.done) << static_cast<int>(fault) << " at " << point;
            EXPECT_NE(outcome.fault, CString());
            EXPECT_EQ(outcome.fault.startsWith(u"原文件不能备份"_s), point == 0);
            EXPECT_EQ(m_folder.ReadFile(u"机\\甲.xml"_s), "o");
        }
    }
}

TEST_F(TemplateTransfer, FailingWriteOfANewFileLeavesNone)
{
    test::FaultyFileSystem files;
    files.FailAfter(1);
    EXPECT_NE(Transfer().fault, CString());
    EXPECT_EQ(Files(), QStringList());
}

TEST_F(TemplateTransfer, SourceThatCannotBeReadIsAFault)
{
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseRead);
    EXPECT_NE(Transfer().fault, CString());
    EXPECT_EQ(Files(), QStringList());
}

TEST_F(TemplateTransfer, ProposesTheFirstFreeName)
{
    const CString folder = m_folder.Path(u"机"_s);
    EXPECT_EQ(embedded::FreeTemplateName(folder, u"甲"_s), u"甲"_s);
    m_folder.WriteFile(u"机\\甲.xml"_s, {});
    m_folder.WriteFile(u"机\\甲 (2).xml"_s, {});
    EXPECT_EQ(embedded::FreeTemplateName(folder, u"甲"_s), u"甲 (3)"_s);
}

TEST(TemplateName, IsRefusedWhenNoSystemCouldKeepIt)
{
    for (const CString& name : {CString(), u"  "_s, u"a/b"_s, u"a\\b"_s, u"a:b"_s, u"a*"_s, u"a?"_s, u"<a"_s,
                                u"a|b"_s, u"\"a"_s, u"a\nb"_s, u"nul"_s, u"COM1.x"_s, u"a."_s, u"a "_s,
                                u" a"_s, CString(100, u'a'), CString(90, u'名'), CString(QChar(0xd800))})
        EXPECT_NE(embedded::TemplateNameFault(name), CString()) << name.toStdString();
    for (const CString& name : {u"甲"_s, u"a.b"_s, u"COM10"_s, CString(99, u'a')})
        EXPECT_EQ(embedded::TemplateNameFault(name), CString()) << name.toStdString();
}

TEST(TemplateFile, TellsVersionDateAndWhetherItIsARuleFile)
{
    const test::TempFolder folder;
    folder.WriteFile(u"b.xml"_s, "<自动套清单定额配置信息 Version=\"1.2.0\"/>");
    const QDateTime written(QDate(2024, 2, 29), QTime(12, 0));
    folder.SetTime(u"b.xml"_s, written);
    folder.WriteFile(u"a.XML"_s, "<other Version=\"3\"/>");
    folder.WriteFile(u"c.xml"_s, "<broken");
    folder.WriteFile(u"d.txt"_s, "<自动套清单定额配置信息/>");
    const auto files = embedded::FindTemplates(folder.Root());
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(files[0].name + files[1].name + files[2].name, u"abc"_s);
    EXPECT_EQ(files[1].version, u"1.2.0"_s);
    EXPECT_TRUE(files[1].isRuleFile);
    EXPECT_FALSE(files[0].isRuleFile);
    EXPECT_FALSE(files[2].isRuleFile);
    EXPECT_EQ(files[1].modified, written);
    EXPECT_TRUE(embedded::FindTemplates(folder.Path(u"没有"_s)).empty());
}

} // namespace
