#include "editor/window/FocusStyle.h"

#include "support/WindowWaits.h"

#include <QtGui/QPainter>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOption>

#include <gtest/gtest.h>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// Two lists beside each other, each with a selected item.
class FocusInLists : public ::testing::Test
{
protected:
    FocusInLists()
    {
        auto* line = new QHBoxLayout(&m_window);
        for (QListWidget* list : {&m_left, &m_right}) {
            line->addWidget(list);
            list->addItem(u"甲"_s);
            list->setCurrentRow(0);
            list->setStyle(&m_style);
        }
        m_window.show();
        m_window.activateWindow();
        test::WaitUntilActive(m_window);
    }

    /// The colour of the selection at the right of the item's text.
    static QColor Selection(QListWidget& list)
    {
        const QImage image = list.viewport()->grab().toImage();
        const QRect item = list.visualItemRect(list.item(0));
        return image.pixelColor(item.right() - 4, item.center().y());
    }

    editor::FocusStyle m_style{QStyleFactory::create(u"fusion"_s)};
    QWidget m_window;
    QListWidget m_left;
    QListWidget m_right;
};

} // namespace

TEST_F(FocusInLists, SelectionIsPaleWhereTheFocusIsNot)
{
    m_left.setFocus();
    const QColor strong = Selection(m_left);
    const QColor pale = Selection(m_right);
    // The style's own shading depends on the focus, too, but hardly.
    EXPECT_GT(std::abs(strong.lightness() - pale.lightness()), 20);
    EXPECT_NE(pale, m_right.palette().color(QPalette::Base));
    m_right.setFocus();
    EXPECT_EQ(Selection(m_left), pale);
    EXPECT_EQ(Selection(m_right), strong);
}

TEST_F(FocusInLists, SelectionStaysStrongWhileAnItemIsEdited)
{
    m_left.setFocus();
    const QColor strong = Selection(m_left);
    m_left.addItem(u"乙"_s);
    m_left.item(1)->setFlags(m_left.item(1)->flags() | Qt::ItemIsEditable);
    m_left.editItem(m_left.item(1));
    ASSERT_FALSE(m_left.hasFocus());
    // The style's shading depends on the state a little.
    EXPECT_NEAR(Selection(m_left).lightness(), strong.lightness(), 8);
}

TEST_F(FocusInLists, FrameShowsTheFocusWhereNothingIsSelected)
{
    for (QListWidget* list : {&m_left, &m_right})
        list->clear();
    m_left.setFocus();
    const auto frame = [](QListWidget& list) {
        return list.grab().toImage().pixelColor(list.width() / 2, list.height() - 1);
    };
    EXPECT_EQ(frame(m_left), m_left.palette().color(QPalette::Highlight));
    EXPECT_NE(frame(m_right), frame(m_left));
}

TEST_F(FocusInLists, ArrowInACellIsDarkOnAPaleSelectionAndAsItIsMadeElsewhere)
{
    QImage image(16, 16, QImage::Format_RGB32);
    const auto draw = [&](const QListWidget& list, QStyle::State state = QStyle::State_Selected) {
        image.fill(Qt::gray);
        QPainter painter(&image);
        QStyleOption arrow;
        arrow.rect = image.rect();
        arrow.state = QStyle::State_Enabled | state;
        for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
            arrow.palette.setColor(role, Qt::white);
        m_style.drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, &painter, &list);
        return image.pixelColor(8, 8).lightness();
    };
    m_left.setFocus();
    const int ground = QColor(Qt::gray).lightness();
    EXPECT_GT(draw(m_left), ground);
    EXPECT_LT(draw(m_right), ground);
    EXPECT_GT(draw(m_right, QStyle::State_None), ground);
}

TEST(ShowFocusInLists, LeavesTheStyleOfADesktopAlone)
{
    const QString former = QApplication::style()->name();
    QApplication::setStyle(u"windows"_s);
    editor::ShowFocusInLists();
    EXPECT_EQ(dynamic_cast<editor::FocusStyle*>(QApplication::style()), nullptr);
    QApplication::setStyle(u"fusion"_s);
    editor::ShowFocusInLists();
    EXPECT_NE(dynamic_cast<editor::FocusStyle*>(QApplication::style()), nullptr);
    QApplication::setStyle(former);
}
