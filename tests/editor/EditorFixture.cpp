#include "editor/EditorFixture.h"

#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/data/project/CreateProject.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>

#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace test {

NextWindows::NextWindows(std::vector<Step> steps) : m_steps(std::move(steps))
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Look(); });
    m_timer.start(10);
}

void NextWindows::Look()
{
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (window == nullptr || window == m_last || Done()) return;
    m_last = window;
    m_steps[m_next++](*window);
    // A window that the step has closed may come up again.
    if (m_last != nullptr && !m_last->isVisible()) m_last = nullptr;
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
    embedded::CreateProject(Folder(name), {mode, u"给排水"_s});
    return Folder(name);
}

} // namespace test
