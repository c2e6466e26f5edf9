#include "dialogs/AutoConfigFixture.h"

#include "dialogs/secondary/CTTComboBox.h"

#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyle>

using namespace test::autoconfig;

// The list of attributes that a small category offers, the width of the list of values, and how much text the
// bounds take.

namespace {

struct Derived
{
    const char16_t* category;                            ///< specialty, big and small category
    std::vector<std::pair<CString, CString>> attributes; ///< name and code
};

class AutoConfigDerivedAttributes : public AutoConfigTest, public ::testing::WithParamInterface<Derived>
{
protected:
    /// Opens the dialog on the category, with values for each code that tell the code.
    void OpenOn(const CString& category)
    {
        const CStringArray names = category.split(u'\\');
        Host().AddSpec(u"7"_s, u"专业"_s + names[0]);
        Host().AddBig(u"7"_s, u"71"_s, names[1]);
        Host().AddSmall(u"71"_s, u"711"_s, names[2]);
        Host().SetCurrentSpec(u"专业"_s + names[0]);
        for (const CString& code : {u"AM_Perimeter"_s, u"AM_LongEdge"_s, u"AM_Diameter"_s,
                                    u"AM_SemiPerimeter"_s, u"AM_SPerimeter"_s})
            Host().SetCellData(code, 1, {code});
        Open();
        Press(AddRuleButton); // the default rule has the list disabled
    }
};

} // namespace

TEST_P(AutoConfigDerivedAttributes, FollowFromThePartsOfTheCategoryTextWithTheirCodes)
{
    OpenOn(CString::fromUtf16(GetParam().category));
    CStringArray names;
    for (const auto& [name, code] : GetParam().attributes)
        names.append(name);
    EXPECT_EQ(AttributeNames(), names + CStringArray{u"具体构件"_s});
    for (const auto& [name, code] : GetParam().attributes) {
        SelectAttribute(name);
        EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), CStringArray{code});
    }
}

namespace {

const std::vector<std::pair<CString, CString>> Duct{
    {u"周长(mm)"_s, u"AM_Perimeter"_s}, {u"长边(mm)"_s, u"AM_LongEdge"_s}, {u"直径(mm)"_s, u"AM_Diameter"_s}};
const std::vector<std::pair<CString, CString>> Cabinet{{u"半周长(mm)"_s, u"AM_SemiPerimeter"_s}};
const std::vector<std::pair<CString, CString>> Tray{{u"宽+高(mm)"_s, u"AM_SemiPerimeter"_s},
                                                    {u"宽+高×2(mm)"_s, u"AM_SPerimeter"_s}};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    All, AutoConfigDerivedAttributes,
    ::testing::Values(Derived{u"暖通\\风管\\矩形", Duct}, Derived{u"暖通\\风管部件\\风口", Duct},
                      Derived{u"电气\\配电箱柜\\配电箱", Cabinet}, Derived{u"电气\\配电箱柜\\元件装置", {}},
                      Derived{u"电气\\配电箱柜\\大元件装置箱", {}},
                      Derived{u"电气\\配电箱柜及元件装置\\开关", {}}, Derived{u"弱电\\箱柜\\接线箱", Cabinet},
                      Derived{u"弱电\\箱柜\\机柜", {}}, Derived{u"电气\\电缆桥架\\桥架", Tray},
                      Derived{u"电气\\电缆桥架\\托盘", Tray}, Derived{u"电气\\电缆桥架\\组合式桥架", Tray},
                      Derived{u"弱电\\线槽桥架\\线槽", Tray}, Derived{u"弱电\\线槽桥架\\桥架", Tray},
                      Derived{u"电气\\电缆桥架\\电缆", {}}));

namespace {

/// A rule that is not the default one, so that the list is enabled.
class AutoConfigAttributes : public AutoConfigTest
{
protected:
    AutoConfigAttributes() { PrepareRule({}); }
};

} // namespace

TEST_F(AutoConfigAttributes, CategoryWithoutAttributeListOffersOnlyTheConcreteComponent)
{
    Host().Fail(test::Operation::GetAttributeList);
    Open();
    EXPECT_EQ(AttributeNames(), CStringArray{u"具体构件"_s});
    EXPECT_EQ(SelectedAttribute(), u"具体构件"_s);
}

