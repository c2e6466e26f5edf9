#include "tables/CreateTable.h"

#include "TableFixture.h"
#include "support/FaultyFileSystem.h"

#include <QtCore/QDir>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using tables::Column;
using tables::ColumnKind;
using tables::CreateTable;
using tables::TableError;
using tables::TableWriter;

namespace {

struct Stop
{
};

CArray<Column> SomeColumns()
{
    return {{u"编号"_s}, {u"数量"_s, ColumnKind::Number, 2, 12}, {u"名称"_s, ColumnKind::Text, -1, 40}};
}

/// The tests of what both kinds of file do; the parameter is the name of the file.
class AnyTableWriter : public testing::TestWithParam<const char*>
{
protected:
    CString Name() const { return CString::fromLatin1(GetParam()); }
    CString Path() const { return m_folder.Path(Name()); }
    CArray<CStringArray> Written() const { return test::FieldsOf(m_folder.ReadFile(Name()), Name()); }
    CStringArray Names() const { return platform::Files().FindFiles(m_folder.Root(), {}); }
    bool IsCsv() const { return Name() == u"a.csv"; }

    test::TempFolder m_folder;
};

INSTANTIATE_TEST_SUITE_P(Kinds, AnyTableWriter, testing::Values("a.csv", "a.XLSX"),
                         [](const auto& kind) { return std::string(kind.index == 0 ? "Csv" : "Xlsx"); });

} // namespace

TEST_P(AnyTableWriter, CellsAreReadBackAsTheyWere)
{
    const CStringArray texts{u"030801001001"_s, u"=1+1"_s,    u"+86"_s,    u"<&\"'>"_s, u" 空 "_s,
                             u"两\n行"_s,       u"_x0041_"_s, u"a\rb\t"_s, u"'-x"_s,    u"𠮷"_s};
    const auto writer = CreateTable(Path());
    writer->BeginSheet(u"构件"_s, SomeColumns());
    for (const CString& text : texts) {
        writer->Text(text);
        writer->Number(u"12.50"_s.chopped(1));
        writer->EndRow();
    }
    writer->Empty();
    writer->Number(u"30801001001");
    writer->Text(u"尾"_s);
    writer->EndRow();
    writer->Finish();
    const auto rows = Written();
    ASSERT_EQ(rows.size(), texts.size() + 2);
    EXPECT_EQ(rows[0], (CStringArray{u"编号"_s, u"数量"_s, u"名称"_s}));
    for (qsizetype row = 0; row < texts.size(); ++row)
        EXPECT_EQ(rows[row + 1], (CStringArray{texts[row], u"12.5"_s, {}}));
    EXPECT_EQ(rows.last(), (CStringArray{{}, u"30801001001"_s, u"尾"_s}));
    EXPECT_EQ(Names(), CStringArray{Name()});
}

TEST_P(AnyTableWriter, NothingIsLeftOfAWriterThatDoesNotFinish)
{
    m_folder.WriteFile(Name(), "old");
    for (const int rows : {0, 1, 50000}) {
        const auto writer = CreateTable(Path());
        writer->BeginSheet(u"构件"_s, SomeColumns());
        for (int row = 0; row < rows; ++row)
            writer->EndRow();
    }
    EXPECT_EQ(m_folder.ReadFile(Name()), "old");
    EXPECT_EQ(Names(), CStringArray{Name()});
}

TEST_P(AnyTableWriter, CancelByTheProgressLeavesTheOldFile)
{
    m_folder.WriteFile(Name(), "old");
    for (const qint64 last : {qint64{2048}, qint64{5000}}) {
        const auto write = [&] {
            const auto writer = CreateTable(Path(), {[&](qint64 rows) {
                                                if (rows >= last) throw Stop();
                                            }});
            writer->BeginSheet(u"构件"_s, SomeColumns());
            for (int row = 0; row < 5000; ++row)
                writer->EndRow();
            writer->Finish();
        };
        EXPECT_THROW(write(), Stop);
    }
    EXPECT_EQ(m_folder.ReadFile(Name()), "old");
    EXPECT_EQ(Names(), CStringArray{Name()});
}

