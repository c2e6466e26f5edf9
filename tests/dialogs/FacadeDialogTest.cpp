#include "presenter/CAutoQdDeConfigFacade.h"

#include "dialogs/AutoConfigFixture.h"
#include "dialogs/ModalUser.h"
#include "host/Installation.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

#include <memory>
#include <optional>

using namespace test::autoconfig;

// The entry points that show a dialog, in a host that runs an application object.

namespace {

/// Sees, and keeps from the program, every request to quit.
class QuitWatch : public QObject
{
public:
    QuitWatch() { qApp->installEventFilter(this); }
    bool Asked() const noexcept { return m_asked; }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Quit) return QObject::eventFilter(watched, event);
        m_asked = true;
        return true;
    }

private:
    bool m_asked = false;
};

class FacadeDialogs : public AutoConfigTest
{
protected:
    /// The configuration folder is there.
    FacadeDialogs()
    {
        Prepare([](CQdDeConfigPresenter&) {});
    }
    static dialogs::TemplateDialog& Dialog(QWidget& window)
    {
        return dynamic_cast<dialogs::TemplateDialog&>(window);
    }
    static test::ModalStep Clicks(int id)
    {
        return [id](QWidget& window) { test::Click(Dialog(window), id); };
    }
    static test::ModalStep Strikes(Qt::Key key)
    {
        return [key](QWidget& window) { test::Press(Dialog(window), key); };
    }
    static test::ModalStep Closes()
    {
        return [](QWidget& window) { window.close(); };
    }
    int StartOnline(std::initializer_list<test::ModalStep> steps, QWidget* parent = nullptr)
    {
        test::InModalWindows(steps);
        return CAutoQdDeConfigFacade::StartOnlineConfig(FilePath(u"云模板"_s), u"清单.mdb"_s, u"定额.mdb"_s,
                                                        u"核对"_s, true, parent);
    }
    static void Start(std::initializer_list<test::ModalStep> steps, QWidget* parent = nullptr,
                      const CRect& area = {})
    {
        test::InModalWindows(steps);
        CAutoQdDeConfigFacade::StartQdDeConfig(parent, area);
    }
    /// What a warning of the host shows: true when it comes to the recorder of this test.
    bool MessagesAreTheHosts()
    {
        const QObject whileShown;
        QTimer::singleShot(0, &whileShown, [] { QApplication::activeModalWidget()->close(); });
        const auto before = Messages().Texts().size();
        platform::ShowWarning(u"主程序"_s);
        return Messages().Texts().size() == before + 1;
    }
    /// Runs a step in the host's own loop; true when nothing has asked the host to quit.
    static bool HostOutlives(const std::function<void()>& step)
    {
        QuitWatch watch;
        QTimer::singleShot(0, &watch, [&step] {
            step();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::exit();
        });
        QApplication::exec();
        return !watch.Asked();
    }
};

/// A way to end the wizard and the result that it gives.
struct WizardWayOut
{
    const char* title;
    int button; ///< 0 for a way without one
    int result;
};

/// What a host raises that does not know the standard's errors.
struct HostFailure
{
};

/// What a host is asked for while a dialog is made.
enum class HostStep { MainFrame, BillPicker, QuotaPicker };

/// The windows of a host that raises at one of the steps.
class FailingWindows : public test::WindowsDouble
{
public:
    explicit FailingWindows(HostStep step) : m_step(step) {}

    CWnd* MainFrame() override
    {
        if (m_step == HostStep::MainFrame) throw HostFailure();
        return WindowsDouble::MainFrame();
    }
    std::unique_ptr<host::IBillPicker> MakeBillPicker() override
    {
        auto picker = WindowsDouble::MakeBillPicker();
        if (m_step == HostStep::BillPicker) FailAtCreation(Bill());
        return picker;
    }
    std::unique_ptr<host::IPickerWindow> MakeQuotaPicker() override
    {
        auto picker = WindowsDouble::MakeQuotaPicker();
        if (m_step == HostStep::QuotaPicker) FailAtCreation(Quota());
        return picker;
    }

private:
    static void FailAtCreation(test::PickerDouble& picker)
    {
        picker.OnCall([](const CString& call) {
            if (call == u"create"_s) throw HostFailure();
        });
    }

    HostStep m_step;
};

class FacadeFailures : public FacadeDialogs, public ::testing::WithParamInterface<HostStep>
{
};

class FacadeResults : public FacadeDialogs, public ::testing::WithParamInterface<WizardWayOut>
{
};

} // namespace

