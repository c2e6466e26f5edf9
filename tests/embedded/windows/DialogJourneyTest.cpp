#include "dialogs/AutoConfigIds.h"
#include "dialogs/CAutoConfigDlg.h"
#include "dialogs/ModalUser.h"
#include "dialogs/secondary/wizard/COnlineAutoConfigDlg.h"
#include "embedded/windows/PickerFixture.h"
#include "embedded/windows/WindowUser.h"

#include <QtCore/QDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeWidget>

using namespace Qt::StringLiterals;
using namespace test;
using namespace dialogs::autoconfig;

// The main dialog over the default host with its own windows.

namespace {

class DialogJourney : public EmbeddedWindowsTest
{
protected:
    DialogJourney() { OpenDialog(); }
    ~DialogJourney() override { m_dialog.reset(); }

    void OpenDialog() { Open(std::make_unique<CAutoConfigDlg>(CString())); }
    void OpenWizard()
    {
        Open(std::make_unique<COnlineAutoConfigDlg>(m_project.Path(u"app\\自动套配置\\DefaultConfig.xml"_s),
                                                    CString(), CString(), CString(), true, nullptr));
    }
    void Open(std::unique_ptr<CAutoConfigDlg> dialog)
    {
        m_dialog.reset();
        m_dialog = std::move(dialog);
        m_dialog->Create();
        m_dialog->show();
    }

    void Press(int id) { QTest::mouseClick(m_dialog->GetDlgItem(id), Qt::LeftButton); }
    void SelectCategory(const CString& name)
    {
        auto& tree = m_dialog->Item<QTreeWidget>(CategoryTree);
        tree.setCurrentItem(tree.findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0));
    }
    /// The picker that is open; null when none is.
    QDialog* OpenPicker() const
    {
        for (QDialog* window : m_dialog->findChildren<QDialog*>()) {
            if (window->isVisible()) return window;
        }
        return nullptr;
    }
    CStringArray GridColumn(int column) const
    {
        const auto& grid = m_dialog->Item<CGridCtrl>(Grid);
        CStringArray texts;
        for (int row = 1; row < grid.GetRowCount(); ++row)
            texts.append(grid.GetItemText(row, column));
        return texts;
    }
    int RuleCount() const { return m_dialog->Item<QTreeWidget>(RuleRows).topLevelItemCount(); }
    /// Picks the first bill of the category; `step` is what the user does about its number.
    void PickABill(const ModalStep& step = Clicks(u"确定"_s))
    {
        Press(PickerButton);
        InModalWindows({step});
        DoubleClickRow(Named<QTableView>(*OpenPicker(), u"项目"_s), 0);
        Press(PickerButton);
    }
    /// Clicks the formula of the first item; `step` is what the user does in the calculator.
    void ClickFormula(const ModalStep& step)
    {
        auto& grid = m_dialog->Item<CGridCtrl>(Grid);
        const QModelIndex cell = grid.model()->index(0, 3);
        grid.scrollTo(cell);
        InModalWindows({step});
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(cell).center());
    }
    static ModalStep Clicks(const CString& caption)
    {
        return [caption](QWidget& window) { ClickButton(window, caption); };
    }
    /// Puts a template without rules on the cloud disk and opens it; the steps are what the user does there.
    void ImportFrom(const TempFolder& cloud, const CString& name, std::initializer_list<ModalStep> steps)
    {
        cloud.WriteFile(name + u".xml"_s, "<自动套清单定额配置信息 Version=\"1.2.0\"/>");
        m_windows->SetCloudFolder(cloud.Native({}));
        InModalWindows(steps);
        Press(NetDiskButton);
    }
    static CString RuleFolder() { return TestProject::Below(u"app\\自动套配置"_s); }
    static CString CurrentFile() { return RuleFolder() + u"\\DefaultConfig.xml"_s; }
    CStringArray Backups() const
    {
        return QDir(m_project.Temp().Native(RuleFolder())).entryList({u"*.bak"_s}, QDir::Files);
    }
    CString Chapter() const { return Named<QTreeWidget>(*OpenPicker(), u"章节"_s).currentItem()->text(0); }

    std::unique_ptr<CAutoConfigDlg> m_dialog;
};