TEST_P(AnyTableWriter, EveryFaultOfTheDiskIsToldAndLeavesTheOldFile)
{
    m_folder.WriteFile(Name(), "old");
    const auto write = [&] {
        const auto writer = CreateTable(Path());
        writer->BeginSheet(u"构件"_s, SomeColumns());
        for (int row = 0; row < 20000; ++row) {
            // Numbers that do not pack well, so that there is something to write.
            writer->Text(CString::number(row * 2654435761U));
            writer->EndRow();
        }
        writer->Finish();
    };
    test::FaultyFileSystem files;
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync}) {
        files.Inject(fault);
        if (fault == Write) files.FailAfter(1000);
        EXPECT_THROW(write(), TableError) << static_cast<int>(fault);
        files.Heal();
        EXPECT_EQ(m_folder.ReadFile(Name()), "old");
        EXPECT_EQ(Names(), CStringArray{Name()});
    }
    write();
    EXPECT_EQ(Written().size(), 20001);
}

TEST_P(AnyTableWriter, RowsGoIntoAFileAsTheyCome)
{
    const auto writer = CreateTable(Path());
    writer->BeginSheet(u"甲"_s, SomeColumns());
    std::mt19937 dice(7); // so that nothing packs well
    for (int row = 0; row < 3000; ++row) {
        CString text;
        for (int word = 0; word < 200; ++word)
            text += CString::number(dice());
        writer->Text(text);
        writer->EndRow();
    }
    const auto size = [&] {
        qint64 sum = 0;
        for (const QFileInfo& file : QDir(m_folder.Native({})).entryInfoList(QDir::Files))
            sum += file.size();
        return sum;
    };
    const qint64 before = size();
    writer->Finish();
    EXPECT_GE(before, size() / 2) << "most of it is written, not held";
    EXPECT_EQ(Written().size(), 3001);
}

TEST_P(AnyTableWriter, MisuseIsRaised)
{
    const auto writer = CreateTable(Path());
    writer->BeginSheet(u"构件"_s, {{u"a"_s}});
    EXPECT_THROW(writer->Number(u"1,5"), std::invalid_argument);
    EXPECT_THROW(writer->Number(u"05"), std::invalid_argument);
    writer->Text(u"x");
    EXPECT_THROW(writer->Text(u"y"), std::out_of_range);
    writer->EndRow();
    EXPECT_THROW(writer->Text(CString(QChar(0xD800))), TableError);
}

TEST_P(AnyTableWriter, SameTableGivesTheSameBytes)
{
    const auto write = [&] {
        const auto writer = CreateTable(Path());
        writer->BeginSheet(u"构件"_s, SomeColumns());
        writer->Text(u"x");
        writer->EndRow();
        writer->Finish();
        return m_folder.ReadFile(Name());
    };
    const QByteArray first = write();
    EXPECT_EQ(write(), first);
}

TEST(CsvWriter, IsUtf8WithAMarkAndHasOneSheet)
{
    const test::TempFolder folder;
    const auto writer = CreateTable(folder.Path(u"a.csv"_s));
    writer->BeginSheet(u"构件"_s, {{u"编号"_s}, {u"数量"_s, ColumnKind::Number}});
    writer->Text(u"-x");
    writer->Number(u"-5");
    writer->EndRow();
    EXPECT_THROW(writer->BeginSheet(u"说明"_s, {{u"a"_s}}), TableError);
    writer->Finish();
    EXPECT_EQ(folder.ReadFile(u"a.csv"_s), "\xEF\xBB\xBF编号,数量\r\n'-x,-5\r\n");
}

