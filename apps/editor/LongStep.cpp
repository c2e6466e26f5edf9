#include "editor/LongStep.h"

#include "platform/Messages.h"

#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace editor {

namespace {

/// A step that ends within this time shows no window, which would only flicker.
constexpr auto QuietTime = 300ms;
/// How often the window looks after the step.
constexpr auto LookInterval = 50ms;
constexpr int BarSteps = 1000;

/// The window over a running step. Closing it in any way asks the step to stop and waits for its end.
class ProgressDialog : public QDialog
{
public:
    ProgressDialog(QWidget* parent, const QString& text, const QThread& thread, StepControl& control);

protected:
    void reject() override;

private:
    void Look();

    const QThread& m_thread;
    StepControl& m_control;
    QLabel* m_text;
    QProgressBar* m_bar;
    QPushButton* m_cancel;
    QTimer m_timer;
};

ProgressDialog::ProgressDialog(QWidget* parent, const QString& text, const QThread& thread,
                               StepControl& control)
    : QDialog(parent), m_thread(thread), m_control(control), m_text(new QLabel(text)),
      m_bar(new QProgressBar), m_cancel(new QPushButton(u"取消"_s))
{
    setWindowTitle(platform::MessageCaption());
    setWindowModality(Qt::ApplicationModal);
    auto* column = new QVBoxLayout(this);
    m_bar->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    m_bar->setAccessibleName(u"进度"_s);
    column->addWidget(m_text);
    column->addWidget(m_bar);
    column->addWidget(m_cancel, 0, Qt::AlignRight);
    connect(m_cancel, &QPushButton::clicked, this, [this] { reject(); });
    connect(&m_timer, &QTimer::timeout, this, [this] { Look(); });
    m_timer.start(LookInterval);
    Look();
}

void ProgressDialog::reject()
{
    m_control.Cancel();
    m_text->setText(u"正在取消…"_s);
    m_cancel->setEnabled(false);
}

// The end of the thread is looked for, not signalled: a signal could come before anybody listens.
void ProgressDialog::Look()
{
    const qint64 total = m_control.Total();
    m_bar->setRange(0, total == 0 ? 0 : BarSteps);
    if (total != 0) m_bar->setValue(static_cast<int>(std::min(m_control.Done(), total) * BarSteps / total));
    if (m_thread.isFinished()) done(Accepted);
}

} // namespace

void StepControl::Report(qint64 done, qint64 total) noexcept
{
    m_done = done;
    m_total = total;
}

void StepControl::Check() const
{
    if (m_cancelled) throw Cancelled();
}

bool RunLongStep(QWidget* parent, const QString& text, const LongStep& step)
{
    StepControl control;
    std::exception_ptr raised;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            step(control);
        } catch (...) {
            raised = std::current_exception();
        }
    }));
    thread->start();
    if (!thread->wait(QDeadlineTimer(QuietTime))) {
        ProgressDialog(parent, text, *thread, control).exec();
        thread->wait();
    }
    try {
        if (raised) std::rethrow_exception(raised);
        return true;
    } catch (const Cancelled&) {
        return false;
    }
}

} // namespace editor
