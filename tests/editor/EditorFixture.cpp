#include "editor/EditorFixture.h"

#include "editor/steps/ProgressWindow.h"
#include "embedded/NewProject.h"
#include "embedded/data/host/EmbeddedHost.h"

#include <QtCore/QThread>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// Known by its type, for the windows that such a step is not meant for are passed over.
struct ProgressStep
{
    NextWindows::Step step;
    void operator()(QDialog& window) const { step(window); }
};

struct BoxStep
{
    std::function<void(QMessageBox&)> step;
    void operator()(QDialog& window) const { step(dynamic_cast<QMessageBox&>(window)); }
};

bool IsProgress(const QObject* window)
{
    return dynamic_cast<const editor::ProgressWindow*>(window) != nullptr;
}

} // namespace

NextWindows::NextWindows(std::vector<Step> steps) : m_steps(std::move(steps))
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Look(); });
    m_timer.start(10);
}

void NextWindows::Look()
{
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (window == nullptr || window == m_last || Done()) return;
    if (IsProgress(window) && m_steps[m_next].target<ProgressStep>() == nullptr) return;
    const bool isBox = dynamic_cast<const QMessageBox*>(window) != nullptr;
    if (!isBox && m_steps[m_next].target<BoxStep>() != nullptr) return;
    m_last = window;
    m_steps[m_next++](*window);
    // A window that the step has closed may come up again.
    if (m_last != nullptr && !m_last->isVisible()) m_last = nullptr;
}

NextWindows::Step NextWindows::InProgress(Step step)
{
    return ProgressStep{std::move(step)};
}

NextWindows::Step NextWindows::InBox(std::function<void(QMessageBox&)> step)
{
    return BoxStep{std::move(step)};
}

SlowFiles::SlowFiles() : FileSystemProxy(platform::Files()), m_installed(*this)
{
    QCoreApplication::instance()->installEventFilter(this);
}

SlowFiles::~SlowFiles()
{
    QCoreApplication::instance()->removeEventFilter(this);
}

std::optional<QByteArray> SlowFiles::Read(const CString& path, CString* reason)
{
    WaitForWindow();
    return Target().Read(path, reason);
}

std::optional<QByteArray> SlowFiles::ReadHead(const CString& path, qint64 length)
{
    WaitForWindow();
    return Target().ReadHead(path, length);
}

bool SlowFiles::CreateFolder(const CString& path)
{
    WaitForWindow();
    return Target().CreateFolder(path);
}

bool SlowFiles::eventFilter(QObject* watched, QEvent* event)
{
    const bool shown = event->type() == QEvent::Show;
    if ((shown || event->type() == QEvent::Hide) && IsProgress(watched)) {
        const QMutexLocker lock(&m_mutex);
        m_isShown = shown;
        m_windows += shown ? 1 : 0;
        m_changed.wakeAll();
    }
    return QObject::eventFilter(watched, event);
}

void SlowFiles::WaitForWindow()
{
    if (QThread::currentThread() == QCoreApplication::instance()->thread()) return;
    QMutexLocker lock(&m_mutex);
    while (!m_isShown)
        m_changed.wait(&m_mutex);
}

void PressButton(QWidget& window, const QString& text)
{
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>())
        if (button->text().startsWith(text)) return button->click();
    throw std::out_of_range("no button " + text.toStdString());
}

EditorWindow::EditorWindow() : m_window(Recent())
{
    m_window.show();
}

QString EditorWindow::MakeProject(const CString& name, SQdDeInfo::EQdDeMode mode) const
{
    PutNewProject(Folder(name), {mode, u"给排水"_s});
    return Folder(name);
}

} // namespace test
