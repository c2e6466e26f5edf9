#include "embedded/data/project/RuleNumbers.h"

#include "embedded/TestProject.h"
#include "support/SourceTree.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::RuleNumbers;
using test::TestProject;

namespace {

const CString BaseNumber = u"031001001"_s;
const CString Library = u"GB-1"_s;

/// A rule with one bill item.
QByteArray Bill(const QByteArray& number, const QByteArray& name, const QByteArray& library = "GB-1")
{
    return "<Config><Qd><qd strQdId=\"" + number + "\" strQdCode=\"" + library + "\" strName=\"" + name +
           "\" strUnit=\"m\" strUnitCode=\"1\" strFormula=\"L\" strAnnex=\"\xE6\x98\xAF\"/></Qd></Config>";
}

QByteArray Rules(const QByteArray& content)
{
    return "<Rules><A><LMember><SMember>" + content + "</SMember></LMember></A></Rules>";
}

CStringArray NumbersOf(const CArray<SQdInfo>& items)
{
    CStringArray numbers;
    for (const SQdInfo& item : items)
        numbers.append(item.strNumber);
    return numbers;
}

QByteArray SampleRules()
{
    QFile file(test::InSourceTree(u"samples/SampleRules.xml"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST(RuleNumbers, ItemOfTheBaseNumberIsFilledIn)
{
    const test::TempFolder folder;
    folder.WriteFile(u"a.xml"_s, Rules(Bill("031001001007", "pipe") + Bill("031001002001", "other")));
    const CArray<SQdInfo> items = RuleNumbers(folder.Root()).Find(BaseNumber, Library);
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items.at(0).strNumber, u"031001001007"_s);
    EXPECT_EQ(items.at(0).strName, u"pipe"_s);
    EXPECT_EQ(items.at(0).strUnit, u"m"_s);
    EXPECT_EQ(items.at(0).nUnitCode, 1);
    EXPECT_EQ(items.at(0).nWithAnnex, 1);
    EXPECT_EQ(items.at(0).strCalRule, u"L"_s);
}

TEST(RuleNumbers, NumbersOfAllFilesAreGivenOnceInTheOrderOfFilesAndRules)
{
    const test::TempFolder folder;
    folder.WriteFile(u"b.XML"_s, Rules(Bill("031001001001", "b1") + Bill("031001001009", "b9")));
    folder.WriteFile(u"a.xml"_s, Rules(Bill("031001001003", "a3") + Bill("031001001001", "a1") +
                                       Bill("031001001003", "again")));
    const CArray<SQdInfo> items = RuleNumbers(folder.Root()).Find(BaseNumber, Library);
    EXPECT_EQ(NumbersOf(items), (CStringArray{u"031001001003"_s, u"031001001001"_s, u"031001001009"_s}));
    EXPECT_EQ(items.at(0).strName, u"a3"_s);
    EXPECT_EQ(items.at(1).strName, u"a1"_s);
}

TEST(RuleNumbers, NumberWithoutSuffixAndAnEmptyBaseAreNoMatch)
{
    const test::TempFolder folder;
    folder.WriteFile(u"a.xml"_s, Rules(Bill("031001001", "pipe") + Bill("", "none")));
    RuleNumbers numbers(folder.Root());
    EXPECT_TRUE(numbers.Find(BaseNumber, Library).isEmpty());
    EXPECT_TRUE(numbers.Find({}, Library).isEmpty());
}

TEST(RuleNumbers, ItemsOfOtherLibrariesHaveTheSameNumbersForOtherThings)
{
    const test::TempFolder folder;
    folder.WriteFile(u"a.xml"_s,
                     Rules(Bill("031001001001", "gauge", "GB-2") + Bill("031001001001", "pipe") +
                           Bill("031001001002", "valve", "GB-2") + Bill("031001001003", "untold", "") +
                           Bill("031001001004", "by letter case", "gb-1")));
    RuleNumbers numbers(folder.Root());
    const CArray<SQdInfo> items = numbers.Find(BaseNumber, Library);
    EXPECT_EQ(NumbersOf(items), (CStringArray{u"031001001001"_s, u"031001001003"_s, u"031001001004"_s}));
    EXPECT_EQ(items.at(0).strName, u"pipe"_s);
    EXPECT_EQ(numbers.Find(BaseNumber, u"GB-2"_s).at(0).strName, u"gauge"_s);
}

TEST(RuleNumbers, FileThatCannotBeReadIsPassedOver)
{
    const test::TempFolder folder;
    folder.WriteFile(u"a.xml"_s, "<Rules><broken>" + Bill("031001001001", "lost"));
    folder.WriteFile(u"b.xml"_s, Rules(Bill("031001001002", "pipe")));
    folder.WriteFile(u"c.bak"_s, Rules(Bill("031001001003", "no rule file")));
    EXPECT_EQ(NumbersOf(RuleNumbers(folder.Root()).Find(BaseNumber, Library)),
              CStringArray{u"031001001002"_s});
    EXPECT_TRUE(RuleNumbers(folder.Path(u"none"_s)).Find(BaseNumber, Library).isEmpty());
}

// As when two programs save within one tick of the clock.
TEST(RuleNumbers, NumberThatTookThePlaceOfAnotherIsFoundThoughSizeAndTimeOfTheFileAreTheSame)
{
    const test::TempFolder folder;
    const QDateTime still = QDateTime::fromSecsSinceEpoch(1'700'000'000);
    RuleNumbers numbers(folder.Root());
    for (const QByteArray number : {"031001001001", "031001001002"}) {
        folder.WriteFile(u"a.xml"_s, Rules(Bill(number, "pipe")));
        folder.SetTime(u"a.xml"_s, still);
        EXPECT_EQ(NumbersOf(numbers.Find(BaseNumber, Library)), CStringArray{QString::fromLatin1(number)});
    }
}

TEST(RuleNumbers, ChangedAndVanishedFilesAreSeen)
{
    const test::TempFolder folder;
    folder.WriteFile(u"a.xml"_s, Rules(Bill("031001001001", "pipe")));
    RuleNumbers numbers(folder.Root());
    EXPECT_EQ(NumbersOf(numbers.Find(BaseNumber, Library)), CStringArray{u"031001001001"_s});
    folder.WriteFile(u"a.xml"_s, Rules(Bill("031001001001", "pipe") + Bill("031001001002", "new")));
    EXPECT_EQ(NumbersOf(numbers.Find(BaseNumber, Library)),
              (CStringArray{u"031001001001"_s, u"031001001002"_s}));
    QFile::remove(folder.Native(u"a.xml"_s));
    EXPECT_TRUE(numbers.Find(BaseNumber, Library).isEmpty());
}

TEST(RuleNumbers, DeeplyNestedFileIsRead)
{
    const test::TempFolder folder;
    constexpr int depth = 20000;
    folder.WriteFile(u"a.xml"_s, "<Rules>" + QByteArray("<a>").repeated(depth) +
                                     Bill("031001001001", "pipe") + QByteArray("</a>").repeated(depth) +
                                     "</Rules>");
    EXPECT_EQ(RuleNumbers(folder.Root()).Find(BaseNumber, Library).size(), 1);
}

TEST(RuleNumbers, ProjectsHistoryHoldsTheNumbersOfItsRulesBesideThoseOfItsStart)
{
    const TestProject project;
    project.Put();
    project.Temp().MakeFolder(TestProject::Below(u"app\\自动套配置"_s));
    project.Temp().WriteFile(TestProject::Below(u"app\\自动套配置\\DefaultConfig.xml"_s), SampleRules());
    embedded::EmbeddedHost host(project.Folder());
    CArray<SQdInfo> items(1);
    ASSERT_TRUE(host.Roles().libraries->GetQdInfoByQdNum(BaseNumber, items));
    EXPECT_EQ(NumbersOf(items), (CStringArray{u"031001001001"_s, u"031001001002"_s, u"031001001003"_s,
                                              u"031001001004"_s, u"031001001005"_s, u"031001001006"_s}));
    host.SetLibrary(embedded::LibraryRole::Bill, u"GB50500-2008"_s);
    ASSERT_TRUE(host.Roles().libraries->GetQdInfoByQdNum(BaseNumber, items));
    EXPECT_TRUE(items.isEmpty()) << "they are all of the library from which the project started";
}
