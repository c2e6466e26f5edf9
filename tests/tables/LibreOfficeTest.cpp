#include "TableFixture.h"

#include "support/Patience.h"
#include "tables/CreateTable.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QUrl>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tables::ColumnKind;

namespace {

/// A spreadsheet program that knows nothing of this one opens what was written.
class LibreOffice : public testing::Test
{
protected:
    void SetUp() override
    {
        m_program = QStandardPaths::findExecutable(u"soffice"_s);
        if (m_program.isEmpty()) GTEST_SKIP() << "no soffice here; package libreoffice-calc-nogui has it";
        Write();
    }

    void Write() const
    {
        const auto writer = tables::CreateTable(m_folder.Path(u"账.xlsx"_s));
        writer->BeginSheet(
            u"清单"_s, {{u"编号"_s}, {u"数量"_s, ColumnKind::Number, 2}, {u"重量"_s, ColumnKind::Number}});
        for (const CStringArray& row : Rows()) {
            writer->Text(row[0]);
            writer->Number(row[1]);
            writer->Number(row[2]);
            writer->EndRow();
        }
        writer->BeginSheet(u"构件"_s, {{u"清单"_s}});
        writer->Link(u"030801001001"_s, u"清单"_s, 2);
        writer->EndRow();
        writer->Finish();
    }

    static CArray<CStringArray> Rows()
    {
        return {{u"030801001001"_s, u"12.5"_s, u"0.1"_s},
                {u"=1+1"_s, u"-3"_s, u"30801001001"_s},
                {u"引\"号\", <&> "_s, u"0.005"_s, u"123456789.123456"_s},
                {u"两\n行"_s, u"0"_s, u"0.000001"_s},
                {u"50"_s, u"99999999999"_s, u"1"_s}};
    }

    CArray<CStringArray> Expected() const
    {
        return CArray<CStringArray>{{u"编号"_s, u"数量"_s, u"重量"_s}} + Rows();
    }

    /// Lets the program write the workbook in another form, and gives the bytes of that.
    QByteArray Converted(const QString& form, const CString& made) const
    {
        const CString profile = QUrl::fromLocalFile(m_folder.Native(u"profile"_s)).toString();
        const CString into = m_folder.Native(u"out"_s);
        QProcess process;
        process.start(m_program,
                      {u"-env:UserInstallation="_s + profile, u"--headless"_s, u"--norestore"_s,
                       u"--convert-to"_s, form, u"--outdir"_s, into, m_folder.Native(u"账.xlsx"_s)});
        test::WaitForEnd(process);
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return m_folder.ReadFile(u"out\\"_s + made);
    }

    test::TempFolder m_folder;

private:
    QString m_program;
};

} // namespace

TEST_F(LibreOffice, GivesBackTheSameFiguresAsCsv)
{
    // Comma, quote, UTF-8, from the first line on; numbers as they are, not as they are shown.
    const QByteArray csv =
        Converted(u"csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false"_s, u"账.csv"_s);
    EXPECT_EQ(test::FieldsOf(csv, u"a.csv"_s), Expected());
}

TEST_F(LibreOffice, WorkbooksThatItWritesAreRead)
{
    EXPECT_EQ(test::FieldsOf(Converted(u"ods"_s, u"账.ods"_s), u"a.ods"_s), Expected());
    const QByteArray xlsx = Converted(u"xlsx"_s, u"账.xlsx"_s);
    EXPECT_EQ(test::FieldsOf(xlsx, u"a.xlsx"_s), Expected());
    EXPECT_EQ(test::FieldsOf(xlsx, u"a.xlsx"_s, u"构件"_s),
              (CArray<CStringArray>{{u"清单"_s}, {u"030801001001"_s}}));
}
