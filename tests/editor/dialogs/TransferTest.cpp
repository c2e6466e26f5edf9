#include "editor/dialogs/TransferDialog.h"

#include "editor/EditorFixture.h"

#include <QtCore/QFile>
#include <QtGui/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

TEST(ImportDescription, NamesEveryRefusedRowWithItsLine)
{
    embedded::ImportReport report;
    report.refused = {{7, u"没有这个小类"_s}, {0, u"缺少列"_s}};
    EXPECT_EQ(editor::DescribeImport(report),
              u"没有导入，原有的数据没有变。被拒绝的行：2。\n第 7 行：没有这个小类\n缺少列"_s);
}

TEST(ImportDescription, CountsWhatWasStored)
{
    embedded::ImportReport report;
    report.stored = true;
    report.rows = 6;
    report.added = 1;
    report.changed = 2;
    report.removed = 3;
    EXPECT_EQ(editor::DescribeImport(report), u"已导入 6 行：新增 1，修改 2，删除 3。"_s);
}

TEST(ImportDescription, NamesTheRowsThatBecameOthersOrWent)
{
    embedded::ImportReport report;
    report.stored = true;
    report.changedRows = {u"1 甲：单位“m”改为“km”"_s};
    report.removedRows = {u"2 乙"_s};
    EXPECT_TRUE(editor::DescribeImport(report).endsWith(u"\n修改 1 甲：单位“m”改为“km”\n删除 2 乙"_s));
}

TEST(ImportQuestion, ShowsTheFirstOfTheRowsAndHowManyThereAre)
{
    embedded::ImportReport trial;
    EXPECT_EQ(editor::ImportQuestion(trial), CString());
    trial.changedRows = CStringArray(11, u"甲"_s);
    trial.removedRows = {u"乙"_s};
    EXPECT_EQ(editor::ImportQuestion(trial), u"导入会改变原有的数据：修改 11 行，去掉 1 行\n"_s +
                                                 u"修改 甲\n"_s.repeated(10) + u"……共 12 行\n仍然导入"_s);
}

TEST(ImportDescription, NamesTheLibrary)
{
    embedded::ImportReport report;
    report.cancelled = true;
    report.library = {u"code"_s, u"名称"_s, u"全国"_s, u"2013"_s};
    EXPECT_EQ(editor::DescribeImport(report), u"库：名称 · 全国 2013\n已取消，原有的数据没有变。"_s);
}

namespace {

class Transfer : public test::EditorWindow
{
protected:
    /// What the user does in the dialog that asks for a file.
    static test::NextWindows::Step Naming(const QString& file, const QString& button)
    {
        return [file, button](QDialog& window) {
            window.findChild<QLineEdit*>()->setText(file);
            test::PressButton(window, button);
        };
    }
    /// The same for the bill items.
    static test::NextWindows::Step NamingBillItems(const QString& file, const QString& button)
    {
        return [file, button](QDialog& window) {
            auto* kinds = window.findChild<QComboBox*>();
            kinds->setCurrentIndex(kinds->findData(static_cast<int>(embedded::TableKind::Bill)));
            Naming(file, button)(window);
        };
    }
    void Export(const QString& file)
    {
        const test::NextWindows user({Naming(file, u"导出"_s)});
        m_window.Commands().exportData->trigger();
        ASSERT_TRUE(user.Done());
    }
    /// Gives the report that is shown.
    QString Import(const QString& file) { return Import(Naming(file, u"导入"_s)); }
    QString Import(const test::NextWindows::Step& naming)
    {
        QString report;
        const test::NextWindows user({naming, [&](QDialog& window) {
                                          report = window.findChild<QPlainTextEdit*>()->toPlainText();
                                          window.accept();
                                      }});
        m_window.Commands().importData->trigger();
        EXPECT_TRUE(user.Done());
        return report;
    }
};

} // namespace

TEST_F(Transfer, WhatWasExportedIsImportedWithoutAChange)
{
    ASSERT_TRUE(m_window.OpenProject(MakeProject(u"project"_s)));
    const QString file = Folder(u"out.csv"_s);
    Export(file);
    ASSERT_TRUE(QFile::exists(file));
    EXPECT_THAT(Import(file).toStdString(), HasSubstr("新增 0，修改 0，删除 0"));
    EXPECT_EQ(m_messages.Texts(), QStringList());
}

TEST_F(Transfer, ItemsThatAreThereAreChangedOnlyAfterAQuestionThatNamesThem)
{
    ASSERT_TRUE(m_window.OpenProject(MakeProject(u"project"_s)));
    m_folder.WriteFile(u"own.csv"_s, "number,name,unit,section\n031001001,自有,m,0310\\031001\n");
    m_messages.PresetAnswer(platform::Answer::No);
    {
        const test::NextWindows user({NamingBillItems(Folder(u"own.csv"_s), u"导入"_s)});
        m_window.Commands().importData->trigger();
        EXPECT_TRUE(user.Done());
    }
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_THAT(m_messages.Texts().first().toStdString(),
                HasSubstr("031001001 镀锌钢管：名称“镀锌钢管”改为“自有”"));
    SQdInfo info;
    m_window.OpenedProject()->Roles().libraries->GetQdInfo(u"031001001"_s, info);
    EXPECT_EQ(info.strName, u"镀锌钢管"_s);
    m_messages.PresetAnswer(platform::Answer::Yes);
    EXPECT_THAT(Import(NamingBillItems(Folder(u"own.csv"_s), u"导入"_s)).toStdString(),
                HasSubstr("改为“自有”"));
    m_window.OpenedProject()->Roles().libraries->GetQdInfo(u"031001001"_s, info);
    EXPECT_EQ(info.strName, u"自有"_s);
}

TEST_F(Transfer, RefusedFileIsReportedWithItsLines)
{
    ASSERT_TRUE(m_window.OpenProject(MakeProject(u"project"_s)));
    m_folder.WriteFile(u"bad.csv"_s, "nonsense\n1\n");
    EXPECT_THAT(Import(Folder(u"bad.csv"_s)).toStdString(), HasSubstr("没有导入，原有的数据没有变"));
}
