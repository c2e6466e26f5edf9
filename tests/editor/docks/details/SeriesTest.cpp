#include "editor/docks/details/SeriesDialog.h"

#include "dialogs/ModalUser.h"
#include "editor/docks/details/DetailsFixture.h"
#include "support/WindowWaits.h"

#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using editor::SeriesDialog;

namespace {

class DetailSeries : public test::DetailsFixture
{
protected:
    DetailSeries()
    {
        HaveRules({test::RuleOf({test::Equals(u"材质"_s, u"镀锌钢管"_s)}, {test::Bill(u"031001001001"_s)}),
                   test::RuleOf({test::Equals(u"材质"_s, u"铜管"_s)})});
    }
    /// The dialog on the first rule.
    SeriesDialog& Open(const CString& attribute)
    {
        m_dialog.emplace(m_session, Category, 0U, attribute, nullptr);
        m_dialog->show();
        m_dialog->activateWindow();
        test::WaitUntilActive(*m_dialog);
        return *m_dialog;
    }
    QListWidget& List(const CString& name)
    {
        for (QListWidget* list : m_dialog->findChildren<QListWidget*>())
            if (list->accessibleName() == name) return *list;
        throw std::out_of_range(name.toStdString());
    }
    CStringArray Preview()
    {
        CStringArray lines;
        for (int i = 0; i < List(u"生成的规则"_s).count(); ++i)
            lines.append(List(u"生成的规则"_s).item(i)->text());
        return lines;
    }
    template <typename Button = QPushButton>
    Button& ButtonOf(const CString& text)
    {
        for (Button* button : m_dialog->findChildren<Button*>())
            if (button->text().startsWith(text)) return *button;
        throw std::out_of_range(text.toStdString());
    }
    void ChooseForm(int index)
    {
        for (QComboBox* combo : m_dialog->findChildren<QComboBox*>())
            if (combo->findData(static_cast<int>(rules::SeriesForm::UpperClosed)) >= 0)
                combo->setCurrentIndex(index);
    }
    void Paste(const CString& text)
    {
        QGuiApplication::clipboard()->setText(text);
        ButtonOf(u"粘贴"_s).click();
    }

    std::optional<SeriesDialog> m_dialog;
};

} // namespace

TEST(SplitValues, TakesLinesBlanksAndCommasOfAnyKindAndEachValueOnce)
{
    EXPECT_EQ(editor::SplitValues(u"15\n20\r\n 25\t32,40，50、65；80;100　１２５ 15"_s),
              (CStringArray{u"15"_s, u"20"_s, u"25"_s, u"32"_s, u"40"_s, u"50"_s, u"65"_s, u"80"_s, u"100"_s,
                            u"125"_s}));
    EXPECT_TRUE(editor::SplitValues(u" ,\n"_s).isEmpty());
}

TEST_F(DetailSeries, ValuesHaveLinesAsHighAsTheRulesBesideThem)
{
    Open(u"公称直径"_s);
    ASSERT_GT(List(u"值"_s).count(), 0);
    ASSERT_GT(List(u"生成的规则"_s).count(), 0);
    EXPECT_GE(List(u"值"_s).sizeHintForRow(0), List(u"生成的规则"_s).sizeHintForRow(0));
}

TEST_F(DetailSeries, OffersTheCatalogueValuesAndShowsTheRulesToCome)
{
    Open(u"公称直径"_s);
    EXPECT_EQ(List(u"值"_s).count(), 16);
    EXPECT_EQ(Preview().size(), 16);
    EXPECT_EQ(Preview().first(), u"材质＝镀锌钢管;公称直径＝15;"_s);
    EXPECT_EQ(ButtonOf(u"生成"_s).text(), u"生成 16 条规则(&G)"_s);
    EXPECT_EQ(m_session.Undo().count(), 0);
}

TEST_F(DetailSeries, TenPastedDiametersBecomeTenRulesInOneStep)
{
    Open(u"公称直径"_s);
    Paste(u"100 80 65\n50\n40,32，25、20 15 125"_s);
    ChooseForm(1);
    ASSERT_EQ(Preview().size(), 10);
    EXPECT_EQ(Preview().first(), u"材质＝镀锌钢管;公称直径≤15;"_s);
    EXPECT_EQ(Preview().last(), u"材质＝镀锌钢管;100＜公称直径≤125;"_s);
    ButtonOf(u"生成"_s).click();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(m_session.Undo().count(), 1);
    ASSERT_EQ(RuleCount(), 12U);
    EXPECT_EQ(Text(9), u"材质＝镀锌钢管;100＜公称直径≤125;"_s);
    EXPECT_EQ(Items(9), u"031001001001"_s);
    EXPECT_EQ(Text(10), u"材质＝铜管;"_s);
    EXPECT_EQ(m_session.ChosenRules().size(), 10U);
    Undo();
    EXPECT_EQ(RuleCount(), 3U);
}

