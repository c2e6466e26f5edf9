#include "editor/help/ManualPages.h"

#include "editor/help/ManualSearch.h"
#include "support/PrintText.h"
#include "support/SourceTree.h"

#include <QtCore/QDir>
#include <QtGui/QTextDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using editor::ManualPages;
using editor::ManualPlace;

TEST(ManualPages, BeginWithTheManualAndItsChaptersInOrder)
{
    const ManualPages pages;
    ASSERT_GE(pages.Pages().size(), 8);
    EXPECT_EQ(pages.Pages().first().path, u"manual.zh-CN.md"_s);
    EXPECT_EQ(pages.Pages().first().title, u"用户手册"_s);
    const QStringList links = pages.Pages().first().links;
    EXPECT_EQ(pages.Pages()[1].path, links.first());
}

// A new chapter travels in the program when it stands in ktqdde_manual.qrc.
TEST(ManualPages, HoldEveryChapterOfTheDocuments)
{
    const ManualPages pages;
    for (const QString& name : QDir(test::InSourceTree(u"docs/manual.zh-CN"_s)).entryList({u"*.md"_s}))
        EXPECT_NE(pages.Find(u"manual.zh-CN/"_s + name), nullptr) << name.toStdString();
}

TEST(ManualPages, EveryLinkAndPictureIsThere)
{
    const ManualPages pages;
    qsizetype links = 0;
    qsizetype pictures = 0;
    for (const editor::ManualPage& page : pages.Pages()) {
        for (const QString& link : page.links) {
            if (link.contains(u"://")) continue;
            ++links;
            const auto place = pages.Follow(page.path, link);
            ASSERT_TRUE(place.has_value()) << page.path.toStdString() << ": " << link.toStdString();
            EXPECT_EQ(place->anchor, link.section(u'#', 1)) << page.path.toStdString();
        }
        for (const QString& picture : page.pictures) {
            ++pictures;
            EXPECT_FALSE(ManualPages::PictureOf(page.path, picture).isNull())
                << page.path.toStdString() << ": " << picture.toStdString();
        }
    }
    EXPECT_GE(links, 30);
    EXPECT_GE(pictures, 15);
}

TEST(ManualPages, ATopicNamesAPageAndAHeading)
{
    const ManualPages pages;
    EXPECT_EQ(pages.PlaceOf(u"config.md#取值设置"_s),
              (ManualPlace{u"manual.zh-CN/config.md"_s, u"取值设置"_s}));
    EXPECT_EQ(pages.PlaceOf(u"manual.zh-CN.md"_s), (ManualPlace{u"manual.zh-CN.md"_s, {}}));
    EXPECT_EQ(pages.PlaceOf(u"data.md"_s)->path, u"manual.zh-CN/data.md"_s);
    EXPECT_EQ(pages.PlaceOf(u"config.md#没有这一节"_s), (ManualPlace{u"manual.zh-CN/config.md"_s, {}}));
    EXPECT_EQ(pages.PlaceOf(u"nothing.md"_s), std::nullopt);
}

TEST(ManualPages, AnAnchorIsMadeAsOnTheWebPages)
{
    EXPECT_EQ(ManualPages::AnchorOf(u"新建、复制 和 Rename_x (2)"_s), u"新建复制-和-rename_x-2"_s);
}

TEST(ManualPages, NoBlankComesBetweenChineseLines)
{
    QTextDocument document;
    ManualPages::Fill(
        document,
        u"# 标题\n\n一行，\n又一行 with words\nand more。\n\n    代码\n    代码\n\n- 点\n  接着\n"_s);
    EXPECT_EQ(document.toPlainText(), u"标题\n一行，又一行 with words and more。\n代码\n代码\n点接着"_s);
}

TEST(ManualPages, WhatTheDocumentsTellTheirTestsIsNotShown)
{
    const ManualPages pages;
    for (const editor::ManualPage& page : pages.Pages())
        EXPECT_FALSE(page.text.contains(u"<!--")) << page.path.toStdString();
}

TEST(ManualSearch, FindsEveryPlaceOnEveryPage)
{
    const ManualPages pages;
    const auto hits = editor::FindInManual(pages, u"默认规则"_s);
    ASSERT_GE(hits.size(), 2);
    for (const editor::ManualHits& found : hits) {
        EXPECT_EQ(found.places.size(), found.page->text.count(u"默认规则"_s));
        for (const int place : found.places)
            EXPECT_TRUE(editor::LineAround(*found.page, place, 4).contains(u"默认规则"));
    }
}

TEST(ManualSearch, TakesNoHeedOfLetterCaseAndFindsNothingForNothing)
{
    const ManualPages pages;
    EXPECT_EQ(editor::FindInManual(pages, u"CTRL"_s).size(), editor::FindInManual(pages, u"ctrl"_s).size());
    EXPECT_FALSE(editor::FindInManual(pages, u"ctrl"_s).isEmpty());
    EXPECT_TRUE(editor::FindInManual(pages, {}).isEmpty());
    EXPECT_TRUE(editor::FindInManual(pages, u"没有人会写的字眼"_s).isEmpty());
}
