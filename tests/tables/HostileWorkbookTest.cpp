#include "TableFixture.h"

#include "support/FaultyFileSystem.h"

#include <gtest/gtest.h>

#include <random>

#ifdef __unix__
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;
using test::MakeXlsx;
using test::RefusalOf;

namespace {

const CString Name = u"表.xlsx"_s;

QByteArray SomeRows()
{
    QByteArray rows;
    for (int row = 1; row <= 200; ++row)
        rows += "<row r=\"" + QByteArray::number(row) + "\"><c t=\"s\"><v>0</v></c><c><v>" +
                QByteArray::number(row * 7) + "</v></c><c t=\"inlineStr\"><is><t>镀锌钢管 " +
                QByteArray::number(row * row) + "</t></is></c></row>";
    return rows;
}

/// Reads what may be anything: it is a table or refused, and nothing else happens.
void ReadAnything(const QByteArray& bytes)
{
    const CString refusal = RefusalOf(bytes, u"a.bin"_s);
    EXPECT_FALSE(refusal.isEmpty());
}

/// XML of one part that inflates a thousandfold.
QByteArray Bomb(const QByteArray& before, const QByteArray& piece, int times)
{
    QByteArray part = before;
    part.reserve(before.size() + piece.size() * times);
    for (int i = 0; i < times; ++i)
        part += piece;
    test::Parts parts = test::XlsxParts({});
    parts["xl/worksheets/sheet1.xml"] = part;
    return test::MakeZip(parts);
}

} // namespace

TEST(HostileWorkbook, TruncatedAnywhereIsRefused)
{
    const QByteArray book = MakeXlsx(SomeRows());
    for (qsizetype length = 4; length < book.size(); length += 37)
        EXPECT_NE(RefusalOf(book.first(length), Name), u"no error"_s) << length;
}

TEST(HostileWorkbook, ChangedBytesAreATableOrRefused)
{
    constexpr unsigned Seed = 7;
    SCOPED_TRACE(Seed);
    std::mt19937 random(Seed);
    const QByteArray books[] = {
        MakeXlsx(SomeRows()),
        test::MakeOds("<table:table-row><table:table-cell office:value-type=\"string\"><text:p>a</text:p>"
                      "</table:table-cell></table:table-row>")};
    for (int i = 0; i < 1000; ++i) {
        QByteArray book = books[i % 2];
        for (unsigned change = 0; change <= random() % 8; ++change)
            book[static_cast<qsizetype>(random() % static_cast<unsigned>(book.size()))] =
                static_cast<char>(random());
        ReadAnything(book);
    }
}

TEST(HostileWorkbook, ChangedXmlIsATableOrRefused)
{
    constexpr unsigned Seed = 11;
    SCOPED_TRACE(Seed);
    std::mt19937 random(Seed);
    const test::Parts parts = test::XlsxParts(SomeRows());
    for (int i = 0; i < 500; ++i) {
        test::Parts changed = parts;
        auto part = changed.begin();
        std::advance(part, random() % changed.size());
        QByteArray& xml = part->second;
        const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(xml.size()));
        const auto length = static_cast<qsizetype>(random() % 40);
        if (i % 3 == 0) xml[at] = "<>&\"'/=0-A"[random() % 10];
        if (i % 3 == 1) xml.remove(at, length);
        if (i % 3 == 2) xml.insert(at, xml.mid(at / 2, length));
        ReadAnything(test::MakeZip(changed));
    }
}

TEST(HostileWorkbook, EndlessTagIsRefusedBeforeItFillsMemory)
{
    EXPECT_TRUE(RefusalOf(Bomb("<worksheet><sheetData><row><c r=\"", QByteArray(1 << 20, 'A'), 64), Name)
                    .contains(u"过长的标签"_s));
}

TEST(HostileWorkbook, EndlessTextOfACellIsRefused)
{
    EXPECT_TRUE(
        RefusalOf(Bomb("<worksheet><sheetData><row><c t=\"inlineStr\"><is><t>", QByteArray(1 << 20, ' '), 64),
                  Name)
            .contains(u"文字过长"_s));
}

TEST(HostileWorkbook, EndlessTextOfARowIsRefusedThoughEachCellIsShort)
{
    const QByteArray cell = "<c t=\"inlineStr\"><is><t>" + QByteArray(1 << 20, 'a') + "</t></is></c>";
    const CString refusal = RefusalOf(Bomb("<worksheet><sheetData><row>", cell, 32), Name);
    EXPECT_TRUE(refusal.contains(u"一行的文字过长"_s)) << refusal.toStdString();
}

