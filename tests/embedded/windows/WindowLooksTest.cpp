#include "dialogs/ModalUser.h"
#include "embedded/windows/NameConflictDialog.h"
#include "embedded/windows/PickerFixture.h"
#include "embedded/windows/WindowUser.h"
#include "host/HostWindows.h"
#include "host/NvQdDeMng.h"
#include "platform/Paths.h"
#include "support/Patience.h"
#include "support/Pixels.h"
#include "widgets/WindowFrame.h"

#include <QtGui/QImage>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QTreeWidget>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace test;

// Sizes and places in the dialogs of the host.

namespace {

/// A font that has no Chinese of its own, where there is one.
const QFont Latin(u"DejaVu Sans"_s, 9);
const CString WaterPipe = u"给排水\\管道\\给水管"_s;

class WindowLooks : public EmbeddedWindowsTest
{
protected:
    WindowLooks() { QApplication::setFont(Latin); }
    ~WindowLooks() override { QApplication::setFont(m_font); }

    void RunCloudDisk(const QString& folder, const ModalStep& step)
    {
        m_windows->SetCloudFolder(folder);
        InModalWindows({step});
        KtNetService::CNetDiskFunc::GetInstance().ShowDialog(u"自动套模板"_s, true);
    }
    void RunCalculator(const ModalStep& step)
    {
        InModalWindows({step});
        CString result;
        KtGlobalDlg::CFaceGlobalDlg().ShowCalculatorDlg(WaterPipe, {}, result, &m_parent);
    }
    static void Close(QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }

    TempFolder m_cloud;

private:
    QFont m_font = QApplication::font();
};

} // namespace

TEST_F(WindowLooks, FilesWithLatinNamesHaveRowsAsHighAsTheOthers)
{
    m_cloud.WriteFile(u"abc.xml"_s, "<自动套清单定额配置信息/>");
    m_cloud.WriteFile(u"住宅.xml"_s, "<自动套清单定额配置信息/>");
    RunCloudDisk(m_cloud.Native({}), [](QWidget& window) {
        const auto& list = Named<QTreeWidget>(window, u"云盘模板"_s);
        ASSERT_EQ(list.topLevelItemCount(), 2);
        const int needed = list.fontMetrics().size(Qt::TextSingleLine, u"住宅"_s).height();
        EXPECT_GE(list.visualItemRect(list.topLevelItem(0)).height(), needed);
        EXPECT_GE(list.visualItemRect(list.topLevelItem(1)).height(), needed);
        Close(window);
    });
}

TEST_F(WindowLooks, ColumnsOfTheCloudDiskShowTheirTextsInAnyFont)
{
    m_cloud.WriteFile(u"abc.xml"_s, "<?");
    for (const CString& family : {Latin.family(), u"Noto Sans CJK SC"_s}) {
        QApplication::setFont(QFont(family, 9));
        RunCloudDisk(m_cloud.Native({}), [&](QWidget& window) {
            const auto& list = Named<QTreeWidget>(window, u"云盘模板"_s);
            ASSERT_EQ(list.topLevelItem(0)->text(1), u"不是规则文件"_s);
            for (const int column : {1, 2}) {
                const int needed = list.sizeHintForIndex(list.model()->index(0, column)).width();
                EXPECT_LE(needed, list.columnWidth(column)) << family.toStdString() << column;
            }
            Close(window);
        });
    }
}

TEST_F(WindowLooks, ListsOfTheCloudDiskStayWhereTheyAreWhenTheFolderIsMissing)
{
    QRect there;
    RunCloudDisk(m_cloud.Native({}), [&](QWidget& window) {
        there = Named<QTreeWidget>(window, u"云盘模板"_s).geometry();
        Close(window);
    });
    RunCloudDisk(m_cloud.Native(u"没有"_s), [&](QWidget& window) {
        EXPECT_EQ(Named<QTreeWidget>(window, u"云盘模板"_s).geometry(), there);
        Close(window);
    });
}

TEST_F(WindowLooks, HintOfTheSearchFieldIsReadInLightAndDarkPalettes)
{
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    picker.InitQdDeData();
    QPalette dark = DarkPalette();
    dark.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128)); // as some desktops leave it
    for (const QPalette& palette : {QApplication::palette(), dark}) {
        const ScopedPalette colours(palette);
        auto& field = Named<QLineEdit>(Window(), u"搜索项目"_s);
        field.clearFocus(); // its cursor stands out, too
        const QRect inside = field.rect().adjusted(4, 4, -4, -4);
        const QImage image = field.grab().toImage();
        const QColor paper = image.pixelColor(inside.bottomRight());
        EXPECT_GE(MostContrast(image, inside, paper), 3.0) << paper.name().toStdString();
    }
}

TEST_F(WindowLooks, PickerBecomesNarrowRatherThanCoverItsNeighbour)
{
    const QRect screen = m_parent.screen()->availableGeometry();
    const int room = 23 * m_parent.fontMetrics().height();
    m_parent.show();
    m_parent.move(screen.topLeft());
    const int frame = m_parent.frameGeometry().width() - m_parent.width();
    m_parent.resize(screen.width() - room - frame, screen.height() / 2);
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    picker.MoveWndToRight(&m_parent);
    EXPECT_EQ(Window().frameGeometry().left(), m_parent.frameGeometry().right() + 1);
}

