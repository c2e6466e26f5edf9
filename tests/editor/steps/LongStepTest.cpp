#include "editor/steps/LongStep.h"

#include "editor/EditorFixture.h"

#include <QtCore/QThread>
#include <QtWidgets/QProgressBar>

using namespace Qt::StringLiterals;
using editor::RunLongStep;
using editor::StepControl;

namespace {

void WorkUntilCancelled(StepControl& control)
{
    for (;;) {
        control.Check();
        QThread::yieldCurrentThread();
    }
}

} // namespace

TEST(LongStep, RunsOnAThreadOfItsOwn)
{
    const QThread* thread = nullptr;
    EXPECT_TRUE(RunLongStep(nullptr, u"step"_s, [&](StepControl&) { thread = QThread::currentThread(); }));
    EXPECT_NE(thread, nullptr);
    EXPECT_NE(thread, QThread::currentThread());
}

TEST(LongStep, RaisesWhatTheStepRaised)
{
    EXPECT_THROW(RunLongStep(nullptr, u"step"_s, [](StepControl&) { throw std::runtime_error("no disk"); }),
                 std::runtime_error);
}

TEST(LongStep, CancelButtonStopsTheStep)
{
    const test::NextWindows user(
        {test::NextWindows::InProgress([](QDialog& window) { test::PressButton(window, u"取消"_s); })});
    EXPECT_FALSE(RunLongStep(nullptr, u"step"_s, WorkUntilCancelled));
    EXPECT_TRUE(user.Done());
}

TEST(LongStep, ClosingTheWindowStopsTheStep)
{
    const test::NextWindows user({test::NextWindows::InProgress([](QDialog& window) { window.close(); })});
    EXPECT_FALSE(RunLongStep(nullptr, u"step"_s, WorkUntilCancelled));
    EXPECT_TRUE(user.Done());
}

TEST(LongStep, ProgressIsShown)
{
    int shown = -1;
    const test::NextWindows user({test::NextWindows::InProgress([&](QDialog& window) {
        const auto* bar = window.findChild<QProgressBar*>();
        shown = 100 * bar->value() / bar->maximum();
        window.close();
    })});
    RunLongStep(nullptr, u"step"_s, [](StepControl& control) {
        control.Report(3, 4);
        WorkUntilCancelled(control);
    });
    EXPECT_EQ(shown, 75);
}
