#pragma once

#include "embedded/TestProject.h"
#include "embedded/windows/EmbeddedWindows.h"
#include "host/NvQdDeMng.h"
#include "support/MessageRecorder.h"

#include <QtWidgets/QDialog>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace test {

/// The dialog that a picker serves: remembers the messages that it gets.
class PickerParent : public QDialog
{
public:
    bool event(QEvent* event) override;

    /// The messages so far: "bill 031001001 1 0", and of a quota its six texts joined by bars.
    const CStringArray& Picked() const noexcept { return m_picked; }
    /// Runs while a message is being handled, before its record is read.
    void WhileHandling(std::function<void()> step) { m_step = std::move(step); }

private:
    CStringArray m_picked;
    std::function<void()> m_step = [] {};
};

/// A project, opened as host with its windows, and a parent for pickers.
class EmbeddedWindowsTest : public ::testing::Test
{
protected:
    EmbeddedWindowsTest();

    /// The window of the picker of the parent.
    QDialog& Window() const;

    TestProject m_project;
    MessageRecorder m_messages;
    std::unique_ptr<embedded::EmbeddedHost> m_host;
    std::unique_ptr<embedded::EmbeddedWindows> m_windows;
    std::unique_ptr<host::Installation> m_installed;
    PickerParent m_parent;
};

} // namespace test
