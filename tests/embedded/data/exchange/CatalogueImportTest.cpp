#include "embedded/ImportFixture.h"

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::ImportReport;
using embedded::TableKind;

namespace {

using CatalogueImport = test::ImportFixture;

const CString CategoryHeader = u"specialty,big_category,small_category_id,small_category\n"_s;

CString IdOf(const test::TestProject& project, const CString& fullName)
{
    EmbeddedHost host(project.Folder());
    SNvKtSmallCategoryId id;
    EXPECT_TRUE(host.Roles().categories->SmallCategoryNameToId(fullName, id)) << fullName.toStdString();
    return id.strSmallCategoryId;
}

} // namespace

TEST_F(CatalogueImport, NewCategoriesGetFreshIdsAndTheLevelsAboveThem)
{
    const ImportReport report =
        Import(TableKind::Catalogue,
               CategoryHeader + u"自控,仪表,,温度仪表\n自控,仪表,,压力仪表\n给排水,管道,,直饮水管\n"_s);
    EXPECT_EQ(report.added, 3) << Refusals(report).toStdString();
    EXPECT_GT(IdOf(m_project, u"给排水\\管道\\直饮水管"_s).toInt(), 0);
    EXPECT_NE(IdOf(m_project, u"自控\\仪表\\温度仪表"_s), IdOf(m_project, u"自控\\仪表\\压力仪表"_s));
}

TEST_F(CatalogueImport, NamesThatCannotBeTagsAreRefusedWithTheirLines)
{
    const ImportReport report = Import(
        TableKind::Catalogue,
        CategoryHeader + u"给排水,管道,,1号管\n给 排水,管道,,甲\n给排水,管\\道,,甲\n给排水,管道,,\n"_s);
    EXPECT_FALSE(report.stored);
    ASSERT_EQ(report.refused.size(), 4);
    for (int row = 0; row < 4; ++row)
        EXPECT_EQ(report.refused[row].line, row + 2);
    EXPECT_TRUE(Refusals(report).contains(u"2:小类（small_category）“1号管”不能作为 XML 元素名"_s));
}

TEST_F(CatalogueImport, NamesWithAColonAreRefusedInEveryLevel)
{
    const ImportReport report = Import(
        TableKind::Catalogue, CategoryHeader + u"自:控,仪表,,甲\n给排水,管:道,,乙\n给排水,管道,,丙:丁\n"_s);
    EXPECT_FALSE(report.stored);
    ASSERT_EQ(report.refused.size(), 3) << Refusals(report).toStdString();
    for (const embedded::RefusedRow& row : report.refused)
        EXPECT_TRUE(row.reason.contains(u"冒号"_s)) << row.reason.toStdString();
}

TEST_F(CatalogueImport, IdsStayWithTheirCategories)
{
    const CString id = IdOf(m_project, u"给排水\\管道\\给水管"_s);
    const ImportReport report = Import(
        TableKind::Catalogue,
        CategoryHeader + u"给排水,管道,987654,给水管\n给排水,管道,%1,新管\n给排水,管道,x,新新管\n"_s.arg(id));
    ASSERT_EQ(report.refused.size(), 3);
    EXPECT_TRUE(report.refused[0].reason.contains(id));
    EXPECT_TRUE(report.refused[1].reason.contains(u"给水管"_s));
}

TEST_F(CatalogueImport, IdOfARemovedCategoryIsNotGivenOutAgain)
{
    const CString before = Exported(TableKind::Catalogue);
    ASSERT_TRUE(Import(TableKind::Catalogue, CategoryHeader + u"给排水,管道,,临时管\n"_s).stored);
    const int given = IdOf(m_project, u"给排水\\管道\\临时管"_s).toInt();
    ASSERT_EQ(Import(TableKind::Catalogue, before, {.replace = true}).removed, 1);
    ASSERT_TRUE(Import(TableKind::Catalogue, CategoryHeader + u"给排水,管道,,另一管\n"_s).stored);
    EXPECT_GT(IdOf(m_project, u"给排水\\管道\\另一管"_s).toInt(), given);
}

TEST_F(CatalogueImport, ReplacingUnderTheSameIdRenamesAndTakesTheAttributesAlong)
{
    CString table = Exported(TableKind::Catalogue);
    const auto attributes = [&] { return Exported(TableKind::Attributes).count(u"给水立管,"_s); };
    const auto former = Exported(TableKind::Attributes).count(u"给排水\\管道\\给水管,"_s);
    ASSERT_GT(former, 0);
    const auto units = [&] { return Exported(TableKind::Attributes).count(u",mm\r\n"_s); };
    const auto formerUnits = units();
    ASSERT_GT(formerUnits, 100);
    const ImportReport report =
        Import(TableKind::Catalogue, table.replace(u",给水管,"_s, u",给水立管,"_s), {.replace = true});
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_TRUE(report.notes.isEmpty());
    EXPECT_EQ(attributes(), former);
    EXPECT_EQ(units(), formerUnits);
}

TEST_F(CatalogueImport, WhatHangsOnARemovedCategoryGoesAndIsTold)
{
    CStringArray lines = Exported(TableKind::Catalogue).split(u'\n');
    lines.removeIf([](const CString& line) { return line.contains(u",给水管,"_s); });
    const ImportReport report = Import(TableKind::Catalogue, lines.join(u'\n'), {.replace = true});
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_EQ(report.removed, 1);
    EXPECT_EQ(report.notes.size(), 2);
    EXPECT_FALSE(Exported(TableKind::Attributes).contains(u"给排水\\管道\\给水管,"_s));
    EXPECT_NO_THROW(EmbeddedHost(m_project.Folder()));
}

TEST_F(CatalogueImport, CurrentSpecialtyOfTheProjectCannotBeRemoved)
{
    const CString before = Exported(TableKind::Catalogue);
    const ImportReport report =
        Import(TableKind::Catalogue, CategoryHeader + u"自控,仪表,,温度仪表\n"_s, {.replace = true});
    EXPECT_FALSE(report.stored);
    EXPECT_TRUE(Refusals(report).startsWith(u"0:"_s) && Refusals(report).contains(u"给排水"_s));
    EXPECT_EQ(Exported(TableKind::Catalogue), before);
}

TEST_F(CatalogueImport, BigCategoryOfWhichTheTreeShowsNothingIsRefused)
{
    const ImportReport report =
        Import(TableKind::Catalogue, CategoryHeader + u"电气,线,,导线·导管\n电气,线,,组合管线甲\n"_s);
    ASSERT_EQ(report.refused.size(), 1);
    EXPECT_EQ(report.refused[0].line, 3);
    EXPECT_TRUE(
        Import(TableKind::Catalogue, CategoryHeader + u"电气,线,,导线·导管\n电气,线,,电线\n"_s).stored);
}