TEST_F(AutoConfigAttributes, FirstLineIsSelectedAfterATreeMoveAndItsValuesAreOffered)
{
    Open();
    SelectAttribute(u"长度"_s);
    SelectCategory(u"截止阀"_s);
    EXPECT_EQ(AttributeNames(), (CStringArray{u"管径"_s, u"具体构件"_s}));
    EXPECT_EQ(SelectedAttribute(), u"管径"_s);
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), (CStringArray{u"DN15"_s, u"DN20"_s, u"DN25"_s}));
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(SelectedAttribute(), u"具体构件"_s);
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), CStringArray());
}

TEST_F(AutoConfigAttributes, RepeatedNameStandsTwiceAndHasTheLaterCode)
{
    Host().AddAttribute(u"111"_s, u"几何属性"_s, u"材质"_s, CString(), u"GJ"_s);
    Open();
    EXPECT_EQ(AttributeNames(), (CStringArray{u"材质"_s, u"管径"_s, u"长度"_s, u"材质"_s, u"具体构件"_s}));
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), (CStringArray{u"DN15"_s, u"DN20"_s, u"DN25"_s}));
}

TEST_F(AutoConfigAttributes, ListThatEndsWithinARecordIsReportedAndTheDialogStays)
{
    MakeEqualityOnly(u"材质"_s, u"CZ"_s);
    Open();
    ASSERT_FALSE(IsEnabled(PageTab));
    Host().SetAttributeList(u"112"_s, {u"组"_s, u"甲"_s, CString(), u"A"_s, u"组"_s, u"乙"_s});
    SelectCategory(u"排水管"_s);
    ASSERT_EQ(Messages().Texts().size(), 1);
    EXPECT_EQ(Messages().Texts().first(), u"小类的属性列表不完整"_s);
    EXPECT_EQ(SelectedAttribute(), CString());
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), CStringArray()); // not those of the former category
    EXPECT_EQ(TextOf(ValueCombo), CString());
    EXPECT_TRUE(IsEnabled(PageTab));
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(RuleTexts(), CStringArray{u"其它"_s}); // the rules were shown before
    SelectCategory(u"给水管"_s);
    EXPECT_EQ(AttributeNames().last(), u"具体构件"_s);
}

TEST_F(AutoConfigAttributes, ListOfValuesGrowsToItsLongestEntryAndNeverShrinks)
{
    const CString wide = CString(60, u'宽');
    Host().SetCellData(u"CD"_s, 1, {wide});
    Open();
    const auto& combo = m_dialog->Item<CTTComboBox>(ValueCombo);
    SelectAttribute(u"管径"_s);
    const int before = combo.GetDroppedWidth();
    const int needed = QFontMetrics(combo.font()).horizontalAdvance(wide);
    EXPECT_LT(before, needed);
    SelectAttribute(u"长度"_s);
    ASSERT_EQ(test::Entries(*m_dialog, ValueCombo), CStringArray{wide});
    const int grown = combo.GetDroppedWidth();
    EXPECT_GT(grown, needed);
    SelectAttribute(u"管径"_s);
    EXPECT_EQ(combo.GetDroppedWidth(), grown);
}

TEST_F(AutoConfigAttributes, ListOfValuesHoldsItsLongestEntryOneLetterTheScrollBarAndTwoEdges)
{
    const CString wide = CString(60, u'宽');
    Host().SetCellData(u"CD"_s, 1, {u"短"_s, wide, u"中等"_s});
    Open();
    const auto& combo = m_dialog->Item<CTTComboBox>(ValueCombo);
    SelectAttribute(u"长度"_s);
    const QFontMetrics metrics(combo.font());
    EXPECT_EQ(combo.GetDroppedWidth(), metrics.horizontalAdvance(wide) + metrics.averageCharWidth() +
                                           combo.style()->pixelMetric(QStyle::PM_ScrollBarExtent) +
                                           2 * combo.style()->pixelMetric(QStyle::PM_DefaultFrameWidth));
}

