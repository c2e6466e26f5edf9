#include "editor/steps/FileWait.h"

#include "editor/steps/ProgressWindow.h"

#include <QtWidgets/QApplication>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

class FileWait
{
public:
    bool GoOn(const CString& text, std::chrono::milliseconds waited)
    {
        if (waited < QuietTime) return true;
        if (!m_window) m_window.emplace(QApplication::activeWindow(), u"正在等待规则文件…"_s, m_control);
        m_window->Explain(text);
        m_window->show();
        QCoreApplication::processEvents();
        return !m_control.IsCancelled();
    }

private:
    StepControl m_control;
    std::optional<ProgressWindow> m_window;
};

} // namespace

embedded::RuleFileLock::GoOn WaitInWindow()
{
    return [wait = std::make_shared<FileWait>()](const CString& text, std::chrono::milliseconds waited) {
        return wait->GoOn(text, waited);
    };
}

} // namespace editor