TEST_F(DialogJourney, BillAndItsQuotasArePickedIntoTheRule)
{
    Press(PickerButton);
    ASSERT_NE(OpenPicker(), nullptr);
    EXPECT_TRUE(Chapter().startsWith(u"031001 "_s));
    InModalWindows({[](QWidget& number) { ClickButton(number, u"确定"_s); }});
    DoubleClickRow(Named<QTableView>(*OpenPicker(), u"项目"_s), 0);
    DoubleClickRow(Named<QTableView>(*OpenPicker(), u"定额"_s), 0);
    DoubleClickRow(Named<QTableView>(*OpenPicker(), u"定额"_s), 1);
    EXPECT_EQ(GridColumn(1), (CStringArray{u"031001001003"_s, u"示10-1-1"_s, u"示10-1-2"_s}));
    EXPECT_EQ(GridColumn(4), CStringArray(3, u"管道长度"_s));
    EXPECT_EQ(GridColumn(5), CStringArray(3, u"是"_s));
    EXPECT_EQ(m_messages.Texts(), CStringArray());
}

TEST_F(DialogJourney, ProposedNumberFollowsThoseOfAllRuleFilesOfTheProject)
{
    m_project.Temp().MakeFolder(RuleFolder());
    m_project.Temp().WriteFile(RuleFolder() + u"\\别的.xml"_s,
                               "<Rules><qd strQdId=\"031001001009\"/></Rules>");
    PickABill();
    EXPECT_EQ(GridColumn(1), CStringArray{u"031001001010"_s});
}

TEST_F(DialogJourney, SecondNewBillOfABaseGetsANumberOfItsOwnBeforeAnythingIsSaved)
{
    PickABill();
    PickABill();
    EXPECT_EQ(GridColumn(1), (CStringArray{u"031001001003"_s, u"031001001004"_s}));
    Press(AddRuleButton);
    PickABill();
    EXPECT_EQ(GridColumn(1), CStringArray{u"031001001005"_s});
    m_dialog->close();
    const QByteArray file = m_project.Temp().ReadFile(CurrentFile());
    for (const QByteArray number : {"031001001003", "031001001004", "031001001005"})
        EXPECT_EQ(file.count(number), 1) << number.constData();
}

TEST_F(DialogJourney, SecondNewBillOfABaseGetsANumberOfItsOwnInTheWizard)
{
    OpenWizard();
    PickABill();
    PickABill();
    EXPECT_EQ(GridColumn(1), (CStringArray{u"031001001003"_s, u"031001001004"_s}));
}

TEST_F(DialogJourney, NumberThatWasProposedAndCancelledIsProposedAgain)
{
    PickABill(Clicks(u"取消"_s));
    PickABill();
    EXPECT_EQ(GridColumn(1), CStringArray{u"031001001003"_s});
}

TEST_F(DialogJourney, NumberOfTheSameDialogCanBeChosenForAnotherRuleAndSaysWhenItWasGiven)
{
    PickABill();
    Press(AddRuleButton);
    PickABill([](QWidget& window) {
        auto& number = dynamic_cast<dialogs::TemplateDialog&>(window);
        ClickButton(window, u"选用已有清单号"_s);
        auto& list = number.Item<QListWidget>(1113);
        list.setCurrentRow(list.count() - 1);
        EXPECT_TRUE(number.ItemText(1069).contains(u"打开配置以来给出的编号"_s));
        ClickButton(window, u"确定"_s);
    });
    EXPECT_EQ(GridColumn(1), CStringArray{u"031001001003"_s});
}

TEST_F(DialogJourney, PickerFollowsTheCategoryAndGoesWithTheDialog)
{
    Press(PickerButton);
    SelectCategory(u"水表"_s);
    EXPECT_TRUE(Chapter().startsWith(u"031003 "_s));
    Press(PickerButton);
    EXPECT_EQ(OpenPicker(), nullptr);
    Press(PickerButton);
    m_dialog->close();
    EXPECT_EQ(OpenPicker(), nullptr);
}

TEST_F(DialogJourney, QuotaModeHasItsOwnPicker)
{
    m_host->SetMode(SQdDeInfo::QuotaMode);
    OpenDialog();
    Press(PickerButton);
    ASSERT_NE(OpenPicker(), nullptr);
    EXPECT_EQ(OpenPicker()->windowTitle(), u"套定额"_s);
    TypeText(Named<QLineEdit>(*OpenPicker(), u"搜索项目"_s), u"示10-1-1 )15"_s);
    ClickButton(*OpenPicker(), u"选用定额"_s);
    EXPECT_EQ(GridColumn(1), CStringArray{u"示10-1-1"_s});
}

