#include "dialogs/process/ResourceContext.h"

#include "dialogs/process/ToolkitTexts.h"
#include "platform/Native.h"

#include <QtCore/QLibraryInfo>
#include <QtCore/QTranslator>
#include <QtWidgets/QApplication>

#include <clocale>
#include <stdexcept>
#include <string>

namespace dialogs {

namespace {

/// What the toolkit wants to know of a command line; it keeps both for as long as the application lives.
char g_programName[] = "KtQdDeConfig";
char* g_arguments[] = {g_programName, nullptr};
int g_argumentCount = 1;

/// The C locale of the environment, which input methods ask for, and afterwards the host's again. The toolkit
/// sets it too, but at its first start only; on Windows neither needs it, and the host's stays untouched.
class EnvironmentLocale
{
public:
#ifdef Q_OS_WINDOWS
    void GiveNumbersBack() {}
#else
    EnvironmentLocale()
        : m_hosts(std::setlocale(LC_ALL, nullptr)), m_hostsNumbers(std::setlocale(LC_NUMERIC, nullptr))
    {
        std::setlocale(LC_ALL, "");
    }
    ~EnvironmentLocale()
    {
        std::setlocale(LC_ALL, m_hosts.c_str());
    }
    EnvironmentLocale(const EnvironmentLocale&) = delete;
    EnvironmentLocale& operator=(const EnvironmentLocale&) = delete;

    /// The host reads and writes numbers while its roles are called, and its decimal point is not another one
    /// then.
    void GiveNumbersBack()
    {
        std::setlocale(LC_NUMERIC, m_hostsNumbers.c_str());
    }

private:
    std::string m_hosts;
    std::string m_hostsNumbers;
#endif
};

/// Puts the module's folder among those in which the toolkit looks for its plugins, and gives it: the plugin
/// that shows windows is needed at once, and the host's program has none of it. The end of the application
/// object takes the folder out again.
QString SearchForPluginsBesideModule()
{
    QString folder = platform::native::ModuleFolder();
    QCoreApplication::addLibraryPath(folder);
    return folder;
}

/// Whether the process has windows already. Raises `std::logic_error` when it never can.
bool HasApplication()
{
    if (QCoreApplication::instance() == nullptr) return false;
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr) return true;
    throw std::logic_error("KtQdDeConfig cannot show a dialog: the application object of this process is no "
                           "QApplication");
}

} // namespace

/// The application object of a host that has none.
class OwnApplication
{
public:
    OwnApplication()
        : m_moduleFolder(SearchForPluginsBesideModule()), m_application(g_argumentCount, g_arguments)
    {
        m_locale.GiveNumbersBack();
        // The menus of edit fields are the toolkit's.
        const QString installed = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
        if (LoadToolkitTexts(m_texts, {installed, m_moduleFolder}))
            QCoreApplication::installTranslator(&m_texts);
    }

private:
    EnvironmentLocale m_locale;
    QString m_moduleFolder;
    QApplication m_application;
    QTranslator m_texts;
};

ResourceContext::ResourceContext()
{
    if (!HasApplication()) m_own = std::make_unique<OwnApplication>();
    m_quitsWithLastWindow = QGuiApplication::quitOnLastWindowClosed();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    m_boxes.emplace();
}

ResourceContext::~ResourceContext()
{
    QGuiApplication::setQuitOnLastWindowClosed(m_quitsWithLastWindow);
}

} // namespace dialogs