TEST_F(FacadeDialogs, ConfigurationDialogIgnoresWindowAndRectangle)
{
    QWidget window;
    std::vector<CRect> places;
    const test::ModalStep look = [&places](QWidget& dialog) {
        EXPECT_EQ(dialog.parentWidget(), nullptr);
        EXPECT_EQ(dialog.windowTitle(), u"自动套配置-[ 清单模式: DefaultConfig ]"_s);
        places.push_back(dialog.geometry());
        dialog.close();
    };
    Start({look});
    Start({look}, &window, CRect(10, 20, 300, 200));
    Start({look}, nullptr, CRect(-5, -5, 1, 1));
    ASSERT_EQ(places.size(), 3U);
    EXPECT_EQ(places[1], places[0]);
    EXPECT_EQ(places[2], places[0]);
}

TEST_F(FacadeDialogs, ConfigurationDialogWorksOnTheCurrentConfiguration)
{
    Start({Clicks(AddRuleButton), Strikes(Qt::Key_Escape)});
    EXPECT_EQ(Saved().size(), 2);
}

TEST_F(FacadeDialogs, WizardWorksOnTheGivenFileForTheGivenWindow)
{
    QWidget host;
    const test::ModalStep look = [&host](QWidget& window) {
        EXPECT_EQ(window.parentWidget(), &host);
        EXPECT_EQ(Dialog(window).ItemText(BillLibrary), u"清单"_s);
        EXPECT_EQ(Dialog(window).ItemText(QuotaLibrary), u"定额"_s);
        EXPECT_TRUE(Dialog(window).GetDlgItem(PreviousStepButton)->isEnabled());
        test::Click(Dialog(window), AddRuleButton);
    };
    StartOnline({look, Clicks(NextStepButton)}, &host);
    EXPECT_EQ(Saved(WaterPipes, u"云模板"_s).size(), 2);
    EXPECT_EQ(Saved().size(), 1);
}

TEST_F(FacadeDialogs, WizardThatDoesNotAllowBackDisablesIt)
{
    test::InModalWindows({[](QWidget& window) {
        EXPECT_FALSE(Dialog(window).GetDlgItem(PreviousStepButton)->isEnabled());
        EXPECT_FALSE(Dialog(window).GetDlgItem(NoteLink)->isVisible());
        window.close();
    }});
    CAutoQdDeConfigFacade::StartOnlineConfig({}, {}, {}, {}, false, nullptr);
}

