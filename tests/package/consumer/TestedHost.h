#pragma once

#include <ExampleHost.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <functional>
#include <utility>

/// The example's host, with a look into the dialogs that it is asked for.
class TestedHost : public ExampleHost
{
public:
    using ExampleHost::ExampleHost;

    /// Runs when a dialog is about to show itself, in its event loop.
    void AtTheDialog(std::function<void(CWnd&)> step) { m_atTheDialog = std::move(step); }

    // A dialog asks for the frame before it shows itself.
    CWnd* MainFrame() override
    {
        QTimer::singleShot(0, qApp, [this] { m_atTheDialog(*QApplication::activeModalWidget()); });
        return nullptr;
    }

private:
    std::function<void(CWnd&)> m_atTheDialog;
};
