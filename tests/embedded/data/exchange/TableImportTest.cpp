#include "embedded/ImportFixture.h"
#include "platform/Encoding.h"
#include "platform/Files.h"
#include "support/FaultyFileSystem.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::ImportReport;
using embedded::TableKind;
using test::BillHeader;
using test::BillRow;
using test::BillRows;
using test::ErrorOf;

namespace {

using TableImport = test::ImportFixture;

} // namespace

TEST_F(TableImport, EncodingsAndHeadersInEitherLanguageCountAlike)
{
    const CString chinese = u"编号,名称,单位,章节,章节名称\n099901001,自有,m,0999,自有章\n"_s;
    const CString english = u"NUMBER, Name ,unit,Section,SECTION_TITLE\n099901001,自有,m,0999,自有章\n"_s;
    using enum platform::Encoding;
    for (const platform::Encoding encoding : {Utf8, Utf8Bom, Gb18030, Utf16Le}) {
        for (const CString& text : {chinese, english}) {
            const ImportReport report = ImportBytes(TableKind::Bill, *platform::Encode(text, encoding));
            EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
            EXPECT_TRUE(Exported(TableKind::Bill).contains(u"099901001,自有,m,1,否,,0999,自有章\r\n"_s));
        }
    }
}

TEST_F(TableImport, TrialOfEveryTableNamesTheRowThatWouldGoAndChangesNothing)
{
    using enum TableKind;
    for (const TableKind kind : {Catalogue, Attributes, Bill, Quota, Guide, Calc, Libraries}) {
        const CString table = Exported(kind);
        const qsizetype last = table.lastIndexOf(u"\r\n"_s, -3) + 2;
        const ImportReport report = Import(kind, table.left(last), {.replace = true, .isTrial = true});
        EXPECT_FALSE(report.stored);
        EXPECT_EQ(Refusals(report), CString());
        EXPECT_EQ(report.changedRows, CStringArray());
        ASSERT_EQ(report.removedRows.size(), 1) << static_cast<int>(kind);
        const CStringArray words = report.removedRows.first().split(u' ');
        EXPECT_TRUE(table.mid(last).contains(words.first())) << report.removedRows.first().toStdString();
        EXPECT_EQ(Exported(kind), table);
    }
}

TEST_F(TableImport, QuotesAndCommasInFieldsSurvive)
{
    const CString row = u"099901001,\"自有 \"\"A\"\", B C\",m,0999,自有章\n"_s;
    ASSERT_TRUE(Import(TableKind::Bill, BillHeader + row).stored);
    EmbeddedHost host(m_project.Folder());
    SQdInfo info;
    ASSERT_TRUE(host.Roles().libraries->GetQdInfo(u"099901001"_s, info));
    EXPECT_EQ(info.strName, u"自有 \"A\", B C"_s);
}

TEST_F(TableImport, LineBreaksAndControlCharactersWithinFieldsAreRefused)
{
    for (const CString& control : {u"\n"_s, u"\r\n"_s, u"\t"_s, u"\u0085"_s, u"\u2028"_s}) {
        for (const CString& row : {u"\"0999%1x\",自有,m"_s, u"099901001,\"自%1有\",m"_s,
                                   u"099901001,\"自有%1\",m"_s, u"099901001,自有,\"m%1x\""_s}) {
            const CString text = row.arg(control) + u",0999,自有章\n"_s;
            const ImportReport report = Import(TableKind::Bill, BillHeader + text);
            EXPECT_FALSE(report.stored) << text.toStdString();
            EXPECT_TRUE(Refusals(report).contains(u"控制字符"_s)) << Refusals(report).toStdString();
        }
    }
}

TEST_F(TableImport, BlanksAroundNumbersAndUnitsAreTakenOff)
{
    const ImportReport report =
        Import(TableKind::Bill, BillHeader + u"\t099901001 ,自有, m ,0999,自有章\n"_s);
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_TRUE(Exported(TableKind::Bill).contains(u"099901001,自有,m,"_s));
}

