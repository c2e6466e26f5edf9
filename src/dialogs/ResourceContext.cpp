#include "dialogs/ResourceContext.h"

#include <QtCore/QLibraryInfo>
#include <QtCore/QTranslator>
#include <QtWidgets/QApplication>

#include <clocale>
#include <stdexcept>
#include <string>

using namespace Qt::StringLiterals;

namespace dialogs {

namespace {

/// What the toolkit wants to know of a command line; it keeps both for as long as the application lives.
char g_programName[] = "KtQdDeConfig";
char* g_arguments[] = {g_programName, nullptr};
int g_argumentCount = 1;

/// The C locale of the environment, which input methods ask for, and afterwards the host's again: it would
/// write its numbers differently from then on. The toolkit sets it too, but at its first start only.
class EnvironmentLocale
{
public:
    EnvironmentLocale() : m_hosts(std::setlocale(LC_ALL, nullptr)) { std::setlocale(LC_ALL, ""); }
    ~EnvironmentLocale() { std::setlocale(LC_ALL, m_hosts.c_str()); }
    EnvironmentLocale(const EnvironmentLocale&) = delete;
    EnvironmentLocale& operator=(const EnvironmentLocale&) = delete;

private:
    std::string m_hosts;
};

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
    OwnApplication() : m_application(g_argumentCount, g_arguments)
    {
        // The menus of edit fields are the toolkit's.
        const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
        if (m_texts.load(u"qtbase_zh_CN"_s, folder)) QCoreApplication::installTranslator(&m_texts);
    }

private:
    EnvironmentLocale m_locale;
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