TEST(XlsxWriter, SheetsAreWrittenOneAfterTheOther)
{
    const test::TempFolder folder;
    const auto writer = CreateTable(folder.Path(u"a.xlsx"_s));
    for (const CString& sheet : {u"清单"_s, u"构 '件'"_s.chopped(1)}) {
        writer->BeginSheet(sheet, {{u"列"_s}});
        writer->Link(sheet, u"清单"_s, 2);
        writer->EndRow();
    }
    writer->Finish();
    const QByteArray bytes = folder.ReadFile(u"a.xlsx"_s);
    EXPECT_EQ(test::FieldsOf(bytes, u"a.xlsx"_s, u"清单"_s), (CArray<CStringArray>{{u"列"_s}, {u"清单"_s}}));
    EXPECT_EQ(test::FieldsOf(bytes, u"a.xlsx"_s, u"构 '件"_s),
              (CArray<CStringArray>{{u"列"_s}, {u"构 '件"_s}}));
}

TEST(XlsxWriter, KindsOfCellsAreKept)
{
    const test::TempFolder folder;
    const auto writer = CreateTable(folder.Path(u"a.xlsx"_s));
    writer->BeginSheet(u"s"_s, {{u"a"_s}, {u"b"_s, ColumnKind::Number, 3}, {u"c"_s}});
    writer->Text(u"50");
    writer->Number(u"50");
    writer->Number(u"1234567890123456");
    writer->EndRow();
    writer->Finish();
    using enum tables::CellKind;
    EXPECT_EQ(test::KindsOf(folder.ReadFile(u"a.xlsx"_s), u"a.xlsx"_s, 1),
              (std::vector<tables::CellKind>{Text, Number, Text}));
}

TEST(XlsxWriter, NamesThatSpreadsheetsDoNotTakeAreRefused)
{
    const test::TempFolder folder;
    const auto writer = CreateTable(folder.Path(u"a.xlsx"_s));
    for (const CString& name :
         {CString(), u"a/b"_s, u"a:b"_s, u"[a]"_s, u"'a"_s, CString(32, u'a'), u"a\nb"_s})
        EXPECT_THROW(writer->BeginSheet(name, {{u"a"_s}}), TableError) << name.toStdString();
    writer->BeginSheet(u"Abc"_s, {{u"a"_s}});
    EXPECT_THROW(writer->BeginSheet(u"aBC"_s, {{u"a"_s}}), TableError);
}

TEST(XlsxWriter, TextThatIsTooLongIsRefusedWithItsPlace)
{
    const test::TempFolder folder;
    const auto writer = CreateTable(folder.Path(u"a.xlsx"_s));
    writer->BeginSheet(u"构件"_s, {{u"a"_s}, {u"b"_s}});
    writer->Text(CString(32767, u'x'));
    try {
        writer->Text(CString(32768, u'x'));
        FAIL();
    } catch (const TableError& error) {
        EXPECT_EQ(error.Where().Text(), u"工作表“构件”第 2 行 B 列"_s);
    }
}

TEST(XlsxWriter, RowsBeyondASheetAreRefused)
{
    const test::TempFolder folder;
    const auto writer = CreateTable(folder.Path(u"a.xlsx"_s));
    writer->BeginSheet(u"构件"_s, {{u"a"_s}});
    for (int row = 0; row < 1048574; ++row)
        writer->EndRow(); // empty rows count, and cost little
    EXPECT_NO_THROW(writer->Number(u"1"));
    writer->EndRow();
    EXPECT_THROW(writer->Number(u"1"), TableError);
    EXPECT_TRUE(platform::Files().FindFiles(folder.Root(), u".xlsx"_s).isEmpty());
}

TEST(TableWriter, WorkbooksThatAreNotWrittenAreRefused)
{
    const test::TempFolder folder;
    for (const CString& name : {u"a.ods"_s, u"a.XLS"_s, u"a.xlsb"_s})
        EXPECT_THROW(CreateTable(folder.Path(name)), TableError) << name.toStdString();
    EXPECT_THROW(CreateTable(folder.Path(u"missing\\a.csv"_s)), TableError);
    EXPECT_TRUE(platform::Files().FindFiles(folder.Root(), {}).isEmpty());
}
