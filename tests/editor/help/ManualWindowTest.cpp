#include "editor/help/ManualWindow.h"

#include "editor/help/ManualView.h"
#include "support/Patience.h"
#include "support/Pixels.h"
#include "support/PrintText.h"
#include "support/WindowWaits.h"

#include <QtCore/QUrl>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFragment>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTreeWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using editor::ManualPlace;

namespace {

const ManualPlace Values{u"manual.zh-CN/config.md"_s, u"取值设置"_s};

class ManualWindow : public ::testing::Test
{
protected:
    editor::ManualView& View() const
    {
        return *dynamic_cast<editor::ManualView*>(m_window.findChild<QTextBrowser*>());
    }
    QLineEdit& Words() const { return *m_window.findChild<QLineEdit*>(); }
    QTreeWidget& Tree(const QString& name) const
    {
        for (auto* tree : m_window.findChildren<QTreeWidget*>())
            if (tree->accessibleName() == name) return *tree;
        throw std::out_of_range(name.toStdString());
    }
    bool Says(const QString& text) const
    {
        for (const QLabel* label : m_window.findChildren<QLabel*>())
            if (label->text() == text) return true;
        return false;
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        test::WaitUntilActive(m_window);
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    /// The widths of the pictures of the page as they are laid out.
    QList<qreal> PictureWidths() const
    {
        QList<qreal> widths;
        const QTextDocument& page = *View().document();
        for (QTextBlock block = page.begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part)
                if (part.fragment().charFormat().isImageFormat())
                    widths.append(part.fragment().charFormat().toImageFormat().width());
        return widths;
    }

    QList<QUrl> m_browsed;
    editor::ManualWindow m_window{[this](const QUrl& link) { m_browsed.append(link); }};
};

} // namespace

TEST_F(ManualWindow, ShowsATopicAtItsHeading)
{
    m_window.Show(u"config.md#取值设置"_s);
    EXPECT_TRUE(m_window.isVisible());
    EXPECT_EQ(m_window.Place(), Values);
    EXPECT_EQ(m_window.windowTitle(), u"配置对话框 - 手册"_s);
    EXPECT_EQ(View().HeadingAtTop(), 4);
    EXPECT_EQ(Tree(u"目录"_s).currentItem()->text(0), u"取值设置"_s);
    m_window.Show(u"nothing.md"_s);
    EXPECT_EQ(m_window.Place(), (ManualPlace{u"manual.zh-CN.md"_s, {}}));
}

TEST_F(ManualWindow, ContentsListEveryChapterAndItsHeadings)
{
    m_window.Show({});
    const QTreeWidget& contents = Tree(u"目录"_s);
    EXPECT_EQ(contents.topLevelItem(0)->text(0), u"用户手册"_s);
    EXPECT_EQ(contents.topLevelItem(contents.topLevelItemCount() - 1)->text(0), u"其他文档（英文）"_s);
    const auto found = contents.findItems(u"什么时候保存"_s, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1);
    Tree(u"目录"_s).setCurrentItem(found.first());
    EXPECT_EQ(m_window.Place(), (ManualPlace{Values.path, u"什么时候保存"_s}));
    EXPECT_EQ(contents.currentItem(), found.first()); // though it cannot come to the top of the view
}

TEST_F(ManualWindow, GoesToTheHeadingThatAnAidForTheDisabledSelects)
{
    m_window.Show({});
    QTreeWidget& contents = Tree(u"目录"_s);
    QTreeWidgetItem* const wanted = contents.topLevelItem(1);
    ASSERT_NE(contents.currentItem(), wanted);
    test::SelectByAid(contents, contents.model()->index(1, 0));
    test::WaitInLoopFor(u"the page"_s, [&] { return contents.currentItem() == wanted; });
    EXPECT_TRUE(m_window.windowTitle().startsWith(wanted->text(0))) << m_window.windowTitle().toStdString();
}

TEST_F(ManualWindow, ArrowKeysGoThroughTheContentsWithoutGettingStuck)
{
    m_window.Show({});
    QTreeWidget& contents = Tree(u"目录"_s);
    contents.expandAll();
    contents.setFocus();
    contents.setCurrentItem(contents.topLevelItem(0));
    int steps = 0;
    for (; contents.itemBelow(contents.currentItem()) != nullptr; ++steps) {
        const QTreeWidgetItem* below = contents.itemBelow(contents.currentItem());
        Press(Qt::Key_Down);
        ASSERT_EQ(contents.currentItem(), below) << steps;
    }
    EXPECT_GE(steps, 8);
}

TEST_F(ManualWindow, BackAndForwardGoToThePlacesThatWereLookedAt)
{
    m_window.Show({});
    m_window.Show(u"config.md#取值设置"_s);
    m_window.Show(u"data.md"_s);
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(m_window.Place(), Values);
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(m_window.Place().path, u"manual.zh-CN.md"_s);
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(m_window.Place(), Values);
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(m_window.Place().path, u"manual.zh-CN/data.md"_s);
}

TEST_F(ManualWindow, LinksLeadToPagesInTheWindowAndOthersToTheBrowser)
{
    m_window.Show({});
    emit View().anchorClicked(QUrl(u"manual.zh-CN/windows.md#云盘"_s));
    EXPECT_EQ(m_window.Place(), (ManualPlace{u"manual.zh-CN/windows.md"_s, u"云盘"_s}));
    emit View().anchorClicked(QUrl(u"config.md"_s));
    EXPECT_EQ(m_window.Place().path, Values.path);
    EXPECT_TRUE(m_browsed.isEmpty());
    emit View().anchorClicked(QUrl(u"https://example.org/x"_s));
    EXPECT_EQ(m_browsed, QList<QUrl>({QUrl(u"https://example.org/x"_s)}));
    EXPECT_EQ(m_window.Place().path, Values.path);
}

TEST_F(ManualWindow, ALinkIsFollowedByKeyboard)
{
    m_window.Show({});
    Press(Qt::Key_Tab); // to the first link
    Press(Qt::Key_Return);
    EXPECT_TRUE(m_window.Place().path.startsWith(u"manual.zh-CN/")) << m_window.Place().path.toStdString();
}

TEST_F(ManualWindow, SearchListsThePagesAndStepsThroughThePlaces)
{
    m_window.Show({});
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), &Words());
    m_window.Search(u"云盘模板"_s);
    const QTreeWidget& hits = Tree(u"查到的地方"_s);
    EXPECT_TRUE(hits.isVisible());
    ASSERT_GE(hits.topLevelItemCount(), 1);
    int count = 0;
    for (int i = 0; i < hits.topLevelItemCount(); ++i)
        count += hits.topLevelItem(i)->childCount();
    EXPECT_TRUE(Says(u"%1 处"_s.arg(count)));
    Press(Qt::Key_Return);
    EXPECT_TRUE(Says(u"第 1 处，共 %1 处"_s.arg(count)));
    EXPECT_EQ(View().extraSelections().first().cursor.selectedText(), u"云盘模板"_s);
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_TRUE(Says(u"第 %1 处，共 %1 处"_s.arg(count)));
    Press(Qt::Key_F3);
    EXPECT_TRUE(Says(u"第 1 处，共 %1 处"_s.arg(count)));
    m_window.Search(u"没有人会写的字眼"_s);
    EXPECT_TRUE(Says(u"没有查到"_s));
    Press(Qt::Key_Escape);
    EXPECT_TRUE(Words().text().isEmpty());
    EXPECT_TRUE(Tree(u"目录"_s).isVisible());
    EXPECT_TRUE(m_window.isVisible());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(m_window.isVisible());
}