TEST_F(WindowLooks, PickerLeavesThePartItIsPlacedBesideToBeSeen)
{
    const QRect screen = m_parent.screen()->availableGeometry();
    m_parent.show();
    m_parent.setGeometry(screen);
    QWidget part(&m_parent);
    part.setGeometry(2 * screen.width() / 3, 0, screen.width() / 3, screen.height());
    part.show();
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    picker.MoveWndToRight(&part);
    const QRect seen(part.mapToGlobal(QPoint()), part.size());
    EXPECT_FALSE(Window().frameGeometry().intersects(seen));
    EXPECT_TRUE(screen.contains(Window().frameGeometry()));
    EXPECT_EQ(m_parent.geometry(), screen) << "its window makes no way";
}

TEST_F(WindowLooks, PickerThatAPlaceMadeNarrowIsAsWideAsBeforeWhereThereIsRoom)
{
    const QRect screen = m_parent.screen()->availableGeometry();
    m_parent.show();
    m_parent.move(screen.topLeft());
    m_parent.resize(100, 100);
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    picker.MoveWndToRight(&m_parent);
    const int wide = Window().width();
    m_parent.resize(screen.width() - wide / 2 - 50, 100);
    picker.MoveWndToRight(&m_parent);
    ASSERT_LT(Window().width(), wide);
    picker.ShowWindow(false); // what is remembered is not the narrow one either
    picker.ShowWindow(true);
    m_parent.resize(100, 100);
    picker.MoveWndToRight(&m_parent);
    EXPECT_EQ(Window().width(), wide);
    Window().resize(wide - 30, Window().height()); // by hand
    picker.MoveWndToRight(&m_parent);
    EXPECT_EQ(Window().width(), wide - 30);
}

TEST_F(WindowLooks, NeighbourOfAPickerMakesWayForIt)
{
    const QRect screen = m_parent.screen()->availableGeometry();
    m_parent.show();
    m_parent.resize(screen.width() / 4, 100);
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    Window().resize(screen.width() / 2, Window().height());
    m_parent.move(screen.x() + 3 * screen.width() / 8, screen.y());
    picker.MoveWndToRight(&m_parent);
    EXPECT_TRUE(screen.contains(Window().frameGeometry()));
    test::WaitInLoopFor(u"the neighbour aside"_s,
                        [&] { return !Window().frameGeometry().intersects(m_parent.frameGeometry()); });
    EXPECT_EQ(Window().width(), screen.width() / 2);
}

TEST_F(WindowLooks, ConflictOfNamesShowsALongPathWhole)
{
    CString folder = u"C:"_s;
    for (int level = 0; level < 8; ++level)
        folder += u"\\一个很长的云盘文件夹的名称_with_no_blank_in_it"_s;
    embedded::NameConflictDialog dialog(folder, CString(60, u'x'), nullptr);
    dialog.show();
    const auto labels = dialog.findChildren<QLabel*>();
    const auto wraps = [](const QLabel* label) { return label->wordWrap(); };
    const QLabel& text = **std::find_if(labels.begin(), labels.end(), wraps);
    EXPECT_GE(text.height(), text.heightForWidth(text.width()));
    EXPECT_LE(text.minimumSizeHint().width(), text.width());
    EXPECT_LE(text.geometry().right(), dialog.rect().right());
    EXPECT_LE(dialog.width(), 40 * dialog.fontMetrics().height());
    EXPECT_TRUE(text.accessibleName().contains(platform::ToNative(folder)));
}

TEST_F(WindowLooks, SmallestWindowsStillShowRows)
{
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    picker.InitQdDeData();
    Window().resize(Window().minimumSizeHint());
    for (const CString& name : {u"项目"_s, u"定额"_s}) {
        const auto& table = Named<QTableView>(Window(), name);
        EXPECT_GE(table.viewport()->height(), 2 * table.rowHeight(0));
        EXPECT_GE(table.viewport()->width(), table.columnWidth(0) + table.columnWidth(1));
    }
    m_cloud.WriteFile(u"abc.xml"_s, "<自动套清单定额配置信息/>");
    RunCloudDisk(m_cloud.Native({}), [](QWidget& window) {
        window.resize(window.minimumSizeHint());
        const auto& list = Named<QTreeWidget>(window, u"云盘模板"_s);
        EXPECT_GE(list.viewport()->height(), 3 * list.visualItemRect(list.topLevelItem(0)).height());
        Close(window);
    });
}

TEST_F(WindowLooks, RowsOfTheCalculatorAreAsHighAsTheirText)
{
    RunCalculator([](QWidget& window) {
        const auto& items = Named<QTableWidget>(window, u"计算项目"_s);
        for (const int points : {8, 16}) {
            QApplication::setFont(QFont(Latin.family(), points));
            QCoreApplication::processEvents();
            const int line = items.fontMetrics().size(Qt::TextSingleLine, u"管道"_s).height();
            EXPECT_GE(items.rowHeight(0), line) << points;
            EXPECT_LE(items.rowHeight(0), line + line / 2) << points;
        }
        Close(window);
    });
}

// A window manager that is still making the frame may take the place of the frame for that of the inside.
TEST_F(WindowLooks, PickerThatCameToStandElsewhereBeforeItsFrameWasKnownIsBroughtBack)
{
    const QRect screen = m_parent.screen()->availableGeometry();
    m_parent.show();
    m_parent.resize(100, 100);
    m_parent.move(screen.topLeft() + QPoint(10, 20));
    test::WaitInLoopFor(u"the frame of the neighbour"_s,
                        [this] { return !widgets::FrameOf(m_parent).isNull(); });
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.MoveWndToRight(&m_parent);
    const QRect beside = widgets::OuterGeometry(m_parent);
    Window().windowHandle()->setPosition(Window().pos() + QPoint(40, 40));
    picker.ShowWindow(true);
    test::WaitInLoopFor(u"the picker beside its neighbour"_s, [&] {
        return widgets::OuterGeometry(Window()).topLeft() == beside.topRight() + QPoint(1, 0);
    });
}
