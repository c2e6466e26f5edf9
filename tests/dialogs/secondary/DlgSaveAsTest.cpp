#include "dialogs/secondary/DlgSaveAsFixture.h"

#include "platform/Files.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace test::saveas;

TEST_F(DlgSaveAsTest, LoadModeHasItsTextsAndADisabledName)
{
    DlgSaveAs dialog(DlgSaveAs::Load, nullptr, {});
    test::Open(dialog);
    EXPECT_EQ(dialog.windowTitle(), u"调用"_s);
    EXPECT_EQ(dialog.ItemText(Save), u"调用"_s);
    EXPECT_FALSE(dialog.GetDlgItem(NameEdit)->isEnabled());
}

TEST_F(DlgSaveAsTest, NewModeHasItsTextsAndAnEnabledName)
{
    DlgSaveAs dialog(DlgSaveAs::New, nullptr, {});
    test::Open(dialog);
    EXPECT_EQ(dialog.windowTitle(), u"新建"_s);
    EXPECT_EQ(dialog.ItemText(Save), u"新建"_s);
    EXPECT_TRUE(dialog.GetDlgItem(NameEdit)->isEnabled());
}

TEST_F(DlgSaveAsTest, SaveAsModeKeepsTheTemplatesButtonText)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    test::Open(dialog);
    EXPECT_EQ(dialog.windowTitle(), u"另存"_s);
    EXPECT_EQ(dialog.ItemText(Save), u"保存(&S)"_s);
    EXPECT_TRUE(dialog.GetDlgItem(NameEdit)->isEnabled());
}

TEST_F(DlgSaveAsTest, StartsWithoutSelectionAndWithoutName)
{
    AddFiles({u"甲"_s, u"乙"_s});
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, PathOf(u"甲.xml"_s));
    test::Open(dialog);
    EXPECT_TRUE(dialog.Item<QListWidget>(FileList).selectedItems().isEmpty());
    EXPECT_EQ(dialog.ItemText(NameEdit), CString());
}

TEST_F(DlgSaveAsTest, FileTypeShowsItsOnlyEntry)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    test::Open(dialog);
    EXPECT_EQ(test::Entries(dialog, TypeCombo), CStringArray{u"XML文件(*.xml)"_s});
    EXPECT_EQ(dialog.Item<QComboBox>(TypeCombo).currentIndex(), 0);
}

TEST_F(DlgSaveAsTest, ListsXmlFilesWithoutExtensionInChineseOrderWithNumbersByValue)
{
    AddFiles({u"规则10"_s, u"规则9"_s, u"张"_s, u"安"_s, u"b"_s, u"A"_s});
    AddFile(u"说明.txt"_s);
    AddFile(u"大写.XML"_s);
    DlgSaveAs dialog(DlgSaveAs::Load, nullptr, {});
    test::Open(dialog);
    const CStringArray byPinyin{u"安"_s, u"大写"_s, u"规则9"_s, u"规则10"_s, u"张"_s};
    CStringArray lines = test::Lines(dialog, FileList);
    ASSERT_EQ(lines.size(), 7);
    EXPECT_LT(lines.indexOf(u"A"_s), lines.indexOf(u"b"_s));
    lines.removeAll(u"A"_s);
    lines.removeAll(u"b"_s);
    EXPECT_EQ(lines, byPinyin);
}

TEST_F(DlgSaveAsTest, NameWithSeveralStopsIsListedUpToItsLast)
{
    AddFile(u"a.b.xml"_s);
    DlgSaveAs dialog(DlgSaveAs::Load, nullptr, {});
    test::Open(dialog);
    EXPECT_EQ(test::Lines(dialog, FileList), CStringArray{u"a.b"_s});
}

TEST_F(DlgSaveAsTest, ClickingALineTakesItsName)
{
    AddFiles({u"b"_s, u"a"_s});
    DlgSaveAs dialog(DlgSaveAs::Load, nullptr, {});
    test::Open(dialog);
    test::ClickLine(dialog, FileList, 1);
    EXPECT_EQ(dialog.ItemText(NameEdit), u"b"_s);
    test::Click(dialog, Save);
    ExpectChosen(dialog, PathOf(u"b.xml"_s));
    ExpectSilence();
}

