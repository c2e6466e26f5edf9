#include "embedded/windows/PickerFixture.h"
#include "embedded/windows/WindowUser.h"

#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeWidget>

using namespace Qt::StringLiterals;
using namespace test;

namespace {

const CString FirstQuota = u"示10-1-1|室内镀锌钢管 螺纹连接 公称直径(mm以内)15|10m|10|1|管道长度"_s;

class QuotaPicker : public EmbeddedWindowsTest
{
protected:
    QuotaPicker() : m_picker(&m_parent)
    {
        m_picker.EnableWindow(true);
        m_picker.ShowWindow(true);
        m_picker.MoveWndToRight(&m_parent);
        m_picker.InitDeData();
    }

    QTableView& Quotas() const { return Named<QTableView>(Window(), u"项目"_s); }
    QLineEdit& Search() const { return Named<QLineEdit>(Window(), u"搜索项目"_s); }

    NvQdDeMng::CSelDeDlg m_picker;
};

TEST_F(QuotaPicker, SendsAQuotaByDoubleClickEnterAndButton)
{
    TypeText(Search(), u"示10-1-1 )15"_s);
    DoubleClickRow(Quotas(), 0);
    QTest::keyClick(&Quotas(), Qt::Key_Enter);
    QTest::keyClick(&Search(), Qt::Key_Return);
    ClickButton(Window(), u"选用定额"_s);
    EXPECT_EQ(m_parent.Picked(), CStringArray(4, FirstQuota));
}

TEST_F(QuotaPicker, ListsTheChapterThatIsClicked)
{
    auto& tree = Named<QTreeWidget>(Window(), u"章节"_s);
    QTreeWidgetItem* chapter =
        tree.findItems(u"示10-1 "_s, Qt::MatchStartsWith | Qt::MatchRecursive).value(0);
    ASSERT_NE(chapter, nullptr);
    EXPECT_TRUE(chapter->parent()->text(0).startsWith(u"示10 "_s));
    tree.scrollToItem(chapter);
    ClickAt(tree, tree.visualItemRect(chapter));
    EXPECT_EQ(SelectedText(Quotas()), u"示10-1-1"_s);
    for (const CString& number : ColumnTexts(Quotas(), 0))
        EXPECT_TRUE(number.startsWith(u"示10-1-"_s)) << number.toStdString();
}

TEST_F(QuotaPicker, HasNothingToPickWhenNothingIsFound)
{
    TypeText(Search(), u"没有这样的定额"_s);
    EXPECT_FALSE(Button(Window(), u"选用定额"_s).isEnabled());
    QTest::keyClick(&Quotas(), Qt::Key_Return);
    EXPECT_EQ(m_parent.Picked(), CStringArray());
}

TEST_F(QuotaPicker, ClosesIntoHidingAndComesBack)
{
    Window().close();
    EXPECT_FALSE(m_picker.IsWindowVisible());
    m_picker.ShowWindow(true);
    EXPECT_TRUE(m_picker.IsWindowVisible());
}

} // namespace