TEST(HostileWorkbook, DeepNestingIsRefused)
{
    EXPECT_TRUE(RefusalOf(Bomb("<worksheet>", "<a>", 100000), Name).contains(u"嵌套太深"_s));
}

TEST(HostileWorkbook, DocumentTypeIsRefused)
{
    EXPECT_TRUE(RefusalOf(Bomb("<!DOCTYPE a [<!ENTITY b \"c\">]><worksheet>&b;</worksheet>", {}, 0), Name)
                    .contains(u"文档类型"_s));
}

TEST(HostileWorkbook, TextsBeyondAllMeasureAreRefused)
{
    test::Parts parts = test::XlsxParts("<row><c><v>1</v></c></row>");
    QByteArray& texts = parts["xl/sharedStrings.xml"];
    texts = "<sst>";
    const QByteArray text = "<si><t>" + QByteArray(1 << 20, 'x') + "</t></si>";
    for (int i = 0; i < 140; ++i)
        texts += text;
    texts += "</sst>";
    EXPECT_EQ(RefusalOf(test::MakeZip(parts), Name), u"工作簿的文字太多，请改用 CSV 文件"_s);
}

TEST(HostileWorkbook, OldAndEncryptedWorkbooksAreToldApart)
{
    const QByteArray container = QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) + QByteArray(600, '\0');
    EXPECT_TRUE(RefusalOf(container, u"a.xls"_s).contains(u"旧格式"_s));
    const CString word = u"EncryptedPackage"_s;
    const QByteArray utf16(reinterpret_cast<const char*>(word.utf16()), word.size() * 2);
    EXPECT_EQ(RefusalOf(container + utf16, Name), u"工作簿是加密的，请去掉密码再试"_s);
}

TEST(HostileWorkbook, PasswordOfTheArchiveIsRefused)
{
    QByteArray book = MakeXlsx("<row><c><v>1</v></c></row>");
    // The flag of each entry in the directory at the end.
    for (qsizetype at = book.indexOf("PK\x01\x02"); at >= 0; at = book.indexOf("PK\x01\x02", at + 4))
        book[at + 8] = static_cast<char>(book[at + 8] | 1);
    EXPECT_EQ(RefusalOf(book, Name), u"工作簿是加密的，请去掉密码再试"_s);
}

TEST(HostileWorkbook, WhatIsNoRegularFileIsRefused)
{
    const test::TempFolder folder;
    const auto refusal = [](const CString& path) {
        try {
            tables::OpenTable(path);
        } catch (const tables::TableError& error) {
            return error.Reason();
        }
        return u"no error"_s;
    };
    EXPECT_EQ(refusal(folder.MakeFolder(u"a.csv"_s)), u"不是普通文件"_s);
    EXPECT_NE(refusal(folder.Path(u"missing.csv"_s)), u"no error"_s);
#ifdef __unix__
    ASSERT_EQ(mkfifo(folder.Native(u"pipe"_s).toUtf8().constData(), 0600), 0);
    EXPECT_EQ(refusal(folder.Path(u"pipe"_s)), u"不是普通文件"_s);
    EXPECT_EQ(refusal(u"\\dev\\zero"_s), u"不是普通文件"_s);
#endif
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseRead);
    EXPECT_EQ(refusal(folder.WriteFile(u"b.csv"_s, "a")), u"read refused"_s);
}

TEST(HostileWorkbook, RowsOutOfOrderOrWithinEachOtherAreRefused)
{
    const CString refusal = u"工作表“构件”第 4 行：行号无效或者不按顺序，工作表损坏"_s;
    EXPECT_EQ(
        RefusalOf(MakeXlsx("<row r=\"4\"><c><v>1</v></c></row><row r=\"2\"><c><v>2</v></c></row>"), Name),
        refusal);
    EXPECT_EQ(RefusalOf(MakeXlsx("<row r=\"4\"><c><v>1</v></c><row r=\"5\"><c><v>2</v></c></row>"
                                 "<c><v>3</v></c></row>"),
                        Name),
              refusal);
}

TEST(HostileWorkbook, EndOfARowThatBeganWithinACellGivesNoRow)
{
    EXPECT_TRUE(
        test::RecordsOf(MakeXlsx("<c><v>1</v><row r=\"2\"><c><v>2</v></c></row></c>"), Name).isEmpty());
}
