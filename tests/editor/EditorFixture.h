#pragma once

#include "editor/window/MainWindow.h"
#include "support/MessageRecorder.h"
#include "support/TempFolder.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QDialog>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace test {

/// What the user does in the modal windows that the next steps bring up, one after another. Looks for them as
/// long as it lives.
class NextWindows
{
public:
    using Step = std::function<void(QDialog&)>;

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

/// Presses the button with that text (mnemonics left out) in a window.
void PressButton(QWidget& window, const QString& text);

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
