#include "dialogs/AutoConfigIds.h"
#include "dialogs/CAutoConfigDlg.h"
#include "dialogs/ModalUser.h"
#include "embedded/windows/PickerFixture.h"
#include "embedded/windows/WindowUser.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
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
    DialogJourney() : m_dialog(std::make_unique<CAutoConfigDlg>(CString()))
    {
        m_dialog->Create();
        m_dialog->show();
    }
    ~DialogJourney() override { m_dialog.reset(); }

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
    m_dialog.reset();
    m_host->SetMode(SQdDeInfo::QuotaMode);
    m_dialog = std::make_unique<CAutoConfigDlg>(CString());
    m_dialog->Create();
    m_dialog->show();
    Press(PickerButton);
    ASSERT_NE(OpenPicker(), nullptr);
    EXPECT_EQ(OpenPicker()->windowTitle(), u"套定额"_s);
    TypeText(Named<QLineEdit>(*OpenPicker(), u"搜索项目"_s), u"示10-1-1 )15"_s);
    ClickButton(*OpenPicker(), u"选用定额"_s);
    EXPECT_EQ(GridColumn(1), CStringArray{u"示10-1-1"_s});
}

TEST_F(DialogJourney, ImportedTemplateBecomesTheFileOfTheDialog)
{
    const TempFolder cloud;
    cloud.WriteFile(u"云上.xml"_s, "<自动套清单定额配置信息 Version=\"1.2.0\"/>");
    m_windows->SetCloudFolder(cloud.Native({}));
    InModalWindows({[](QWidget& window) {
        ClickButton(window, u"导入"_s);
        ClickButton(window, u"关闭"_s);
    }});
    Press(NetDiskButton);
    EXPECT_EQ(m_dialog->windowTitle(), u"自动套配置-[ 清单模式: 云上 ]"_s);
    EXPECT_EQ(m_messages.Texts(), CStringArray());
}

} // namespace
