#include "embedded/ImportFixture.h"

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::ImportReport;
using embedded::TableKind;

namespace {

using LibraryImport = test::ImportFixture;

const CString ItemHeader = u"number,name,unit,unit_code,with_annex,section,section_title\n"_s;

} // namespace

TEST_F(LibraryImport, BillItemsThatDoNotFitAreRefusedWithTheirLines)
{
    const ImportReport report =
        Import(TableKind::Bill, ItemHeader + u"31001001,少一位,m,,,0310\\031001,\n"
                                             ",没有编号,m,,,0310\\031001,\n"
                                             "03100-001,横线,m,,,0310\\031001,\n"
                                             "099901001,没有章节,m,,,0999,\n"
                                             "031001001,一,m,,,0310\\031001,\n"
                                             "031001001,二,m,,,0310\\031001,\n"
                                             "031001002, ,m,,,0310\\031001,\n"
                                             "031001002,没有单位,,,,0310\\031001,\n"
                                             "031001002,倍数,m,0,,0310\\031001,\n"
                                             "031001002,管件,m,,也许,0310\\031001,\n"
                                             "031001002,少一个字段,m\n"
                                             "031001002,字\u0001符,m,,,0310\\031001,\n"_s);
    EXPECT_FALSE(report.stored);
    const QList<int> lines{2, 3, 4, 5, 7, 8, 9, 10, 11, 12, 13};
    ASSERT_EQ(report.refused.size(), lines.size()) << Refusals(report).toStdString();
    for (qsizetype row = 0; row < lines.size(); ++row)
        EXPECT_EQ(report.refused[row].line, lines[row]) << Refusals(report).toStdString();
    EXPECT_TRUE(report.refused[0].reason.contains(u"8 位"_s));
    EXPECT_TRUE(report.refused[4].reason.contains(u"第 6 行重复"_s));
}

TEST_F(LibraryImport, NewSectionsAreMadeFromTheirTitles)
{
    ASSERT_TRUE(
        Import(TableKind::Bill, ItemHeader + u"099901001,甲,10m,,是,0999\\099901,自有章\\自有节\n"_s).stored);
    const EmbeddedHost host(m_project.Folder());
    const auto& sections = host.Contents().bills;
    ASSERT_GE(sections.size(), 2U);
    const auto& chapter = sections[sections.size() - 2];
    const auto& section = sections.back();
    EXPECT_EQ(chapter.indexPath + u'=' + chapter.title, u"0999=自有章"_s);
    EXPECT_EQ(section.indexPath + u'=' + section.title, u"0999\\099901=自有节"_s);
    ASSERT_EQ(section.items.size(), 1U);
    EXPECT_EQ(section.items[0].nUnitCode, 10);
    EXPECT_EQ(section.items[0].nWithAnnex, 1);
}

TEST_F(LibraryImport, SectionOfTooManyLevelsIsRefused)
{
    const auto levels = [](qsizetype count, const CString& level) {
        return CStringArray(count, level).join(u'\\');
    };
    EXPECT_TRUE(Import(TableKind::Bill, ItemHeader + u"099901001,甲,m,,,%1,%2\n"_s.arg(levels(32, u"09"_s),
                                                                                       levels(32, u"章"_s)))
                    .stored);
    for (const qsizetype count : {33, 20000}) {
        const ImportReport report =
            Import(TableKind::Bill, ItemHeader + u"099901002,乙,m,,,%1,%2\n"_s.arg(levels(count, u"9"_s),
                                                                                   levels(count, u"章"_s)));
        ASSERT_EQ(report.refused.size(), 1);
        EXPECT_TRUE(report.refused[0].reason.contains(u"最多 32 级"_s)) << Refusals(report).toStdString();
    }
}

TEST_F(LibraryImport, TitlesThatContradictOrHaveTooManyLevelsAreRefused)
{
    const ImportReport report =
        Import(TableKind::Bill, ItemHeader + u"099901001,甲,m,,,0999,章\n"
                                             "099901002,乙,m,,,0999,另一章\n"
                                             "099901003,丙,m,,,0999,部\\章\n"
                                             "099901004,丁,m,,,0999\\099901,\\节\n"_s);
    ASSERT_EQ(report.refused.size(), 3) << Refusals(report).toStdString();
    EXPECT_TRUE(report.refused[0].reason.contains(u"第 2 行矛盾"_s));
}

TEST_F(LibraryImport, ReplacingBillItemsTakesTheGuidesOfTheRemovedAway)
{
    const ImportReport report =
        Import(TableKind::Bill, ItemHeader + u"031001001,镀锌钢管,m,,,0310\\031001,\n"_s, {.replace = true});
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_GT(report.removed, 100);
    EXPECT_EQ(report.notes.size(), 1);
    const EmbeddedHost host(m_project.Folder());
    ASSERT_EQ(host.Contents().bills.size(), 2U) << "the chapter and the section";
    EXPECT_EQ(host.Contents().bills[0].indexPath, u"0310"_s);
    for (const CString& line : Exported(TableKind::Guide).split(u'\n').mid(1))
        EXPECT_TRUE(line.isEmpty() || line.startsWith(u"031001001,"_s)) << line.toStdString();
}

TEST_F(LibraryImport, QuotaNumbersAreFreeAndKeepTheirGuides)
{
    const CString guide = Exported(TableKind::Guide);
    ASSERT_TRUE(Import(TableKind::Quota, Exported(TableKind::Quota), {.replace = true}).stored);
    EXPECT_EQ(Exported(TableKind::Guide), guide);
    ASSERT_TRUE(Import(TableKind::Quota, ItemHeader + u"自-1,安装,10m,,,自,自有\n"_s).stored);
    EXPECT_TRUE(Exported(TableKind::Quota).contains(u"自-1,安装,10m,10,否,,自,自有\r\n"_s));
    const ImportReport report =
        Import(TableKind::Quota, ItemHeader + u"自-1,安装,10m,,,自,自有\n"_s, {.replace = true});
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_EQ(report.notes.size(), 1) << "the guides of the removed quota items";
}

TEST_F(LibraryImport, GuidePairsNeedBothEndsAndAreAddedOrReplaced)
{
    const CString quota = Exported(TableKind::Quota).section(u'\n', 1, 1).section(u',', 0, 0);
    const CString header = u"bill,quota\n"_s;
    const ImportReport bad =
        Import(TableKind::Guide, header + u"999999999,%1\n031001001,无\n,%1\n031001001,%1\n"
                                          "031001001,%1\n"_s.arg(quota));
    ASSERT_EQ(bad.refused.size(), 4) << Refusals(bad).toStdString();
    const ImportReport added = Import(TableKind::Guide, header + u"031001001,%1\n"_s.arg(quota));
    EXPECT_EQ(added.added, 1);
    const auto before = Exported(TableKind::Guide).count(u'\n') - 1;
    const ImportReport replaced =
        Import(TableKind::Guide, header + u"031001001,%1\n"_s.arg(quota), {.replace = true});
    EXPECT_EQ(replaced.removed, before - 1);
    EXPECT_EQ(Exported(TableKind::Guide).count(u'\n'), 2);
}
