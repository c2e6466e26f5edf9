#include "editor/office/JoinedDialog.h"
#include "editor/office/OfficeWindowFixture.h"
#include "editor/workbench/ConflictDialog.h"

#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QSplitter>

using namespace Qt::StringLiterals;
using test::OfficeWindowTest;

TEST_F(OfficeWindowTest, WhatWasMergedIsShownAndPublishedByTheButton)
{
    EditWithAColleague();
    QByteArray mine = File();
    const qsizetype last = mine.lastIndexOf("DN");
    ASSERT_GT(last, mine.indexOf("DN15"));
    mine.replace(last, 2, "dn");
    WriteFile(mine);
    const QByteArray theirs = LastPublished();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_EQ(Cell(window, 0, House, 1), u"已修改，有新版");
        PublishAndAnswer<editor::JoinedDialog>(window, [&](QDialog& dialog) {
            const auto& views = *dialog.findChild<QSplitter*>();
            ASSERT_EQ(views.count(), 2);
            const auto text = [&](int side) {
                return views.widget(side)->findChild<QPlainTextEdit*>()->toPlainText();
            };
            EXPECT_TRUE(text(0).contains(u"DN15A"_s)) << text(0).toStdString();
            EXPECT_TRUE(text(1).contains(u"dn"_s)) << text(1).toStdString();
            test::PressButton(dialog, u"不发布"_s);
        });
        EXPECT_EQ(File(), mine);
        EXPECT_EQ(LastPublished(), theirs);
        PublishAndAnswer<editor::JoinedDialog>(window,
                                               [](QDialog& dialog) { test::PressButton(dialog, u"发布"_s); });
        EXPECT_EQ(List(window, 1).topLevelItem(0)->text(0), u"3");
    });
    EXPECT_TRUE(File().contains("DN15A"));
    EXPECT_EQ(File().count("dn"), mine.count("dn"));
    EXPECT_EQ(LastPublished(), File());
}

TEST_F(OfficeWindowTest, SecondMergeOfAPublicationTellsWhatTheFileHoldsByNow)
{
    EditWithAColleague();
    EditMyself();
    CStringArray leads;
    QByteArray afterFirst;
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, &window, [&] {
            auto* dialog = dynamic_cast<editor::JoinedDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || leads.contains(Lead(*dialog))) return;
            leads.append(Lead(*dialog));
            const bool isFirst = leads.size() == 1;
            if (isFirst)
                Publish(Changed(LastPublished(), "DN100", "DN100A"), 2, {});
            else
                afterFirst = File();
            test::PressButton(*dialog, isFirst ? u"发布"_s : u"不发布"_s);
        });
        user.start(10);
        PublishWith(window, {});
    });
    ASSERT_EQ(leads.size(), 2);
    EXPECT_TRUE(leads[0].contains(u"第 2 版"_s) && leads[0].contains(u"什么也不改"_s))
        << leads[0].toStdString();
    EXPECT_TRUE(leads[1].contains(u"又有人发布了"_s) && leads[1].contains(u"第 3 版"_s) &&
                leads[1].contains(u"第 2 版"_s) && !leads[1].contains(u"什么也不改"_s))
        << leads[1].toStdString();
    EXPECT_TRUE(afterFirst.contains("DN15A") && !afterFirst.contains("DN100A"));
    EXPECT_EQ(File(), afterFirst);
    EXPECT_TRUE(m_messages.Texts().last().contains(u"本地文件已与别人发布的第 2 版合并"_s));
}

TEST_F(OfficeWindowTest, WhatWasMergedIsToldThoughThePublicationIsNotAnswered)
{
    EditWithAColleague();
    EditMyself();
    const test::AnswerLost lost(m_office);
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        PublishAndAnswer<editor::JoinedDialog>(window,
                                               [](QDialog& dialog) { test::PressButton(dialog, u"发布"_s); });
        EXPECT_TRUE(window.HasChangedFiles());
    });
    EXPECT_TRUE(File().contains("DN15A"));
    const CString told = m_messages.Texts().last();
    for (const CString& part : {u"本地文件已与别人发布的第 2 版合并"_s, u"可能已经发布"_s, u"DN15A"_s})
        EXPECT_TRUE(told.contains(part)) << told.toStdString();
}

TEST_F(OfficeWindowTest, ConflictIsAskedInTheWordsOfTheOffice)
{
    EditWithAColleague();
    const QByteArray mine = Changed(File(), "DN15", "DN15B");
    WriteFile(mine);
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        PublishAndAnswer<editor::ConflictDialog>(window, [&](QDialog& dialog) {
            const auto words = editor::ConflictDialog::WordsForOffice(House);
            bool isLed = false;
            for (const QLabel* label : dialog.findChildren<QLabel*>())
                isLed = isLed || label->text() == words.lead;
            EXPECT_TRUE(isLed && words.lead.contains(House));
            test::PressButton(dialog, words.allTheirs);
            dialog.accept();
        });
        EXPECT_EQ(Cell(window, 0, House, 1), u"相同");
    });
    EXPECT_TRUE(File().contains("DN15A"));
}

TEST_F(OfficeWindowTest, WhatWaitsAndHasToBeMergedIsLeftToTheButton)
{
    EditWithAColleague();
    QByteArray mine = File();
    mine.replace(mine.lastIndexOf("DN"), 2, "dn");
    WriteFile(mine);
    test::SharedServer().Stop();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        PublishWith(window, {});
    });
    test::SharedServer().StartAgain();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_TRUE(Cell(window, 0, House, 1).contains(u"等待发布"_s));
    });
    EXPECT_EQ(File(), mine);
    EXPECT_TRUE(m_messages.Texts().last().contains(u"还没有人同意"_s));
}