TEST_P(FacadeResults, WizardGivesTheResultOfItsStep)
{
    const test::ModalStep way = GetParam().button == 0 ? Closes() : Clicks(GetParam().button);
    EXPECT_EQ(StartOnline({way}), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(WaysOut, FacadeResults,
                         ::testing::Values(WizardWayOut{"Next", NextStepButton, 1},
                                           WizardWayOut{"Back", PreviousStepButton, -1},
                                           WizardWayOut{"Cancel", CancelStepButton, 0},
                                           WizardWayOut{"CloseBox", 0, 0}),
                         [](const auto& tested) { return tested.param.title; });

TEST_F(FacadeDialogs, WizardGivesZeroOnEscape)
{
    EXPECT_EQ(StartOnline({Strikes(Qt::Key_Escape)}), 0);
}

TEST_F(FacadeDialogs, WizardsPickersEndWithIt)
{
    StartOnline({Clicks(PickerButton), [this](QWidget& window) {
                     EXPECT_TRUE(m_windows.Bill().IsVisible());
                     test::Click(Dialog(window), NextStepButton);
                 }});
    EXPECT_FALSE(m_windows.Bill().IsCreated());
    EXPECT_FALSE(m_windows.Quota().IsCreated());
}

TEST_F(FacadeDialogs, FileThatCannotBeOpenedIsNotReportedByTheEntryPoint)
{
    m_guard.Folder().WriteFile(u"app\\自动套配置\\云模板.xml"_s, "<other/>");
    CStringArray texts;
    const test::ModalStep readBox = [&texts](QWidget& window) {
        texts.append(dynamic_cast<QMessageBox&>(window).text());
        window.close();
    };
    const int result = StartOnline({readBox, [](QWidget& window) {
                                        auto& rules = Dialog(window).Item<QTreeWidget>(RuleRows);
                                        EXPECT_EQ(rules.topLevelItemCount(), 0);
                                        window.close();
                                    }});
    EXPECT_EQ(result, 0);
    // The dialog's own word about the category that it cannot show.
    EXPECT_EQ(texts, CStringArray{u"GetConfig return false"_s});
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(FacadeDialogs, MessagesStandInBoxesWhileTheDialogRunsAndAreTheHostsAgainAfterwards)
{
    CString shown;
    const int result = StartOnline({Clicks(NoteLink),
                                    [&shown](QWidget& window) {
                                        shown = dynamic_cast<QMessageBox&>(window).text();
                                        window.close();
                                    },
                                    Clicks(NextStepButton)});
    EXPECT_EQ(shown, u"核对"_s);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(Messages().Texts(), CStringArray());
    EXPECT_TRUE(MessagesAreTheHosts());
}

TEST_F(FacadeDialogs, MessagesAreTheHostsAgainWhenTheDialogIsDestroyed)
{
    std::optional<bool> hosts;
    Start({[&](QWidget& window) {
        QObject::connect(&window, &QObject::destroyed, [&] { hosts = MessagesAreTheHosts(); });
        window.close();
    }});
    EXPECT_EQ(hosts, true);
}

TEST_F(FacadeDialogs, ErrorGoesOnToTheHostWhoseContextIsBack)
{
    m_guard.Host().SetWindows(nullptr);
    m_guard.Reinstall();
    EXPECT_THROW(CAutoQdDeConfigFacade::StartQdDeConfig(nullptr, {}), host::NoHostError);
    EXPECT_THROW(CAutoQdDeConfigFacade::StartOnlineConfig({}, {}, {}, {}, true, nullptr), host::NoHostError);
    EXPECT_TRUE(MessagesAreTheHosts());
    EXPECT_TRUE(QApplication::quitOnLastWindowClosed());
}

TEST_F(FacadeDialogs, WizardOutOfTheConfigurationDialogGivesItBackWhatItHad)
{
    int result = 0;
    bool boxesAgain = false;
    bool quitsMeanwhile = true;
    const test::ModalStep runWizard = [&](QWidget& outer) {
        InNextDialog([](dialogs::TemplateDialog& wizard) { test::Click(wizard, PreviousStepButton); });
        result = CAutoQdDeConfigFacade::StartOnlineConfig(FilePath(u"云模板"_s), {}, {}, {}, true, &outer);
        quitsMeanwhile = QApplication::quitOnLastWindowClosed();
        boxesAgain = !MessagesAreTheHosts();
        outer.close();
    };
    Start({runWizard});
    EXPECT_EQ(result, -1);
    EXPECT_TRUE(boxesAgain);
    EXPECT_FALSE(quitsMeanwhile);
    EXPECT_TRUE(QApplication::quitOnLastWindowClosed());
    EXPECT_TRUE(MessagesAreTheHosts());
}

TEST_P(FacadeFailures, HostThatRaisesWhileTheDialogIsMadeGetsTheErrorAndNoDialogIsShown)
{
    FailingWindows windows(GetParam());
    m_guard.Host().SetWindows(&windows);
    m_guard.Reinstall();
    // Closes a dialog that comes up all the same, which would make the calls return.
    const QObject untilEnd;
    QTimer closing;
    QObject::connect(&closing, &QTimer::timeout, &untilEnd, [] {
        if (QWidget* window = QApplication::activeModalWidget()) window->close();
    });
    closing.start(0);
    EXPECT_THROW(CAutoQdDeConfigFacade::StartQdDeConfig(nullptr, {}), HostFailure);
    EXPECT_THROW(CAutoQdDeConfigFacade::StartOnlineConfig({}, {}, {}, {}, true, nullptr), HostFailure);
    closing.stop();
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->isVisible()) << window->windowTitle().toStdString();
    EXPECT_TRUE(MessagesAreTheHosts());
    EXPECT_TRUE(QApplication::quitOnLastWindowClosed());
    EXPECT_EQ(Messages().Texts().size(), 1); // that of the check above
}

INSTANTIATE_TEST_SUITE_P(Steps, FacadeFailures,
                         ::testing::Values(HostStep::MainFrame, HostStep::BillPicker, HostStep::QuotaPicker));

TEST_F(FacadeDialogs, EndOfTheDialogDoesNotEndAHostWithoutVisibleWindows)
{
    EXPECT_TRUE(HostOutlives([&] { Start({Closes()}); }));
    EXPECT_TRUE(HostOutlives([&] { StartOnline({Clicks(NextStepButton)}); }));
    EXPECT_TRUE(QApplication::quitOnLastWindowClosed());
}

TEST_F(FacadeDialogs, HostsApplicationObjectIsUsedAsItIs)
{
    const QCoreApplication* before = QCoreApplication::instance();
    const CString style = QApplication::style()->objectName();
    Start({[before](QWidget& window) {
        EXPECT_EQ(QCoreApplication::instance(), before);
        EXPECT_EQ(QCoreApplication::translate("QWidgetTextControl", "&Undo"), u"&Undo"_s);
        window.close();
    }});
    EXPECT_EQ(QCoreApplication::instance(), before);
    EXPECT_EQ(QApplication::style()->objectName(), style);
}
