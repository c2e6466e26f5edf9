#include "cli/CliTesting.h"

#include <QtCore/QJsonArray>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

class LibraryVerb : public testing::Test
{
protected:
    LibraryVerb() : m_cli(u"bill"_s) {}

    QJsonArray Listed() const
    {
        return m_cli.RunInProject({u"library"_s, u"--json"_s}).Json().value(u"libraries"_s).toArray();
    }
    /// The codes of the libraries in use, in the order of the list.
    QStringList InUse() const
    {
        QStringList codes;
        for (const QJsonValue& library : Listed()) {
            if (library[u"inUse"_s].toBool()) codes.append(library[u"code"_s].toString());
        }
        return codes;
    }
    test::Outcome Use(const QString& code) const
    {
        return m_cli.RunInProject({u"library"_s, u"use"_s, code});
    }
    test::Outcome ImportLibraries(const QByteArray& csv) const
    {
        m_cli.Folder().WriteFile(u"libraries.csv"_s, csv);
        return m_cli.RunInProject({u"import"_s, u"libraries"_s, u"libraries.csv"_s, u"--replace"_s});
    }

    Cli m_cli;
};

} // namespace

TEST_F(LibraryVerb, ListsEveryLibraryAndMarksThoseInUse)
{
    const test::Outcome outcome = m_cli.RunInProject({u"library"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QStringList lines = outcome.Out().split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 7) << outcome.out.toStdString();
    static const QRegularExpression used(
        u"^\\*  清单库 +GB50856-2013 +通用安装工程工程量计算规范2013 +全国 +2013 +524$"_s);
    EXPECT_TRUE(used.match(lines[1]).hasMatch()) << lines[1].toStdString();
    EXPECT_TRUE(lines[2].startsWith(u"   清单库"_s)) << lines[2].toStdString();
    EXPECT_EQ(outcome.Out().count(u"\n*"_s), 3);
    EXPECT_TRUE(lines[0].endsWith(u"指引的清单库"_s)) << lines[0].toStdString();
    EXPECT_TRUE(lines[4].endsWith(u" GB50500-2008"_s)) << lines[4].toStdString();
}

TEST_F(LibraryVerb, JsonHoldsRoleNameAndNumberOfItems)
{
    const QJsonArray libraries = Listed();
    ASSERT_EQ(libraries.size(), 6);
    const QJsonObject library = libraries[3].toObject();
    EXPECT_EQ(library[u"role"_s].toString(), u"qd_de"_s);
    EXPECT_EQ(library[u"code"_s].toString(), u"DEMO-QDDE-2025"_s);
    EXPECT_EQ(library[u"name"_s].toString(), u"示例安装补充定额（清单模式）"_s);
    EXPECT_EQ(library[u"local"_s].toString(), u"示例"_s);
    EXPECT_EQ(library[u"year"_s].toString(), u"2025"_s);
    EXPECT_GT(library[u"items"_s].toInt(), 50);
    EXPECT_EQ(library[u"billLibrary"_s].toString(), u"GB50500-2008"_s);
    EXPECT_EQ(libraries[0][u"billLibrary"_s].toString(), QString());
    EXPECT_EQ(InUse(), (QStringList{u"GB50856-2013"_s, u"DEMO-QDDE-2024"_s, u"DEMO-DE-2024"_s}));
}

TEST_F(LibraryVerb, UsedLibraryTakesThePlaceOfItsRoleOnly)
{
    const test::Outcome outcome = Use(u"GB50500-2008"_s);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Out().startsWith(u"清单库：GB50500-2008 建设"_s)) << outcome.out.toStdString();
    EXPECT_EQ(InUse(), (QStringList{u"GB50500-2008"_s, u"DEMO-QDDE-2024"_s, u"DEMO-DE-2024"_s}));
    EXPECT_TRUE(m_cli.RunInProject({u"export"_s, u"bill"_s, u"-"_s}).Out().contains(u"030801001,镀锌钢管"_s));
}

TEST_F(LibraryVerb, HintsAtQuotaLibrariesWhoseGuideIsOfAnotherBillLibrary)
{
    const QString bills = Use(u"GB50500-2008"_s).Out();
    EXPECT_TRUE(bills.contains(u"提示：清单模式的定额库 DEMO-QDDE-2024 的指引是清单库 GB50856-2013 的"_s));
    EXPECT_EQ(bills.count(u"提示"_s), 2) << bills.toStdString();
    EXPECT_EQ(Use(u"DEMO-QDDE-2025"_s).Out().count(u"提示"_s), 0) << "the guide is of the library in use";
    EXPECT_EQ(Use(u"DEMO-QDDE-2024"_s).Out().count(u"提示"_s), 1);
}

TEST_F(LibraryVerb, UnknownLibraryIsRefusedWithTheCodesThatThereAre)
{
    const test::Outcome outcome = Use(u"GB1"_s);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.Err().contains(u"GB1"_s) && outcome.Err().contains(u"DEMO-DE-2025"_s))
        << outcome.err.toStdString();
    EXPECT_EQ(InUse().first(), u"GB50856-2013"_s);
}

TEST_F(LibraryVerb, ItemsOfOtherLibrariesStayInTheFileAndAreRemarkedOn)
{
    m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
    m_cli.Folder().WriteFile(Cli::RuleFile(), Cli::Sample());
    const QStringList show{u"show"_s, u"--category"_s, u"给水管"_s};
    const QString before = m_cli.RunInProject(show).Out();
    EXPECT_TRUE(before.contains(u"031001001"_s) && !before.contains(u"其他库"_s)) << before.toStdString();
    Use(u"GB50500-2008"_s);
    const QString other = m_cli.RunInProject(show).Out();
    EXPECT_TRUE(other.contains(u" 清单（其他库）  031001001"_s)) << other.toStdString();
    EXPECT_TRUE(other.contains(u" └定额  "_s)) << "the quota library is the same";
    const QByteArray change = R"({"op": "AddConfig", "path": {"category": "给排水\\管道\\热水管"}})";
    ASSERT_EQ(m_cli.Batch(change + "\n{\"op\": \"Save\"}\n").status, 0);
    Use(u"GB50856-2013"_s);
    EXPECT_EQ(m_cli.RunInProject(show).Out(), before);
}

TEST_F(LibraryVerb, LibrariesAreRemovedWithTheirItemsUnlessTheProjectUsesThem)
{
    QByteArray kept;
    for (const QByteArray& line : m_cli.RunInProject({u"export"_s, u"libraries"_s, u"-"_s}).out.split('\n')) {
        if (!line.contains("2008") && !line.contains("2025")) kept += line + '\n';
    }
    ASSERT_EQ(Use(u"GB50500-2008"_s).status, 0);
    const test::Outcome used = ImportLibraries(kept);
    EXPECT_EQ(used.status, 1);
    EXPECT_TRUE(used.Err().contains(u"GB50500-2008"_s)) << used.err.toStdString();
    EXPECT_EQ(Listed().size(), 6);
    ASSERT_EQ(Use(u"GB50856-2013"_s).status, 0);
    const test::Outcome unused = ImportLibraries(kept);
    EXPECT_EQ(unused.status, 0) << unused.err.toStdString();
    EXPECT_TRUE(unused.Out().contains(u"去掉 3\n随库去掉的清单和定额：223 项\n"_s))
        << unused.out.toStdString();
    EXPECT_EQ(Listed().size(), 3);
}
