#include "dialogs/ModalUser.h"
#include "embedded/windows/PickerFixture.h"
#include "embedded/windows/WindowUser.h"
#include "support/WindowWaits.h"

#include <QtGui/QScreen>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeWidget>

#include <gmock/gmock.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace test;

namespace {

constexpr int NumberColumn = 0;
constexpr int NameColumn = 1;

/// A bill picker as the main dialog uses it, shown beside its parent.
class BillPicker : public EmbeddedWindowsTest
{
protected:
    BillPicker()
    {
        m_picker.SetShowGetQdNumDlg(false);
        m_picker.Create(&m_parent);
        m_picker.ShowWindow(true);
        m_picker.MoveWndToRight(&m_parent);
        m_picker.InitQdDeData();
    }

    QTableView& Bills() const { return Named<QTableView>(Window(), u"项目"_s); }
    QTableView& Quotas() const { return Named<QTableView>(Window(), u"定额"_s); }
    QLineEdit& Search() const { return Named<QLineEdit>(Window(), u"搜索项目"_s); }
    QLineEdit& QuotaSearch() const { return Named<QLineEdit>(Window(), u"搜索定额"_s); }
    QTreeWidget& Chapters() const { return Named<QTreeWidget>(Window(), u"章节"_s); }

    /// The numbers of the quotas that the library names for a bill.
    CStringArray QuotasOf(const CString& bill) const
    {
        CStringArray numbers;
        for (const embedded::QuotaSection& section : m_host->Contents().quotas) {
            for (const embedded::QuotaItem& quota : section.items) {
                if (quota.bills.contains(bill)) numbers.append(quota.record.strNumber);
            }
        }
        return numbers;
    }
    int CountBills(const CString& prefix) const
    {
        const CStringArray all = ColumnTexts(Bills(), NumberColumn);
        return static_cast<int>(
            std::count_if(all.begin(), all.end(), [&](const CString& n) { return n.startsWith(prefix); }));
    }

