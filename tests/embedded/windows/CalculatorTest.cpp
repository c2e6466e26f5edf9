#include "dialogs/ModalUser.h"
#include "embedded/windows/PickerFixture.h"
#include "embedded/windows/WindowUser.h"
#include "host/HostWindows.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableWidget>

using namespace Qt::StringLiterals;
using namespace test;

namespace {

class Calculator : public EmbeddedWindowsTest
{
protected:
    /// Runs the calculator of a water pipe on `text`, with a user who does `step`; gives its result, or
    /// "cancelled".
    CString Run(const CString& text, const ModalStep& step)
    {
        InModalWindows({step});
        CString result = u"untouched"_s;
        const int code = KtGlobalDlg::CFaceGlobalDlg().ShowCalculatorDlg(u"给排水\\管道\\给水管"_s, text,
                                                                         result, &m_parent);
        if (code == 1) return result;
        EXPECT_EQ(result, u"untouched"_s);
        return u"cancelled"_s;
    }

    static QLineEdit& Formula(const QWidget& window) { return Named<QLineEdit>(window, u"计算公式"_s); }
    static QTableWidget& Items(const QWidget& window) { return Named<QTableWidget>(window, u"计算项目"_s); }
    static CString Message(const QWidget& window) { return Told(window, u"检查结果"_s); }
    static void Replace(const QWidget& window, const CString& text)
    {
        Formula(window).selectAll();
        QTest::keyClick(&Formula(window), Qt::Key_Delete);
        TypeText(Formula(window), text);
    }
};

TEST_F(Calculator, GivesTheFormulaOnAccept)
{
    const CString result = Run(u"管道长度"_s, [](QWidget& window) {
        EXPECT_EQ(Formula(window).text(), u"管道长度"_s);
        Replace(window, u"管道长度*1.02"_s);
        EXPECT_EQ(Message(window), u"公式正确"_s);
        ClickButton(window, u"确定"_s);
    });
    EXPECT_EQ(result, u"管道长度*1.02"_s);
}

TEST_F(Calculator, EnterAccepts)
{
    EXPECT_EQ(Run(u"1+2"_s, [](QWidget& window) { QTest::keyClick(&Formula(window), Qt::Key_Return); }),
              u"1+2"_s);
}

TEST_F(Calculator, LeavesTheResultAloneOnCancel)
{
    EXPECT_EQ(Run(u"1"_s,
                  [](QWidget& window) {
                      Replace(window, u"2"_s);
                      ClickButton(window, u"取消"_s);
                  }),
              u"cancelled"_s);
    EXPECT_EQ(Run(u"1"_s, [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }), u"cancelled"_s);
}

TEST_F(Calculator, ChecksWhileTypingAndTellsThePosition)
{
    Run({}, [](QWidget& window) {
        EXPECT_EQ(Message(window), u"没有公式"_s);
        TypeText(Formula(window), u"管道长度"_s);
        EXPECT_TRUE(Button(window, u"确定"_s).isEnabled());
        TypeText(Formula(window), u"*"_s);
        EXPECT_EQ(Message(window), u"第 6 个字符：公式不完整，后面还缺少数字或计算项目"_s);
        EXPECT_FALSE(Button(window, u"确定"_s).isEnabled());
        TypeText(Formula(window), u"宽度"_s);
        EXPECT_EQ(Message(window), u"第 6 个字符：“宽度”不是计算项目"_s);
        QTest::keyClick(&Formula(window), Qt::Key_Return);
        EXPECT_TRUE(window.isVisible());
        window.close();
    });
}

TEST_F(Calculator, TakesABlankFormula)
{
    EXPECT_EQ(Run(u"管道长度"_s,
                  [](QWidget& window) {
                      Replace(window, {});
                      ClickButton(window, u"确定"_s);
                  }),
              CString());
}

TEST_F(Calculator, FaultyTextThatWasThereStaysUntilItIsMended)
{
    const CString former = u"见 图纸；L=2m\n第二行"_s;
    EXPECT_EQ(Run(former,
                  [&](QWidget& window) {
                      EXPECT_EQ(Formula(window).text(), former);
                      EXPECT_FALSE(Button(window, u"确定"_s).isEnabled());
                      window.close();
                  }),
              u"cancelled"_s);
}

TEST_F(Calculator, GoodTextComesBackCharacterByCharacter)
{
    const CString former = u" 管道长度 +\t1\n"_s;
    EXPECT_EQ(Run(former, [](QWidget& window) { ClickButton(window, u"确定"_s); }), former);
}

TEST_F(Calculator, LongTextIsNotCut)
{
    const CString former = u"1"_s + CString(u"+1"_s).repeated(40000);
    EXPECT_EQ(Run(former, [](QWidget& window) { ClickButton(window, u"确定"_s); }), former);
}

TEST_F(Calculator, ListsTheItemsOfTheCategoryWithTheirRules)
{
    Run({}, [](QWidget& window) {
        EXPECT_EQ(Items(window).item(0, 0)->text(), u"管道长度"_s);
        EXPECT_EQ(Items(window).item(0, 1)->text(), u"PipeLength"_s);
        EXPECT_EQ(Items(window).item(0, 2)->text(), u"长度"_s);
        EXPECT_EQ(Items(window).item(0, 3)->text(), u"水平管长度+立管长度"_s);
        EXPECT_EQ(Items(window).item(1, 2)->text(), u"个数"_s);
        window.close();
    });
}

TEST_F(Calculator, DoubleClickEnterAndButtonInsertAnItemAtTheCursor)
{
    const CString result = Run(u"2*"_s, [](QWidget& window) {
        DoubleClickRow(Items(window), 0);
        EXPECT_EQ(Formula(window).text(), u"2*管道长度"_s);
        QTest::keyClick(&Formula(window), Qt::Key_Home);
        ClickRow(Items(window), 1);
        ClickButton(window, u"插入计算项目"_s);
        EXPECT_EQ(Formula(window).text(), u"管件数量2*管道长度"_s);
        ClickButton(window, u"+"_s);
        QTest::keyClick(&Formula(window), Qt::Key_End);
        ClickButton(window, u"-"_s);
        QTest::keyClick(&Items(window), Qt::Key_Return);
        ClickButton(window, u"确定"_s);
    });
    EXPECT_EQ(result, u"管件数量+2*管道长度-管件数量"_s);
}

TEST_F(Calculator, InsertedItemReplacesTheSelection)
{
    const CString result = Run(u"管件数量*2"_s, [](QWidget& window) {
        Formula(window).setSelection(0, 4);
        ClickButton(window, u"插入计算项目"_s);
        ClickButton(window, u"确定"_s);
    });
    EXPECT_EQ(result, u"管道长度*2"_s);
}

TEST_F(Calculator, SaysWhenACategoryHasNoItems)
{
    InModalWindows({[](QWidget& window) {
        EXPECT_EQ(Items(window).rowCount(), 0);
        EXPECT_FALSE(Button(window, u"插入计算项目"_s).isEnabled());
        ClickButton(window, u"确定"_s);
    }});
    CString result;
    EXPECT_EQ(m_windows->ShowCalculatorDlg(u"没有"_s, u"1"_s, result, nullptr), 1);
    EXPECT_EQ(result, u"1"_s);
}

} // namespace
