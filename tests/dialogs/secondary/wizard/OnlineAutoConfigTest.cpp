#include "dialogs/secondary/wizard/OnlineAutoConfigFixture.h"

#include "support/Patience.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QToolTip>

using namespace test::autoconfig;

// The wizard form: what it shows, its library names and its link.

using OnlineAutoConfig = OnlineAutoConfigTest;

namespace {

/// A library file and what is shown of it.
struct LibraryName
{
    const char* title;
    CString file;
    CString shown;
};

class OnlineAutoConfigLibraries : public OnlineAutoConfigTest,
                                  public ::testing::WithParamInterface<LibraryName>
{
};

/// More than the dialog has.
constexpr int TabStops = 60;

/// A click of the mouse as the screen sends it, to whatever stands there.
void ClickAtThePlaceOf(QWidget& control)
{
    const QWidget& window = *control.window();
    // The screen of the tests is smaller than the dialog, which then scrolls.
    window.findChild<QScrollArea*>()->ensureWidgetVisible(&control);
    const QPoint place = window.mapFromGlobal(control.mapToGlobal(control.rect().center()));
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, place);
}

/// The tip of a control on which the mouse rests; empty when it has none.
CString TipOf(QWidget& control)
{
    QToolTip::hideText();
    test::WaitInLoopFor(u"end of the tip"_s, [] { return !QToolTip::isVisible(); });
    const QPoint point = control.rect().center();
    QHelpEvent help(QEvent::ToolTip, point, control.mapToGlobal(point));
    QCoreApplication::sendEvent(&control, &help);
    const CString text = QToolTip::isVisible() ? QToolTip::text() : CString();
    QToolTip::hideText();
    return text;
}

} // namespace

TEST_F(OnlineAutoConfig, ShowsTheControlsOfTheWizardWithTheirTexts)
{
    OpenWizard();
    const std::map<ControlId, CString> texts{
        {PreviousStepButton, u"上一步"_s},
        {NextStepButton, u"下一步"_s},
        {CancelStepButton, u"取消"_s},
        {StepWarning, u"为保证结果的准确性，使用时请仔细检查设置并根据实际情况调整"_s},
        {BillLibraryLabel, u"清单:"_s},
        {BillLibrary, u"示例清单"_s},
        {QuotaLibraryLabel, u"定额:"_s},
        {QuotaLibrary, u"示例定额"_s},
        {NoteLink, u"说明"_s}};
    for (const auto& [id, text] : texts) {
        EXPECT_TRUE(Shows(id)) << id;
        EXPECT_TRUE(m_wizard->GetDlgItem(id)->isEnabled()) << id;
        EXPECT_EQ(Text(id), text) << id;
    }
}

TEST_F(OnlineAutoConfig, FileCommandsAreGone)
{
    OpenWizard();
    for (const ControlId id : {NewFileButton, SaveAsButton, LoadFileButton, NetDiskButton})
        EXPECT_FALSE(Shows(id)) << id;
}

TEST_F(OnlineAutoConfig, EverythingElseStandsAsInTheMainDialog)
{
    Open();
    OpenWizard();
    for (const ControlId id :
         {AddRuleButton, CopyRuleButton, DeleteRuleButton, MoveUpButton, MoveDownButton, DeleteItemsButton,
          PickerButton, CategoryTree, RuleRows, Attributes, Conditions, PageTab, ValueCombo, LowerBound,
          AddConditionButton, RemoveConditionButton, ControlId::Grid}) {
        const QWidget& own = *m_wizard->GetDlgItem(id);
        const QWidget& base = *m_dialog->GetDlgItem(id);
        EXPECT_EQ(own.geometry(), base.geometry()) << id;
        EXPECT_EQ(own.isVisible(), base.isVisible()) << id;
        EXPECT_EQ(own.isEnabled(), base.isEnabled()) << id;
    }
}

TEST_F(OnlineAutoConfig, TitleIsTheWizardsInBothModes)
{
    OpenWizard();
    EXPECT_EQ(m_wizard->windowTitle(), u"自动套-云模板"_s);
    SetMode(SQdDeInfo::QuotaMode);
    OpenWizard();
    EXPECT_EQ(m_wizard->windowTitle(), u"自动套-云模板"_s);
}

TEST_F(OnlineAutoConfig, FocusStartsOnTheTreeSoThatNoKeyDeletesAnItemAtOnce)
{
    OpenOnABill();
    EXPECT_EQ(m_wizard->focusWidget(), m_wizard->GetDlgItem(CategoryTree));
}

TEST_F(OnlineAutoConfig, EditsTheGivenFileAndNotTheCurrentOne)
{
    PrepareRule({u"DN15"_s});
    WizardArguments arguments;
    arguments.configFile = FilePath(u"云模板"_s);
    OpenWizard(arguments);
    Click(AddRuleButton);
    Click(NextStepButton);
    EXPECT_EQ(Saved(WaterPipes, u"云模板"_s).size(), 2);
    EXPECT_EQ(Saved(), (CStringArray{u"2 管径＝DN15;"_s, u"1 其它"_s}));
}

TEST_F(OnlineAutoConfig, WithoutAFileItEditsTheCurrentOne)
{
    OpenWizard();
    Click(AddRuleButton);
    Click(NextStepButton);
    EXPECT_EQ(Saved().size(), 2);
}