TEST_F(AutoConfigAttributes, ExtrasOfTheFormerCategoryAreNotHandedOnAfterATreeMove)
{
    Host().SetAttributeList(u"121"_s, {u"组"_s, u"压力"_s, u"阀门压力"_s, u"YL"_s});
    Host().SetCellData(u"YL"_s, 9, {});
    Host().SetDropList(u"YL"_s, {u"1.6"_s});
    Open();
    ASSERT_EQ(Host().LastExtras(), (CStringArray{u"管材"_s, CString(), CString()}));
    SelectCategory(u"截止阀"_s);
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), CStringArray{u"1.6"_s});
    EXPECT_EQ(Host().LastExtras(), CStringArray{u"阀门压力"_s});
}

TEST_F(AutoConfigAttributes, ConcreteComponentKeepsThePage)
{
    Open();
    SelectAttribute(u"管径"_s);
    for (const int page : {1, 0}) {
        SelectPage(page);
        SelectAttribute(u"具体构件"_s);
        EXPECT_EQ(Page(), page);
        EXPECT_TRUE(IsEnabled(PageTab));
        SelectAttribute(u"管径"_s);
        EXPECT_EQ(Page(), page);
    }
}

TEST_F(AutoConfigAttributes, HostThatRaisesOnAnAttributeLeavesNoValuesOfTheFormerOne)
{
    Open();
    ASSERT_FALSE(test::Entries(*m_dialog, ValueCombo).isEmpty());
    TypeInto(ValueCombo, u"PPR"_s);
    host::Roles roles = Host().Roles();
    roles.attributes = nullptr;
    const host::Installation lacking = host::Install(roles);
    SelectAttribute(u"管径"_s);
    EXPECT_EQ(Messages().Texts().size(), 1);
    EXPECT_EQ(SelectedAttribute(), u"管径"_s);
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), CStringArray());
    EXPECT_EQ(TextOf(ValueCombo), CString());
}

TEST_F(AutoConfigAttributes, LowerBoundScrollsAndTheUpperOneTakesNoMoreThanItsFieldShows)
{
    Open();
    SelectPage(1);
    const CString digits(40, u'8');
    TypeInto(LowerBound, digits);
    TypeInto(UpperBound, digits);
    EXPECT_EQ(TextOf(LowerBound), digits);
    const QLineEdit& field = *m_dialog->Item<CTTComboBox>(UpperBound).lineEdit();
    const auto width = [&field](const CString& text) { return field.fontMetrics().horizontalAdvance(text); };
    EXPECT_GE(TextOf(UpperBound).size(), 5);
    EXPECT_LT(width(TextOf(UpperBound)), field.width());
    EXPECT_GT(width(TextOf(UpperBound) + u"88"_s), field.width() - 10);
}

TEST_F(AutoConfigAttributes, LongerTextPastedIntoTheUpperBoundIsTakenAsFarAsThereIsRoom)
{
    Open();
    SelectPage(1);
    TypeInto(UpperBound, CString(40, u'8'));
    const CString full = TextOf(UpperBound);
    TypeInto(UpperBound, u"12"_s);
    QLineEdit& edit = *m_dialog->Item<CTTComboBox>(UpperBound).lineEdit();
    edit.setCursorPosition(1);
    edit.insert(CString(40, u'8')); // as a paste does
    EXPECT_EQ(edit.text(), u"1"_s + CString(full.size() - 2, u'8') + u"2"_s);
    EXPECT_EQ(edit.cursorPosition(), edit.text().size() - 1);
    const CString before = edit.text();
    edit.insert(u"8"_s); // nothing more has room
    EXPECT_EQ(edit.text(), before);
}

TEST_F(AutoConfigAttributes, UpperBoundThatALargerFontMadeTooWideCanBeShortenedButNotLengthened)
{
    Open();
    SelectPage(1);
    TypeInto(UpperBound, u"12345"_s);
    QLineEdit& field = *m_dialog->Item<CTTComboBox>(UpperBound).lineEdit();
    QFont large = field.font();
    large.setPointSize(30);
    field.setFont(large);
    QTest::keyClick(&field, Qt::Key_6);
    EXPECT_EQ(TextOf(UpperBound), u"12345"_s);
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(TextOf(UpperBound), u"1234"_s);
}
