#pragma once

#include "editor/window/MainWindow.h"
#include "platform/Files.h"
#include "support/MessageRecorder.h"
#include "support/TempFolder.h"

#include <QtCore/QMutex>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtCore/QWaitCondition>
#include <QtWidgets/QDialog>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <vector>

class QMessageBox;

namespace test {

/// What the user does in the modal windows that the next steps bring up, one after another. Looks for them as
/// long as it lives. A progress window comes only when the machine takes a while, so it is passed over,
/// unless the next step is meant for one.
class NextWindows
{
public:
    using Step = std::function<void(QDialog&)>;

    /// A step for the progress window that comes next. The test must see to it that one comes.
    static Step InProgress(Step step);
    /// A step for the message box that comes next: a window that is seen again before it is passed over.
    static Step InBox(std::function<void(QMessageBox&)> step);

    explicit NextWindows(std::vector<Step> steps);

    /// Whether all of them came up.
    bool Done() const noexcept { return m_next == m_steps.size(); }

private:
    void Look();

    std::vector<Step> m_steps;
    std::size_t m_next = 0;
    QPointer<QDialog> m_last;
    QTimer m_timer;
};

/// A machine so slow that every step on a thread beside the window's shows its progress window: files are not
/// touched there before the window has come up.
class SlowFiles : public platform::FileSystemProxy, private QObject
{
public:
    SlowFiles();
    ~SlowFiles() override;

    std::optional<QByteArray> Read(const CString& path, CString* reason) override;
    std::optional<QByteArray> ReadHead(const CString& path, qint64 length) override;
    bool CreateFolder(const CString& path) override;

    /// How many progress windows have come up.
    int Windows() const noexcept { return m_windows; }

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void WaitForWindow();

    QMutex m_mutex;
    QWaitCondition m_changed;
    bool m_isShown = false; ///< guarded by the mutex
    int m_windows = 0;
    platform::ScopedFileSystem m_installed;
};

/// Presses the button with that text (mnemonics left out) in a window.
void PressButton(QWidget& window, const QString& text);

/// The part of that class in a window, which must have one.
template <typename Part>
Part& PartOf(const QWidget& window)
{
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (auto* part = dynamic_cast<Part*>(widget)) return *part;
    throw std::runtime_error("the window has no such part");
}

/// The main window without a project, and a folder for projects and settings.
class EditorWindow : public ::testing::Test
{
protected:
    EditorWindow();

    QString Folder(const CString& name) const { return m_folder.Native(name); }
    /// Makes a project; gives its folder.
    QString MakeProject(const CString& name, SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode) const;
    editor::RecentProjects Recent() const
    {
        return editor::RecentProjects(Folder(QStringLiteral("editor.ini")));
    }

    TempFolder m_folder;
    MessageRecorder m_messages;
    editor::MainWindow m_window;
};

} // namespace test
