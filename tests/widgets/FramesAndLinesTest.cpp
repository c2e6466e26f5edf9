#include "support/Patience.h"
#include "support/Pixels.h"
#include "widgets/GroupBox.h"
#include "widgets/LineColour.h"
#include "widgets/ReadableColour.h"
#include "widgets/TreeControl.h"
#include "widgets/WindowFrame.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QImage>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPalette>
#include <QtGui/QWindow>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// What is drawn between and around controls, and the frame of a window.

namespace {

const QPalette Light(QColor(239, 239, 239), QColor(239, 239, 239));

/// A tree of a root with two branches of two leaves each, on show.
class TreeOfLines : public ::testing::Test
{
protected:
    TreeOfLines()
    {
        auto* root = new QTreeWidgetItem(&m_tree, {u"根"_s});
        for (int branch = 0; branch < 2; ++branch) {
            auto* item = new QTreeWidgetItem(root, {u"枝"_s});
            new QTreeWidgetItem(item, {u"叶"_s});
            new QTreeWidgetItem(item, {u"叶"_s});
        }
        m_tree.expandAll();
        m_tree.resize(300, 300);
        m_tree.show();
        m_image = m_tree.viewport()->grab().toImage();
    }
    /// Whether a column of a row, counted from the left, has a line from its top or from its bottom.
    bool HasLine(int row, int column, bool atTop) const
    {
        QModelIndex index = m_tree.model()->index(0, 0);
        for (int step = 0; step < row; ++step)
            index = m_tree.indexBelow(index);
        const QRect place = m_tree.visualRect(index);
        const int x = column * m_tree.indentation() + m_tree.indentation() / 2;
        const int from = atTop ? place.top() : place.bottom() - 4;
        const QRgb paper = m_image.pixel(m_image.width() - 2, m_image.height() - 2);
        for (int y = from; y < from + 4; ++y)
            if (m_image.pixel(x, y) != paper) return true;
        return false;
    }

    widgets::TreeControl m_tree{nullptr};
    QImage m_image;
};

} // namespace

// Rows: 0 root, 1 first branch, 2 and 3 its leaves, 4 second branch, 5 and 6 its leaves.
TEST_F(TreeOfLines, LinesLeadFromEachItemToItsParentAndItsNeighbours)
{
    EXPECT_FALSE(HasLine(0, 0, true)); // the only root
    EXPECT_FALSE(HasLine(0, 0, false));
    EXPECT_TRUE(HasLine(1, 1, true));
    EXPECT_TRUE(HasLine(1, 1, false));
    EXPECT_TRUE(HasLine(2, 1, true)); // that of its parent passes by
    EXPECT_TRUE(HasLine(3, 2, true));
    EXPECT_FALSE(HasLine(3, 2, false)); // the last leaf
    EXPECT_TRUE(HasLine(4, 1, true));
    EXPECT_FALSE(HasLine(4, 1, false)); // the last branch
    EXPECT_FALSE(HasLine(5, 1, true));
}

TEST(GroupBox, FrameRunsThroughTheMiddleOfTheTitle)
{
    widgets::GroupBox box;
    box.setTitle(u"清单定额"_s);
    box.resize(200, 100);
    EXPECT_EQ(box.FrameRect().top(), box.fontMetrics().height() / 2);
    const QImage image = box.grab().toImage();
    const QRgb paper = image.pixel(100, 60);
    EXPECT_NE(image.pixel(150, box.FrameRect().top()), paper);
    EXPECT_NE(image.pixel(0, 60), paper);
    for (int y = box.FrameRect().top() + 1; y < 95; ++y)
        EXPECT_EQ(image.pixel(150, y), paper) << y; // nothing else behind the buttons below the title
}

TEST(GroupBox, FrameWithoutATitleRunsWhereItsMiddleWouldBe)
{
    widgets::GroupBox box;
    box.resize(200, 100);
    const int top = box.fontMetrics().height() / 2;
    EXPECT_EQ(box.FrameRect(), QRect(QPoint(0, top), QPoint(198, 98)));
    const QImage image = box.grab().toImage();
    EXPECT_NE(image.pixel(10, top), image.pixel(10, top - 1)) << "with no gap for a title";
}

TEST(LineColour, HintIsReadInLightAndDarkPalettes)
{
    for (const QPalette& palette : {Light, test::DarkPalette()}) {
        const QColor base = palette.color(QPalette::Base);
        EXPECT_GE(widgets::Contrast(widgets::HintColour(palette), base), 4.5);
        EXPECT_LT(widgets::Contrast(widgets::HintColour(palette), base),
                  widgets::Contrast(palette.color(QPalette::Text), base));
    }
}

TEST(WindowFrame, FrameThatIsOnlyBeingMadeIsNone)
{
    EXPECT_TRUE(widgets::IsMadeFrame({1, 20, 1, 5}));
    EXPECT_TRUE(widgets::IsMadeFrame({0, 20, 0, 0}));
    EXPECT_FALSE(widgets::IsMadeFrame({0, 0, 1, 25})) << "the window stands in its corner";
    EXPECT_FALSE(widgets::IsMadeFrame({1, 20, -3, 5})) << "the window sticks out";
    EXPECT_FALSE(widgets::IsMadeFrame({}));
}

TEST(WindowFrame, WhoWaitsForTheFrameHearsOfItOnce)
{
    QWidget window;
    window.winId(); // makes the handle
    int heard = 0;
    widgets::WhenFrameIsKnown(window, [&] { ++heard; });
    EXPECT_EQ(heard, 0);
    window.show();
    test::WaitInLoopFor(u"the frame"_s, [&] { return heard > 0; });
    window.hide();
    window.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, 1);
}

TEST(WindowFrame, NobodyHearsOfTheFrameOnceTheUserHasBegun)
{
    for (const bool byMouse : {false, true}) {
        QWidget window;
        window.winId(); // makes the handle
        int heard = 0;
        widgets::WhenFrameIsKnown(window, [&] { ++heard; });
        QKeyEvent key(QEvent::KeyPress, Qt::Key_A, {});
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(), QPointF(), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window.windowHandle(), byMouse ? static_cast<QEvent*>(&press) : &key);
        window.show();
        QCoreApplication::processEvents();
        EXPECT_EQ(heard, 0) << byMouse;
    }
}

TEST(WindowFrame, CentreCutsHalvesOneByOne)
{
    EXPECT_EQ(widgets::CentredOn({10, 20, 101, 101}, {50, 50}), QPoint(35, 45));
    EXPECT_EQ(widgets::CentredOn({10, 20, 100, 100}, {51, 151}), QPoint(35, -5));
}