TEST_F(TableImport, CharactersThatNoXmlFileHoldsAreRefusedWithTheirColumn)
{
    const ImportReport report =
        Import(TableKind::Bill, BillHeader + u"099901001,自有,m\u0001,0999,自有章\n"_s);
    EXPECT_EQ(Refusals(report), u"2:单位（unit）含有 XML 文件不能容纳的字符\n"_s);
}

TEST_F(TableImport, NulInTheHeadingIsRefusedByAWholeMessage)
{
    const ImportReport report = Import(TableKind::Bill, u"number,na\0me,unit,section\n"_s);
    EXPECT_EQ(Refusals(report), u"1:表头：第 2 个列名含有换行或其他控制字符\n"_s);
}

TEST_F(TableImport, FileWithoutRowsReplacesNoTableThatHasSome)
{
    const CString before = Exported(TableKind::Guide);
    const CString header = before.section(u'\n', 0, 0) + u'\n';
    const ImportReport report = Import(TableKind::Guide, header, {.replace = true});
    EXPECT_FALSE(report.stored);
    EXPECT_TRUE(Refusals(report).contains(u"没有数据行"_s)) << Refusals(report).toStdString();
    EXPECT_EQ(Exported(TableKind::Guide), before);
    EXPECT_TRUE(Import(TableKind::Guide, header).stored);
    CatalogueSql(u"UPDATE quota_items SET bills = ''"_s);
    EXPECT_TRUE(Import(TableKind::Guide, header, {.replace = true}).stored) << "an empty table comes back";
}

TEST_F(TableImport, ColumnThatTheFileLacksKeepsItsValues)
{
    ASSERT_TRUE(Import(TableKind::Bill, u"number,name,unit,with_annex,cal_rule,section\n"
                                        "031001001,改名,m,是,管道长度,0310\\031001\n"_s)
                    .stored);
    const ImportReport report =
        Import(TableKind::Bill, u"number,name,unit,section\n031001001,再改名,m,0310\\031001\n"_s);
    EXPECT_EQ(report.changed, 1) << Refusals(report).toStdString();
    EXPECT_TRUE(Exported(TableKind::Bill).contains(u"031001001,再改名,m,1,是,管道长度,"_s));
}

TEST_F(TableImport, BadHeadersAreRefusedWithoutARow)
{
    for (const CString& header : {u"number,name,unit\n"_s, u"number,name,unit,section,frob\n"_s,
                                  u"number,name,unit,section,编号\n"_s, u"\"number\"x,name\n"_s}) {
        const ImportReport report = Import(TableKind::Bill, header + BillRow(1));
        EXPECT_FALSE(report.stored);
        ASSERT_EQ(report.refused.size(), 1);
        EXPECT_EQ(report.refused[0].line, 1);
        EXPECT_TRUE(report.refused[0].reason.contains(u"表头"_s));
    }
}

TEST_F(TableImport, FilesThatAreNoTablesAreErrors)
{
    const auto error = [&](const QByteArray& bytes) {
        return ErrorOf([&] { ImportBytes(TableKind::Bill, bytes); });
    };
    EXPECT_TRUE(error({}).contains(u"空文件"_s));
    EXPECT_TRUE(error("\xFF\xFF\xFF").contains(u"GB18030"_s));
    EXPECT_NE(ErrorOf([&] {
                  embedded::Import(m_project.Folder(), TableKind::Bill, m_project.Temp().Native(u"none"_s));
              }),
              u"no error"_s);
    EXPECT_TRUE(ErrorOf([&] {
                    embedded::Import(m_project.Temp().Native(u"."_s), TableKind::Bill, {});
                }).contains(u"没有工程"_s));
}