TEST_F(DialogJourney, StandsInTheMiddleOfTheHostsMainFrame)
{
    QWidget frame;
    frame.setGeometry(-301, -203, 2901, 2701);
    frame.show();
    m_windows->SetMainFrame(&frame);
    OpenDialog();
    const QRect outer = frame.frameGeometry();
    const QRect own = m_dialog->frameGeometry();
    EXPECT_EQ(own.topLeft(), QPoint(outer.width() / 2 - own.width() / 2 + outer.left(),
                                    outer.height() / 2 - own.height() / 2 + outer.top()));
}

TEST_F(DialogJourney, FormulaThatTheCalculatorAcceptsEntersTheRule)
{
    PickABill();
    ClickFormula([](QWidget& calculator) {
        auto& formula = Named<QLineEdit>(calculator, u"计算公式"_s);
        EXPECT_EQ(formula.text(), u"管道长度"_s);
        formula.end(false);
        TypeText(formula, u"*2"_s);
        ClickButton(calculator, u"确定"_s);
    });
    EXPECT_EQ(GridColumn(4), CStringArray{u"管道长度*2"_s});
    m_dialog->close();
    EXPECT_TRUE(m_project.Temp().ReadFile(CurrentFile()).contains("管道长度*2"));
}

TEST_F(DialogJourney, FormulaIsLeftAloneWhenTheCalculatorIsCancelled)
{
    PickABill();
    ClickFormula([](QWidget& calculator) {
        TypeText(Named<QLineEdit>(calculator, u"计算公式"_s), u"*2"_s);
        ClickButton(calculator, u"取消"_s);
    });
    EXPECT_EQ(GridColumn(4), CStringArray{u"管道长度"_s});
    m_dialog->close();
    EXPECT_FALSE(m_project.Temp().ReadFile(CurrentFile()).contains("*2"));
}

TEST_F(DialogJourney, ImportedTemplateBecomesTheFileOfTheDialog)
{
    const TempFolder cloud;
    ImportFrom(cloud, u"云上"_s, {Clicks(u"导入"_s), Clicks(u"关闭"_s)});
    EXPECT_EQ(m_dialog->windowTitle(), u"自动套配置-[ 清单模式: 云上 ]"_s);
    EXPECT_EQ(m_messages.Texts(), CStringArray());
}

TEST_F(DialogJourney, ImportOverTheBoundFileDropsTheEditsAndKeepsABackup)
{
    Press(AddRuleButton);
    m_dialog->close();
    const QByteArray former = m_project.Temp().ReadFile(CurrentFile());
    OpenDialog();
    Press(AddRuleButton);
    ASSERT_EQ(RuleCount(), 3);
    const TempFolder cloud;
    ImportFrom(cloud, u"DefaultConfig"_s, {Clicks(u"导入"_s), Clicks(u"覆盖"_s), Clicks(u"关闭"_s)});
    EXPECT_EQ(m_dialog->windowTitle(), u"自动套配置-[ 清单模式: DefaultConfig ]"_s);
    EXPECT_EQ(RuleCount(), 1);
    const CStringArray backups = Backups();
    ASSERT_EQ(backups.size(), 1);
    EXPECT_EQ(m_project.Temp().ReadFile(RuleFolder() + u'\\' + backups.first()), former);
    EXPECT_EQ(m_messages.Texts(), CStringArray());
}

TEST_F(DialogJourney, ImportThatDoesNotSwitchReadsTheCurrentFileAgainAllTheSame)
{
    Press(AddRuleButton);
    ASSERT_EQ(RuleCount(), 2);
    const TempFolder cloud;
    const ModalStep keepTheCurrent = [](QWidget& window) {
        QTest::keyClick(&Button(window, u"导入后使用此配置"_s), Qt::Key_Space);
    };
    ImportFrom(cloud, u"云上"_s, {keepTheCurrent, Clicks(u"导入"_s), Clicks(u"关闭"_s)});
    EXPECT_TRUE(m_project.Temp().Exists(RuleFolder() + u"\\云上.xml"_s));
    EXPECT_EQ(m_dialog->windowTitle(), u"自动套配置-[ 清单模式: DefaultConfig ]"_s);
    EXPECT_EQ(RuleCount(), 1);
    EXPECT_EQ(m_messages.Texts(), CStringArray());
}

} // namespace