TEST_F(DetailSeries, PatternStaysInFrontWhenItIsNotReplaced)
{
    Open(u"公称直径"_s);
    Paste(u"15 20"_s);
    ButtonOf<QCheckBox>(u"代替"_s).click();
    ButtonOf(u"生成"_s).click();
    EXPECT_EQ(Text(0), u"材质＝镀锌钢管;"_s);
    EXPECT_EQ(Text(1), u"材质＝镀锌钢管;公称直径＝15;"_s);
    EXPECT_EQ(Text(2), u"材质＝镀锌钢管;公称直径＝20;"_s);
}

TEST_F(DetailSeries, EndsOfRangesAreNamedAndChosen)
{
    Open(u"公称直径"_s);
    Paste(u"15 20 25"_s);
    ChooseForm(1);
    ButtonOf<QCheckBox>(u"最小的值以下也有一条（≤15）"_s).click();
    ButtonOf<QCheckBox>(u"最大的值以上也有一条（＞25）"_s).click();
    EXPECT_EQ(Preview(),
              (CStringArray{u"材质＝镀锌钢管;15＜公称直径≤20;"_s, u"材质＝镀锌钢管;20＜公称直径≤25;"_s,
                            u"材质＝镀锌钢管;公称直径＞25;"_s}));
    ChooseForm(2);
    EXPECT_TRUE(ButtonOf<QCheckBox>(u"最小的值以下也有一条（＜15）"_s).isChecked());
}

TEST_F(DetailSeries, ReasonIsShownWhenNoRulesCanCome)
{
    Open(u"公称直径"_s);
    Paste(u"15 大 25"_s);
    ChooseForm(1);
    EXPECT_TRUE(Preview().isEmpty());
    EXPECT_FALSE(ButtonOf(u"生成"_s).isEnabled());
    CStringArray texts;
    for (const QLabel* label : m_dialog->findChildren<QLabel*>())
        if (!label->isHidden()) texts.append(label->text());
    EXPECT_THAT(texts.join(u'|').toStdString(), ::testing::HasSubstr("大"));
    m_dialog->accept();
    EXPECT_EQ(m_session.Undo().count(), 0);
}

TEST_F(DetailSeries, ValuesAreEditedDeletedAndAdded)
{
    Open(u"公称直径"_s);
    Paste(u"15 20"_s);
    QListWidget& values = List(u"值"_s);
    values.item(0)->setText(u"１８"_s);
    EXPECT_EQ(Preview().first(), u"材质＝镀锌钢管;公称直径＝18;"_s);
    values.setFocus();
    values.setCurrentItem(values.item(0));
    QTest::keyClick(&values, Qt::Key_Delete);
    EXPECT_EQ(Preview(), CStringArray{u"材质＝镀锌钢管;公称直径＝20;"_s});
    QTest::keyClick(&values, Qt::Key_Insert);
    values.currentItem()->setText(u"500"_s);
    EXPECT_EQ(Preview().last(), u"材质＝镀锌钢管;公称直径＝500;"_s);
    ButtonOf(u"全不选"_s).click();
    EXPECT_TRUE(Preview().isEmpty());
    ButtonOf(u"全选"_s).click();
    EXPECT_EQ(Preview().size(), values.count());
}

TEST_F(DetailSeries, CommandOfThePanelOpensItAtTheCurrentCondition)
{
    Show();
    Conditions().setFocus();
    CString attribute;
    test::InModalWindows({[&](QWidget& window) {
        attribute = window.findChild<QComboBox*>()->currentText();
        QStringList texts;
        for (QPushButton* button : window.findChildren<QPushButton*>())
            if (button->text().startsWith(u"生成"_s)) button->click();
    }});
    Press(Qt::Key_Insert, Qt::ControlModifier);
    EXPECT_EQ(attribute, u"材质"_s);
    EXPECT_EQ(RuleCount(), 10U);
    EXPECT_THAT(Labels().toStdString(), ::testing::HasSubstr("生成了 8 条规则"));
}

TEST_F(DetailSeries, DefaultRuleStaysBehindItsSeries)
{
    m_dialog.emplace(m_session, Category, 2U, u"公称直径"_s, nullptr);
    EXPECT_FALSE(ButtonOf<QCheckBox>(u"代替"_s).isEnabled());
    Paste(u"15 20"_s);
    m_dialog->accept();
    ASSERT_EQ(RuleCount(), 5U);
    EXPECT_EQ(Text(2), u"公称直径＝15;"_s);
    EXPECT_EQ(Text(4), u"其它"_s);
}