TEST_F(ManualWindow, EveryPlaceOfASearchIsMarkedOnItsPage)
{
    m_window.Show({});
    m_window.Search(u"默认规则"_s);
    QTreeWidget& hits = Tree(u"查到的地方"_s);
    for (int page = 0; page < hits.topLevelItemCount(); ++page) {
        const QTreeWidgetItem* item = hits.topLevelItem(page);
        for (int place = 0; place < item->childCount(); ++place) {
            hits.setCurrentItem(item->child(place));
            const auto marks = View().extraSelections();
            ASSERT_EQ(marks.size(), item->childCount());
            EXPECT_EQ(marks[place].cursor.selectedText(), u"默认规则"_s);
            const QRect seen = View().cursorRect(marks[place].cursor);
            EXPECT_TRUE(View().viewport()->rect().intersects(seen)) << page << ' ' << place;
        }
    }
}

TEST_F(ManualWindow, PicturesAreAsWideAsTheWindowAllows)
{
    m_window.Show(u"config.md"_s);
    m_window.resize(1600, 700);
    const QList<qreal> wide = PictureWidths();
    ASSERT_FALSE(wide.isEmpty());
    m_window.resize(560, 700);
    for (const qreal width : PictureWidths())
        EXPECT_LE(width, View().viewport()->width());
    EXPECT_EQ(View().horizontalScrollBar()->maximum(), 0);
    m_window.resize(1600, 700);
    EXPECT_EQ(PictureWidths(), wide);
}

TEST_F(ManualWindow, TheHeadingThatIsReadStaysWhenTheWindowIsResized)
{
    m_window.Show(u"config.md#取值设置"_s);
    m_window.resize(600, 500);
    EXPECT_EQ(View().HeadingAtTop(), 4);
    m_window.resize(1500, 500);
    EXPECT_EQ(View().HeadingAtTop(), 4);
}

TEST_F(ManualWindow, TextCanBeReadInADarkPalette)
{
    m_window.Show(u"config.md"_s);
    const test::ScopedPalette palette(test::DarkPalette());
    QCoreApplication::processEvents();
    const QImage picture = View().viewport()->grab(QRect(0, 0, View().viewport()->width(), 60)).toImage();
    EXPECT_GT(test::MostContrast(picture, picture.rect(), View().palette().color(QPalette::Base)), 4.5);
}

TEST_F(ManualWindow, LettersFollowTheFontOfTheWindow)
{
    m_window.Show(u"editor.md"_s);
    QFont large = m_window.font();
    large.setPointSizeF(large.pointSizeF() * 2);
    m_window.setFont(large);
    EXPECT_EQ(View().document()->defaultFont().pointSizeF(), large.pointSizeF());
    qsizetype parts = 0;
    for (QTextBlock block = View().document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            if (!part.fragment().charFormat().hasProperty(QTextFormat::FontPointSize)) continue;
            ++parts;
            EXPECT_EQ(part.fragment().charFormat().fontPointSize(), large.pointSizeF());
        }
    }
    EXPECT_GE(parts, 5);
}