TEST_F(TableImport, ProgressRisesToTheEndAndAnImportCanBeCancelledAtEveryStep)
{
    const CString before = Exported(TableKind::Bill);
    const CString table = BillRows(2000);
    int calls = 0;
    int last = 0;
    const auto count = [&](int percent) {
        EXPECT_GE(percent, last);
        EXPECT_LE(percent, 100);
        last = percent;
        ++calls;
        return true;
    };
    EXPECT_TRUE(Import(TableKind::Bill, table, {}, count).stored);
    EXPECT_GT(calls, 5);
    ASSERT_TRUE(Import(TableKind::Bill, before, {.replace = true}).stored);
    for (int stop = 0; stop < calls; ++stop) {
        int left = stop;
        const ImportReport report =
            Import(TableKind::Bill, table, {.replace = true}, [&](int) { return left-- > 0; });
        EXPECT_TRUE(report.cancelled) << stop;
        EXPECT_FALSE(report.stored);
        EXPECT_EQ(report.added, 0);
    }
    EXPECT_EQ(Exported(TableKind::Bill), before);
}

TEST_F(TableImport, ExportThatCannotBeWrittenIsAnErrorAndLeavesTheOldFileAlone)
{
    m_project.Temp().WriteFile(u"out.csv"_s, "mine");
    test::FaultyFileSystem files;
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync}) {
        files.Inject(fault);
        if (fault == Write) files.FailAfter(100);
        const CString error = ErrorOf([&] { Exported(TableKind::Bill); });
        EXPECT_TRUE(error.startsWith(m_project.Temp().Native(u"out.csv"_s))) << error.toStdString();
        files.Heal();
        EXPECT_EQ(m_project.Temp().ReadFile(u"out.csv"_s), "mine");
        EXPECT_TRUE(files.FindFiles(m_project.Temp().Root(), u".part"_s).isEmpty());
    }
}

TEST_F(TableImport, ExportOverAFileLeavesNothingElse)
{
    m_project.Temp().WriteFile(u"out.csv"_s, "mine");
    const CStringArray before = platform::Files().FindFiles(m_project.Temp().Root(), {});
    EXPECT_TRUE(Exported(TableKind::Bill).contains(u"031001001"_s));
    EXPECT_EQ(platform::Files().FindFiles(m_project.Temp().Root(), {}).size(), before.size());
}

#if !defined(_WIN32)
TEST_F(TableImport, ExportWritesThroughALinkAndKeepsThePermissions)
{
    const test::TempFolder& folder = m_project.Temp();
    folder.WriteFile(u"kept.csv"_s, "mine");
    const QString kept = folder.Native(u"kept.csv"_s);
    const QFile::Permissions own = QFile::ReadOwner | QFile::WriteOwner;
    ASSERT_TRUE(QFile::setPermissions(kept, own));
    const QFile::Permissions before = QFile::permissions(kept);
    ASSERT_TRUE(QFile::link(kept, folder.Native(u"out.csv"_s)));
    EXPECT_TRUE(Exported(TableKind::Bill).contains(u"031001001"_s));
    EXPECT_TRUE(QFileInfo(folder.Native(u"out.csv"_s)).isSymLink());
    EXPECT_TRUE(folder.ReadFile(u"kept.csv"_s).contains("031001001"));
    EXPECT_EQ(QFile::permissions(kept), before);
}
#endif

TEST_F(TableImport, ExportOverAFolderIsRefused)
{
    m_project.Temp().MakeFolder(u"out.csv"_s);
    EXPECT_NE(ErrorOf([&] { Exported(TableKind::Bill); }), u"no error"_s);
    EXPECT_EQ(platform::Files().FindFolders(m_project.Temp().Root()).count(u"out.csv"_s), 1);
}

TEST_F(TableImport, FiftyThousandRowsAreTakenInAndCanBeOpened)
{
    const ImportReport report = Import(TableKind::Bill, BillRows(50000));
    EXPECT_EQ(report.added, 50000);
    EmbeddedHost host(m_project.Folder());
    EXPECT_TRUE(host.Roles().libraries->IsInQdk(u"900049999"_s));
    EXPECT_TRUE(host.Roles().libraries->IsInQdk(u"031001001"_s));
}