TEST_F(DlgSaveAsTest, ArrowKeysTakeNamesFromTheList)
{
    AddFiles({u"a"_s, u"b"_s});
    DlgSaveAs dialog(DlgSaveAs::Load, nullptr, {});
    test::Open(dialog);
    test::ClickLine(dialog, FileList, 0);
    test::Press(dialog, Qt::Key_Down);
    EXPECT_EQ(dialog.ItemText(NameEdit), u"b"_s);
}

TEST_F(DlgSaveAsTest, SelectedNameReplacesATypedOne)
{
    AddFiles({u"a"_s});
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    test::Open(dialog);
    test::Type(dialog, NameEdit, u"other"_s);
    test::ClickLine(dialog, FileList, 0);
    EXPECT_EQ(dialog.ItemText(NameEdit), u"a"_s);
}

TEST_F(DlgSaveAsTest, ClickOnTheSelectedFileTakesItsNameAgain)
{
    AddFiles({u"a"_s});
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    test::Open(dialog);
    test::ClickLine(dialog, FileList, 0);
    test::Type(dialog, NameEdit, u"other"_s);
    test::ClickLine(dialog, FileList, 0);
    EXPECT_EQ(dialog.ItemText(NameEdit), u"a"_s);
}

TEST_F(DlgSaveAsTest, FileTypeIsThereBeforeTheFolderIsRead)
{
    struct UnreadableFolder : platform::FileSystemProxy
    {
        UnreadableFolder() : FileSystemProxy(platform::RealFileSystem()) {}
        CStringArray FindFiles(const CString&, const CString&) override
        {
            throw std::runtime_error("folder");
        }
    } files;
    const platform::ScopedFileSystem installed(files);
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    EXPECT_THROW(dialog.Create(), std::runtime_error);
    EXPECT_EQ(test::Entries(dialog, TypeCombo), CStringArray{u"XML文件(*.xml)"_s});
}

TEST_F(DlgSaveAsTest, LoadModeWithAnEmptyFolderOnlyLetsTheUserCancel)
{
    DlgSaveAs dialog(DlgSaveAs::Load, nullptr, {});
    test::Open(dialog);
    test::Click(dialog, Save);
    EXPECT_TRUE(dialog.isVisible());
    ExpectSilence();
    test::Click(dialog, test::saveas::Cancel);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), dialogs::IdCancel);
}

TEST_F(DlgSaveAsTest, MissingFolderGivesAnEmptyListAndNoMessage)
{
    m_guard.Host().SetAppFolder(m_guard.AppFolder() + u"\\missing"_s);
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    test::Open(dialog);
    EXPECT_EQ(test::Lines(dialog, FileList), CStringArray());
    ExpectSilence();
}

TEST_F(DlgSaveAsTest, NameOfANewFileCanBeTypedAtOnce)
{
    for (const int mode : {DlgSaveAs::New, DlgSaveAs::SaveAs}) {
        DlgSaveAs dialog(mode, nullptr, {});
        test::Open(dialog);
        EXPECT_EQ(dialog.focusWidget(), dialog.GetDlgItem(NameEdit)) << mode;
    }
}

TEST_F(DlgSaveAsTest, EnterInTheNameSaves)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    test::Open(dialog);
    dialog.GetDlgItem(NameEdit)->setFocus();
    test::Type(dialog, NameEdit, u"abc"_s);
    test::Press(dialog, Qt::Key_Return);
    ExpectChosen(dialog, PathOf(u"abc.xml"_s));
}

TEST_F(DlgSaveAsTest, EscapeLeavesWithoutAFile)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    test::Open(dialog);
    test::Type(dialog, NameEdit, u"abc"_s);
    test::Press(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), dialogs::IdCancel);
}

TEST_F(DlgSaveAsTest, ModalRunGivesTheResultOfTheButton)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    QTimer::singleShot(0, [&dialog] {
        test::Type(dialog, NameEdit, u"abc"_s);
        test::Click(dialog, Save);
    });
    EXPECT_EQ(dialog.DoModal(), dialogs::IdOk);
}

TEST_F(DlgSaveAsTest, ThousandRoundsLeaveNoWidgetBehind)
{
    AddFiles({u"abc"_s, u"def"_s});
    const auto before = QApplication::allWidgets().size();
    for (int round = 0; round < 1000; ++round) {
        DlgSaveAs dialog(round % 3, nullptr, PathOf(u"abc.xml"_s));
        test::Open(dialog);
        test::ClickLine(dialog, FileList, round % 2);
        test::Click(dialog, round % 2 == 0 ? test::saveas::Save : test::saveas::Cancel);
        dialog.close();
    }
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}
