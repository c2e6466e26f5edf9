#include "presenter/CAutoQdDeConfigFacade.h"

#include "dialogs/AutoConfigIds.h"
#include "dialogs/DialogUser.h"
#include "dialogs/ModalUser.h"
#include "host/Installation.h"
#include "platform/Native.h"
#include "support/HostGuard.h"
#include "support/WindowsDouble.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

#include <gmock/gmock.h>

#include <clocale>
#include <stdexcept>
#include <string>

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;

// The entry points that show a dialog, in a host that is no program of the toolkit. A program of its own,
// because this one must not have an application object.

namespace {

/// The windows of such a host. Its main frame is none of the toolkit's; being asked for it, it lets the user
/// act.
class ForeignWindows : public test::WindowsDouble
{
public:
    void SetStep(test::ModalStep step) { m_step = std::move(step); }

    CWnd* MainFrame() override
    {
        test::InModalWindows({m_step});
        return nullptr;
    }

private:
    test::ModalStep m_step;
};

class FacadeWithoutApplication : public ::testing::Test
{
protected:
    FacadeWithoutApplication()
    {
        m_guard.Host().SetWindows(&m_windows);
        m_guard.Reinstall();
    }
    int StartOnline(test::ModalStep step)
    {
        m_windows.SetStep(std::move(step));
        return CAutoQdDeConfigFacade::StartOnlineConfig({}, u"清单.mdb"_s, {}, {}, true, nullptr);
    }
    void Start(test::ModalStep step)
    {
        m_windows.SetStep(std::move(step));
        CAutoQdDeConfigFacade::StartQdDeConfig(nullptr, {});
    }
    static test::ModalStep Clicks(ControlId id)
    {
        return [id](QWidget& window) { test::Click(dynamic_cast<dialogs::TemplateDialog&>(window), id); };
    }
    void ExpectRefusal()
    {
        EXPECT_THROW(CAutoQdDeConfigFacade::StartQdDeConfig(nullptr, {}), std::logic_error);
        EXPECT_THROW(CAutoQdDeConfigFacade::StartOnlineConfig({}, {}, {}, {}, true, nullptr),
                     std::logic_error);
        EXPECT_FALSE(m_windows.Bill().IsCreated());
        platform::ShowWarning(u"主程序"_s);
        EXPECT_EQ(m_guard.Messages().Texts(), CStringArray{u"主程序!"_s});
    }

    test::HostGuard m_guard;
    ForeignWindows m_windows;
};

/// The locale of a category, such as `LC_NUMERIC`.
std::string Locale(int category)
{
    return std::setlocale(category, nullptr);
}

int g_argumentCount = 1;
char g_name[] = "host";
char* g_arguments[] = {g_name, nullptr};

} // namespace

TEST_F(FacadeWithoutApplication, GetsOneForTheCallAlone)
{
    const QCoreApplication* during = nullptr;
    Start([&during](QWidget& window) {
        during = qobject_cast<QApplication*>(QCoreApplication::instance());
        window.close();
    });
    EXPECT_NE(during, nullptr);
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST_F(FacadeWithoutApplication, EveryFurtherCallWorksToo)
{
    EXPECT_EQ(StartOnline(Clicks(NextStepButton)), 1);
    EXPECT_EQ(StartOnline(Clicks(PreviousStepButton)), -1);
    int shown = 0;
    Start([&shown](QWidget& window) {
        ++shown;
        window.close();
    });
    EXPECT_EQ(StartOnline(Clicks(CancelStepButton)), 0);
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST_F(FacadeWithoutApplication, EditsReachTheFile)
{
    StartOnline([](QWidget& window) {
        Clicks(AddRuleButton)(window);
        Clicks(NextStepButton)(window);
    });
    const CString file = m_guard.AppFolder() + u"\\自动套配置\\DefaultConfig.xml"_s;
    const auto presenter = CAutoQdDeConfigFacade::GetQdDeConfigPresenter(file);
    EXPECT_NE(presenter->GetConfig({1, 11, 111, 2, 0, 0, 0, 0}), nullptr);
}

TEST_F(FacadeWithoutApplication, ToolkitsOwnTextsAreChinese)
{
    CString undo;
    Start([&undo](QWidget& window) {
        undo = QLineEdit::tr("&Undo");
        window.close();
    });
    EXPECT_EQ(undo, u"撤消(&U)"_s);
}

TEST_F(FacadeWithoutApplication, PluginsBesideTheModuleAreFoundFirstAndForTheCallAlone)
{
    const QString modulesFolder = platform::native::ModuleFolder();
    QStringList during;
    Start([&during](QWidget& window) {
        during = QCoreApplication::libraryPaths();
        window.close();
    });
    EXPECT_EQ(during.value(0), modulesFolder);
    EXPECT_FALSE(QCoreApplication::libraryPaths().contains(modulesFolder));
}

TEST(ModuleFolder, IsWhereTheFileOfTheCodeStands)
{
    const QCoreApplication application(g_argumentCount, g_arguments);
    EXPECT_EQ(platform::native::ModuleFolder(), QCoreApplication::applicationDirPath());
}

#ifdef Q_OS_WINDOWS

TEST_F(FacadeWithoutApplication, LocaleStaysTheHosts)
{
    const std::string hosts = Locale(LC_ALL);
    Start([&hosts](QWidget& window) {
        EXPECT_EQ(Locale(LC_ALL), hosts);
        window.close();
    });
    EXPECT_EQ(Locale(LC_ALL), hosts);
}

#else

TEST_F(FacadeWithoutApplication, LocaleIsTheEnvironmentsForTheCallAlone)
{
    const std::string hosts = Locale(LC_ALL);
    for (int call = 0; call < 2; ++call) {
        std::string during;
        Start([&during](QWidget& window) {
            during = Locale(LC_CTYPE);
            window.close();
        });
        EXPECT_EQ(during, "C.UTF-8") << call;
        EXPECT_EQ(Locale(LC_ALL), hosts) << call;
    }
}

TEST_F(FacadeWithoutApplication, NumbersStayTheHostsThroughout)
{
    const std::string hosts = Locale(LC_NUMERIC);
    for (int call = 0; call < 2; ++call) {
        std::string during;
        Start([&during](QWidget& window) {
            during = Locale(LC_NUMERIC);
            window.close();
        });
        EXPECT_EQ(during, hosts) << call;
        EXPECT_EQ(Locale(LC_NUMERIC), hosts) << call;
    }
}

#endif

TEST_F(FacadeWithoutApplication, ErrorLeavesNoApplicationObjectBehind)
{
    m_guard.Host().SetWindows(nullptr);
    m_guard.Reinstall();
    EXPECT_THROW(CAutoQdDeConfigFacade::StartQdDeConfig(nullptr, {}), host::NoHostError);
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST_F(FacadeWithoutApplication, ApplicationObjectWithoutWindowsIsRefused)
{
    const QCoreApplication application(g_argumentCount, g_arguments);
    ExpectRefusal();
    EXPECT_EQ(QCoreApplication::instance(), &application);
}

TEST_F(FacadeWithoutApplication, ApplicationObjectWithoutWidgetsIsRefused)
{
    const QGuiApplication application(g_argumentCount, g_arguments);
    ExpectRefusal();
    EXPECT_EQ(QCoreApplication::instance(), &application);
}

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // Another one than that in which a program starts, so that it shows whether the toolkit takes it over.
    qputenv("LC_ALL", "C.UTF-8");
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