    NvQdDeMng::CSelQdDeDlg m_picker;
};

TEST_F(BillPicker, ListsTheWholeLibraryAtFirst)
{
    std::size_t bills = 0;
    for (const embedded::BillSection& section : m_host->Contents().bills)
        bills += section.items.size();
    EXPECT_EQ(Bills().model()->rowCount(), static_cast<int>(bills));
    EXPECT_EQ(Chapters().currentItem()->text(0), u"全部清单"_s);
    EXPECT_EQ(SelectedText(Bills()), m_host->Contents().bills[1].items.front().strNumber);
}

TEST_F(BillPicker, IsCreatedHidden)
{
    NvQdDeMng::CSelQdDeDlg picker;
    EXPECT_TRUE(picker.Create(&m_parent));
    EXPECT_FALSE(picker.IsWindowVisible());
}

TEST_F(BillPicker, IsNotCreatedWithoutAParent)
{
    NvQdDeMng::CSelQdDeDlg picker;
    EXPECT_FALSE(picker.Create(nullptr));
}

TEST_F(BillPicker, ClosesIntoHiding)
{
    EXPECT_TRUE(m_picker.IsWindowVisible());
    Window().close();
    EXPECT_FALSE(m_picker.IsWindowVisible());
    m_picker.ShowWindow(true);
    QTest::keyClick(&Bills(), Qt::Key_Escape);
    EXPECT_FALSE(m_picker.IsWindowVisible());
    m_picker.ShowWindow(true);
    ClickButton(Window(), u"关闭"_s);
    EXPECT_FALSE(m_picker.IsWindowVisible());
    EXPECT_FALSE(Window().isModal());
}

TEST_F(BillPicker, DoubleClickEnterAndButtonSendTheBill)
{
    m_picker.SetTreePosition(u"0310.031001"_s);
    DoubleClickRow(Bills(), 0);
    QTest::keyClick(&Bills(), Qt::Key_Return);
    QTest::keyClick(&Bills(), Qt::Key_Enter);
    ClickButton(Window(), u"选用清单"_s);
    EXPECT_EQ(m_parent.Picked(), CStringArray(4, u"bill 031001001 1 1"_s));
}

TEST_F(BillPicker, IsActiveAgainAfterTheReceiverAskedInAWindowOfItsOwn)
{
    Window().activateWindow();
    test::WaitUntilActive(Window());
    m_parent.WhileHandling([this] {
        m_parent.activateWindow();
        test::WaitUntilActive(m_parent);
    });
    DoubleClickRow(Bills(), 0);
    test::WaitUntilActive(Window());
}

TEST_F(BillPicker, LeavesTheReceiverActiveWhenItWasHiddenMeanwhile)
{
    Window().activateWindow();
    test::WaitUntilActive(Window());
    m_parent.WhileHandling([this] { Window().hide(); });
    DoubleClickRow(Bills(), 0);
    EXPECT_FALSE(Window().isVisible());
    test::WaitUntilActive(m_parent);
}

TEST_F(BillPicker, DoubleClickBelowTheLastItemSendsNothing)
{
    TypeText(Search(), u"031001001"_s);
    QTest::mouseDClick(Bills().viewport(), Qt::LeftButton, {},
                       {Bills().viewport()->width() / 2, Bills().viewport()->height() - 2});
    EXPECT_EQ(m_parent.Picked(), CStringArray());
}

TEST_F(BillPicker, SearchNarrowsTheListWhileTyping)
{
    TypeText(Search(), u"钢管 镀锌"_s);
    EXPECT_EQ(ColumnTexts(Bills(), NumberColumn), CStringArray{u"031001001"_s});
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_EQ(m_parent.Picked(), CStringArray{u"bill 031001001 1 1"_s});
}

TEST_F(BillPicker, KeysOfTheSearchFieldMoveThroughTheList)
{
    TypeText(Search(), u"03100100"_s);
    EXPECT_EQ(SelectedText(Bills()), u"031001001"_s);
    QTest::keyClick(&Search(), Qt::Key_Down);
    QTest::keyClick(&Search(), Qt::Key_Down);
    QTest::keyClick(&Search(), Qt::Key_Up);
    EXPECT_EQ(SelectedText(Bills()), u"031001002"_s);
    EXPECT_EQ(Search().text(), u"03100100"_s);
}

TEST_F(BillPicker, EscapeEmptiesTheSearchBeforeItCloses)
{
    TypeText(Search(), u"钢管"_s);
    QTest::keyClick(&Search(), Qt::Key_Escape);
    EXPECT_EQ(Search().text(), CString());
    EXPECT_TRUE(m_picker.IsWindowVisible());
    QTest::keyClick(&Search(), Qt::Key_Escape);
    EXPECT_FALSE(m_picker.IsWindowVisible());
}

TEST_F(BillPicker, SearchWithoutHitsLeavesNothingToPick)
{
    TypeText(Search(), u"没有这样的项目"_s);
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_EQ(m_parent.Picked(), CStringArray());
    EXPECT_FALSE(Button(Window(), u"选用清单"_s).isEnabled());
    EXPECT_FALSE(Button(Window(), u"选用定额"_s).isEnabled());
    EXPECT_EQ(Quotas().model()->rowCount(), 0);
    QTest::keyClick(&Search(), Qt::Key_Escape);
    EXPECT_TRUE(Button(Window(), u"选用清单"_s).isEnabled());
}

TEST_F(BillPicker, SearchGoesOverTheWholeLibraryInAnyChapter)
{
    m_picker.SetTreePosition(u"0304.030401"_s);
    TypeText(Search(), u"镀锌钢管"_s);
    EXPECT_EQ(ColumnTexts(Bills(), NumberColumn), CStringArray{u"031001001"_s});
    QTest::keyClick(&Search(), Qt::Key_Escape);
    EXPECT_EQ(CountBills(u"030401"_s), Bills().model()->rowCount());
}

TEST_F(BillPicker, ItemStaysSelectedWhileTheSearchStillFindsIt)
{
    TypeText(Search(), u"03100100"_s);
    QTest::keyClick(&Search(), Qt::Key_Down);
    TypeText(Search(), u"2"_s);
    QTest::keyClick(&Search(), Qt::Key_Escape);
    EXPECT_EQ(SelectedText(Bills()), u"031001002"_s);
}

TEST_F(BillPicker, TreePositionShowsAChapterWithAllBelowIt)
{
    m_picker.SetTreePosition(u"0310"_s);
    EXPECT_EQ(CountBills(u"0310"_s), Bills().model()->rowCount());
    const int all = Bills().model()->rowCount();
    m_picker.SetTreePosition(u"0310.031001"_s);
    EXPECT_EQ(CountBills(u"031001"_s), Bills().model()->rowCount());
    EXPECT_LT(Bills().model()->rowCount(), all);
    EXPECT_TRUE(Chapters().currentItem()->text(0).startsWith(u"031001 "_s));
    EXPECT_TRUE(Chapters().currentItem()->parent()->isExpanded());
}

TEST_F(BillPicker, TreePositionEmptiesTheSearch)
{
    TypeText(Search(), u"没有"_s);
    m_picker.SetTreePosition(u"0310.031001"_s);
    EXPECT_EQ(Search().text(), CString());
    EXPECT_EQ(SelectedText(Bills()), u"031001001"_s);
}

TEST_F(BillPicker, UnknownTreePositionChangesNothing)
{
    m_picker.SetTreePosition(u"0310.031001"_s);
    TypeText(Search(), u"塑料管"_s);
    for (const CString& position : {CString(), u"0310.031001.1"_s, u"9"_s, u"0310\\031001"_s})
        m_picker.SetTreePosition(position);
    EXPECT_TRUE(Chapters().currentItem()->text(0).startsWith(u"031001 "_s));
    EXPECT_EQ(Search().text(), u"塑料管"_s);
    EXPECT_EQ(SelectedText(Bills()), u"031001006"_s);
}

TEST_F(BillPicker, ClickOnTheSelectedChapterEmptiesTheSearch)
{
    m_picker.SetTreePosition(u"0310.031001"_s);
    TypeText(Search(), u"变压器"_s);
    QTreeWidget& tree = Chapters();
    ClickAt(tree, tree.visualItemRect(tree.currentItem()));
    EXPECT_EQ(Search().text(), CString());
    EXPECT_EQ(CountBills(u"031001"_s), Bills().model()->rowCount());
}

TEST_F(BillPicker, QuotasOfTheSelectedBillStandBelow)
{
    m_picker.SetTreePosition(u"0310.031001"_s);
    EXPECT_EQ(ColumnTexts(Quotas(), NumberColumn), QuotasOf(u"031001001"_s));
    EXPECT_FALSE(QuotasOf(u"031001001"_s).isEmpty());
    ClickRow(Bills(), 5);
    EXPECT_EQ(SelectedText(Bills()), u"031001006"_s);
    EXPECT_EQ(ColumnTexts(Quotas(), NumberColumn), QuotasOf(u"031001006"_s));
}

TEST_F(BillPicker, QuotaSearchStaysWithinTheQuotasOfTheBill)
{
    m_picker.SetTreePosition(u"0310.031001"_s);
    TypeText(QuotaSearch(), u"示10-1-1 内)15"_s);
    for (const CString& name : ColumnTexts(Quotas(), NameColumn))
        EXPECT_TRUE(name.contains(u"镀锌钢管"_s)) << name.toStdString();
    EXPECT_EQ(SelectedText(Quotas()), u"示10-1-1"_s);
}

TEST_F(BillPicker, AllQuotasCanBeListed)
{
    ClickButton(Window(), u"全部定额"_s);
    std::size_t quotas = 0;
    for (const embedded::QuotaSection& section : m_host->Contents().quotas)
        quotas += section.items.size();
    EXPECT_EQ(Quotas().model()->rowCount(), static_cast<int>(quotas));
    TypeText(Search(), u"没有"_s);
    EXPECT_EQ(Quotas().model()->rowCount(), static_cast<int>(quotas));
    QTest::keyClick(&Search(), Qt::Key_Escape);
    m_picker.SetTreePosition(u"0310.031001"_s);
    ClickButton(Window(), u"全部定额"_s);
    EXPECT_EQ(ColumnTexts(Quotas(), NumberColumn), QuotasOf(u"031001001"_s));
}

TEST_F(BillPicker, QuotaIsSentWithAllItsFields)
{
    m_picker.SetTreePosition(u"0310.031001"_s);
    DoubleClickRow(Quotas(), 0);
    QTest::keyClick(&Quotas(), Qt::Key_Return);
    ClickButton(Window(), u"选用定额"_s);
    const CString quota = u"示10-1-1|室内镀锌钢管 螺纹连接 公称直径(mm以内)15|10m|10|1|管道长度"_s;
    EXPECT_EQ(m_parent.Picked(), CStringArray(3, quota));
}

TEST_F(BillPicker, RecordLivesWhileTheParentLoadsThePickerAnew)
{
    m_picker.SetTreePosition(u"0310.031001"_s);
    m_parent.WhileHandling([this] { m_picker.InitQdDeData(); });
    ClickButton(Window(), u"选用清单"_s);
    m_parent.WhileHandling([] {});
    EXPECT_EQ(m_parent.Picked(), CStringArray{u"bill 031001001 1 1"_s});
}

TEST_F(BillPicker, AsksForTheNumberWhenToldSo)
{
    m_picker.SetTreePosition(u"0310.031001"_s);
    m_picker.SetShowGetQdNumDlg(true);
    InModalWindows({[](QWidget& question) {
        auto& field = *question.findChild<QLineEdit*>();
        EXPECT_EQ(field.text(), u"031001001"_s);
        field.selectAll();
        TypeText(field, u"031001001007"_s);
        QTest::keyClick(&field, Qt::Key_Return);
    }});
    ClickButton(Window(), u"选用清单"_s);
    EXPECT_EQ(m_parent.Picked(), CStringArray{u"bill 031001001007 1 1"_s});
    InModalWindows({[](QWidget& question) { QTest::keyClick(&question, Qt::Key_Escape); }});
    ClickButton(Window(), u"选用清单"_s);
    EXPECT_EQ(m_parent.Picked().size(), 1);
}

TEST_F(BillPicker, RemembersBeforeItsCreationNotToAskForTheNumber)
{
    NvQdDeMng::CSelQdDeDlg picker;
    picker.SetShowGetQdNumDlg(false);
    PickerParent parent;
    picker.Create(&parent);
    picker.InitQdDeData();
    picker.ShowWindow(true);
    ClickButton(*parent.findChild<QDialog*>(), u"选用清单"_s);
    EXPECT_EQ(parent.Picked().size(), 1);
}

TEST_F(BillPicker, DisabledContentTakesNoNotice)
{
    const std::unique_ptr<host::IBillPicker> role = m_windows->MakeBillPicker();
    PickerParent parent;
    role->Create(&parent);
    role->InitData();
    role->Show(true);
    role->EnableContent(false);
    QDialog& window = *parent.findChild<QDialog*>();
    ClickButton(window, u"选用清单"_s);
    EXPECT_FALSE(Named<QTableView>(window, u"项目"_s).isEnabled());
    ClickButton(window, u"关闭"_s);
    EXPECT_FALSE(role->IsVisible());
    role->EnableContent(true);
    EXPECT_TRUE(Named<QTableView>(window, u"项目"_s).isEnabled());
}

TEST_F(BillPicker, LoadingAnewEmptiesSearchAndShowsTheWholeLibrary)
{
    m_picker.SetTreePosition(u"0310.031001"_s);
    TypeText(Search(), u"塑料"_s);
    TypeText(QuotaSearch(), u"示"_s);
    m_picker.InitQdDeData();
    EXPECT_EQ(Search().text() + QuotaSearch().text(), CString());
    EXPECT_EQ(Chapters().currentItem()->text(0), u"全部清单"_s);
    EXPECT_EQ(CountBills({}), Bills().model()->rowCount());
    EXPECT_GT(Bills().model()->rowCount(), 300);
}

TEST_F(BillPicker, StandsAtTheRightOfItsParentOnTheScreen)
{
    const QRect screen = m_parent.screen()->availableGeometry();
    Window().resize(300, 300);
    m_parent.move(screen.topLeft());
    m_picker.MoveWndToRight(&m_parent);
    EXPECT_EQ(Window().frameGeometry().left(), m_parent.frameGeometry().right() + 1);
    m_parent.move(screen.right() - m_parent.frameGeometry().width(), screen.top());
    m_picker.MoveWndToRight(&m_parent);
    EXPECT_EQ(Window().frameGeometry().right(), m_parent.frameGeometry().left() - 1);
}

TEST_F(BillPicker, ArrangementIsRememberedForTheNextOne)
{
    Window().resize(640, 480);
    const auto splitters = Window().findChildren<QSplitter*>();
    ASSERT_EQ(splitters.size(), 2);
    splitters[0]->setSizes({150, 250});
    splitters[1]->setSizes({260, 340});
    const QList<int> lists = splitters[0]->sizes();
    const QList<int> chapters = splitters[1]->sizes();
    m_picker.ShowWindow(false);

    PickerParent parent;
    NvQdDeMng::CSelQdDeDlg next(&parent);
    next.ShowWindow(true);
    const auto& window = *parent.findChild<QDialog*>();
    EXPECT_EQ(window.size(), QSize(640, 480));
    EXPECT_EQ(window.findChildren<QSplitter*>()[0]->sizes(), lists);
    EXPECT_EQ(window.findChildren<QSplitter*>()[1]->sizes(), chapters);
}

TEST_F(BillPicker, OutlivesAParentThatGoesFirst)
{
    const std::unique_ptr<host::IBillPicker> role = m_windows->MakeBillPicker();
    auto parent = std::make_unique<PickerParent>();
    role->Create(parent.get());
    role->Show(true);
    parent.reset();
    EXPECT_FALSE(role->IsVisible());
    role->Show(true);
    role->InitData();
    role->SetTreePosition(u"0310"_s);
    EXPECT_FALSE(role->IsVisible());
}

} // namespace