TEST_F(OnlineAutoConfig, BackThatIsNotAllowedIsVisibleButDisabled)
{
    WizardArguments arguments;
    arguments.allowBack = false;
    OpenWizard(arguments);
    EXPECT_TRUE(Shows(PreviousStepButton));
    EXPECT_FALSE(m_wizard->GetDlgItem(PreviousStepButton)->isEnabled());
    Click(PreviousStepButton);
    EXPECT_TRUE(m_wizard->isVisible());
    EXPECT_EQ(m_wizard->StepResult(), 0);
}

TEST_F(OnlineAutoConfig, EmptyNoteLeavesTheLinkHiddenSoThatItCannotBePressed)
{
    WizardArguments arguments;
    arguments.note.clear();
    OpenWizard(arguments);
    QWidget& link = *m_wizard->GetDlgItem(NoteLink);
    EXPECT_FALSE(link.isVisible());
    ClickAtThePlaceOf(link);
    for (int presses = 0; presses < TabStops; ++presses) {
        Strike(Qt::Key_Tab);
        ASSERT_FALSE(link.hasFocus());
    }
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(OnlineAutoConfig, LinkIsPressedByAClickAtItsPlace)
{
    OpenWizard();
    ClickAtThePlaceOf(*m_wizard->GetDlgItem(NoteLink));
    EXPECT_EQ(Messages().Texts().size(), 1);
}

TEST_F(OnlineAutoConfig, NoteOfOneCharacterBringsTheLinkUp)
{
    WizardArguments arguments;
    arguments.note = u" "_s;
    OpenWizard(arguments);
    EXPECT_TRUE(Shows(NoteLink));
    EXPECT_TRUE(m_wizard->GetDlgItem(NoteLink)->isEnabled());
}

TEST_F(OnlineAutoConfig, LinkShowsTheNoteInAPlainBox)
{
    OpenWizard();
    Click(NoteLink);
    ASSERT_EQ(Messages().Texts(), CStringArray{u"请按当地定额核对"_s});
    const platform::Message& message = Messages().Messages().front();
    EXPECT_EQ(message.kind, platform::MessageKind::Plain);
    EXPECT_EQ(message.caption, u"Norvasoft"_s);
    EXPECT_TRUE(message.owned);
    EXPECT_TRUE(m_wizard->isVisible());
}

TEST_F(OnlineAutoConfig, LinkIsReachedByTabAndPressedBySpaceAndEnter)
{
    OpenWizard();
    const QWidget* link = m_wizard->GetDlgItem(NoteLink);
    for (int presses = 0; presses < TabStops && !link->hasFocus(); ++presses)
        Strike(Qt::Key_Tab);
    ASSERT_TRUE(link->hasFocus());
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
        Strike(key);
    EXPECT_EQ(Messages().Texts().size(), 3);
    EXPECT_TRUE(m_wizard->isVisible());
}

TEST_F(OnlineAutoConfig, ControlsHaveNamesForScreenReaders)
{
    OpenWizard();
    EXPECT_EQ(m_wizard->GetDlgItem(NoteLink)->accessibleName(), u"说明"_s);
    EXPECT_EQ(m_wizard->GetDlgItem(BillLibrary)->accessibleName(), u"清单库"_s);
    EXPECT_EQ(m_wizard->GetDlgItem(QuotaLibrary)->accessibleName(), u"定额库"_s);
    EXPECT_EQ(m_wizard->GetDlgItem(NextStepButton)->accessibleName(), u"下一步"_s);
}

TEST_P(OnlineAutoConfigLibraries, NameIsShownUpToItsExtension)
{
    WizardArguments arguments;
    arguments.billFile = GetParam().file;
    arguments.quotaFile = GetParam().file;
    OpenWizard(arguments);
    EXPECT_EQ(Text(BillLibrary), GetParam().shown);
    EXPECT_EQ(Text(QuotaLibrary), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Names, OnlineAutoConfigLibraries,
                         ::testing::Values(LibraryName{"WithExtension", u"清单.mdb"_s, u"清单"_s},
                                           LibraryName{"WithTextBehindIt", u"清单.mdb;PWD=1"_s, u"清单"_s},
                                           LibraryName{"WithTwo", u"清.mdb单.mdb"_s, u"清"_s},
                                           LibraryName{"InCapitals", u"清单.MDB"_s, u"清单.MDB"_s},
                                           LibraryName{"WithoutExtension", u"清单"_s, u"清单"_s},
                                           LibraryName{"NothingElse", u".mdb"_s, CString()},
                                           LibraryName{"Empty", CString(), CString()}),
                         [](const auto& tested) { return tested.param.title; });

TEST_F(OnlineAutoConfig, LibraryNamesCannotBeTyped)
{
    OpenWizard();
    for (const ControlId id : {BillLibrary, QuotaLibrary})
        test::Type(*m_wizard, id, u"别的"_s);
    EXPECT_EQ(Text(BillLibrary), u"示例清单"_s);
    EXPECT_EQ(Text(QuotaLibrary), u"示例定额"_s);
}

TEST_F(OnlineAutoConfig, LongLibraryNameShowsItsBeginningAndTheWholeInATip)
{
    const CString longName(100, u'长');
    WizardArguments arguments;
    arguments.billFile = u"起<b>"_s + longName + u".mdb"_s;
    OpenWizard(arguments);
    auto& bill = m_wizard->Item<QLineEdit>(BillLibrary);
    EXPECT_EQ(bill.cursorPosition(), 0);
    EXPECT_EQ(bill.cursorPositionAt({3, bill.height() / 2}), 0);
    EXPECT_TRUE(TipOf(bill).contains(u"起&lt;b&gt;"_s + longName));
    EXPECT_EQ(TipOf(*m_wizard->GetDlgItem(QuotaLibrary)), CString());
}
