#include "editor/help/Tour.h"

#include "support/PrintText.h"
#include "support/WindowWaits.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A window with three things to show, of which one is hidden.
class Tour : public ::testing::Test
{
protected:
    Tour()
    {
        m_window.resize(700, 500);
        m_left.setGeometry(10, 10, 200, 400);
        m_right.setGeometry(400, 300, 250, 150);
        m_hidden.setGeometry(300, 10, 100, 100);
        m_hidden.hide();
        m_window.show();
        m_window.activateWindow();
        test::WaitUntilActive(m_window);
    }

    QList<editor::Tour::Step> Steps()
    {
        return {{[this] { return &m_left; }, u"左"_s, u"左边的字"_s},
                {[this] { return &m_right; }, u"右"_s, u"右边的字"_s},
                {[this] { return &m_hidden; }, u"藏"_s, u"藏着的字"_s},
                {{}, u"完"_s, u"最后的字"_s}};
    }
    bool Says(const QString& text) const
    {
        for (const QLabel* label : m_tour.findChildren<QLabel*>())
            if (label->text() == text && label->isVisible()) return true;
        return false;
    }
    QPushButton& Button(const QString& text) const
    {
        for (auto* button : m_tour.findChildren<QPushButton*>())
            if (button->text().startsWith(text)) return *button;
        throw std::out_of_range(text.toStdString());
    }
    void Press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    QWidget m_window;
    QWidget m_left{&m_window};
    QWidget m_right{&m_window};
    QWidget m_hidden{&m_window};
    int m_ended = 0;
    editor::Tour& m_tour = *new editor::Tour(m_window, Steps(), [this] { ++m_ended; });
};

} // namespace

TEST_F(Tour, TellsOfOneWidgetAfterAnotherBesideIt)
{
    m_tour.Start();
    EXPECT_TRUE(Says(u"左"_s));
    EXPECT_TRUE(Says(u"1/4"_s));
    EXPECT_FALSE(m_tour.geometry().intersects(m_left.geometry()));
    EXPECT_FALSE(Button(u"上一步"_s).isEnabled());
    QTest::mouseClick(&Button(u"下一步"_s), Qt::LeftButton);
    EXPECT_TRUE(Says(u"右边的字"_s));
    EXPECT_FALSE(m_tour.geometry().intersects(m_right.geometry()));
    EXPECT_TRUE(m_window.rect().contains(m_tour.geometry()));
    QTest::mouseClick(&Button(u"上一步"_s), Qt::LeftButton);
    EXPECT_TRUE(Says(u"左边的字"_s));
}

TEST_F(Tour, KeysTurnAndEnd)
{
    m_tour.Start();
    Press(Qt::Key_Left);
    EXPECT_EQ(m_tour.Current(), 0);
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_EQ(m_tour.Current(), 2);
    Press(Qt::Key_Left);
    EXPECT_EQ(m_tour.Current(), 1);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(m_tour.isVisible());
    EXPECT_EQ(m_ended, 1);
}

TEST_F(Tour, EndsBehindTheLastStep)
{
    m_tour.Start();
    for (int step = 0; step < 3; ++step)
        Press(Qt::Key_Right);
    EXPECT_TRUE(Says(u"4/4"_s));
    EXPECT_EQ(m_ended, 0);
    QTest::mouseClick(&Button(u"完成"_s), Qt::LeftButton);
    EXPECT_FALSE(m_tour.isVisible());
    EXPECT_EQ(m_ended, 1);
}

TEST_F(Tour, StandsInTheMiddleForWhatCannotBeSeen)
{
    m_tour.Start();
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_TRUE(Says(u"藏着的字"_s));
    const QPoint off = m_tour.geometry().center() - m_window.rect().center();
    EXPECT_LE(off.manhattanLength(), 2);
}

TEST_F(Tour, FollowsWhatItTellsOf)
{
    m_tour.Start();
    Press(Qt::Key_Right);
    m_right.move(20, 20);
    EXPECT_FALSE(m_tour.geometry().intersects(m_right.geometry()));
    m_window.resize(500, 420);
    EXPECT_TRUE(m_window.rect().contains(m_tour.geometry()));
}

TEST_F(Tour, TheWindowCanBeUsedMeanwhile)
{
    QPushButton below(u"按"_s, &m_window);
    below.setGeometry(600, 460, 60, 30);
    below.show();
    bool pressed = false;
    QObject::connect(&below, &QPushButton::clicked, &below, [&] { pressed = true; });
    m_tour.Start();
    QTest::mouseClick(m_window.windowHandle(), Qt::LeftButton, {}, below.geometry().center());
    EXPECT_TRUE(pressed);
    EXPECT_EQ(m_tour.Current(), 0);
}

TEST_F(Tour, IsOfferedAndMayBeRefused)
{
    m_tour.Offer(u"第一次用？"_s, u"四步"_s);
    EXPECT_EQ(m_tour.Current(), -1);
    EXPECT_TRUE(Says(u"四步"_s));
    EXPECT_FALSE(Button(u"上一步"_s).isVisible());
    QTest::mouseClick(&Button(u"不用了"_s), Qt::LeftButton);
    EXPECT_FALSE(m_tour.isVisible());
    EXPECT_EQ(m_ended, 1);
}

TEST_F(Tour, AnOfferThatIsTakenBeginsWithTheFirstStep)
{
    m_tour.Offer(u"第一次用？"_s, u"四步"_s);
    Press(Qt::Key_Right);
    EXPECT_EQ(m_tour.Current(), 0);
    EXPECT_TRUE(Button(u"结束"_s).isVisible());
}

TEST_F(Tour, ItsWordsReachAidsForTheBlind)
{
    m_tour.Start();
    EXPECT_EQ(m_tour.accessibleName(), u"左"_s);
    EXPECT_EQ(m_tour.accessibleDescription(), u"左边的字"_s);
    EXPECT_EQ(QApplication::focusWidget()->accessibleDescription(), u"左。左边的字"_s);
}
