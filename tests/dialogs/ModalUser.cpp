#include "dialogs/ModalUser.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

#include <gtest/gtest.h>

#include <vector>

namespace test {

namespace {

void CloseWhatStays()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    ADD_FAILURE() << "a window stays open: " << dialog->windowTitle().toStdString();
    dialog->done(QDialog::Rejected);
    QTimer::singleShot(0, qApp, CloseWhatStays);
}

/// The next step is queued before this one runs, for it may bring up another window and return only after it.
void Act(std::vector<ModalStep> steps)
{
    QTimer::singleShot(0, qApp, [steps = std::move(steps)]() mutable {
        const ModalStep step = std::move(steps.front());
        steps.erase(steps.begin());
        const bool isLast = steps.empty();
        QWidget* window = QApplication::activeModalWidget();
        ASSERT_NE(window, nullptr) << "no window came up";
        if (!isLast) Act(std::move(steps));
        step(*window);
        if (isLast) CloseWhatStays();
    });
}

} // namespace

void InModalWindows(std::initializer_list<ModalStep> steps)
{
    Act(steps);
}

} // namespace test
