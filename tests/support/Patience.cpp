#include "support/Patience.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QThread>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace test {

namespace {

constexpr std::chrono::seconds UsualPatience = 600s;
constexpr unsigned long LookInterval = 10; // ms

void WaitBetweenLooks(const QString& what, const std::function<bool()>& holds,
                      const std::function<void()>& pause)
{
    const QDeadlineTimer end(Patience());
    while (!holds()) {
        if (end.hasExpired()) throw std::runtime_error("waited in vain for: " + what.toStdString());
        pause();
    }
}

} // namespace

std::chrono::milliseconds Patience()
{
    const int seconds = qEnvironmentVariableIntValue("KTQDDE_TEST_PATIENCE");
    return seconds > 0 ? std::chrono::seconds(seconds) : UsualPatience;
}

void WaitFor(const QString& what, const std::function<bool()>& holds)
{
    WaitBetweenLooks(what, holds, [] { QThread::msleep(LookInterval); });
}

void WaitInLoopFor(const QString& what, const std::function<bool()>& holds)
{
    WaitBetweenLooks(what, holds, [] {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(1);
    });
}

void WaitForEnd(QProcess& process)
{
    // It tells nothing of a program that has ended before it was asked.
    if (process.state() == QProcess::NotRunning) return;
    if (process.waitForFinished(static_cast<int>(Patience().count()))) return;
    if (process.state() == QProcess::NotRunning) return;
    throw std::runtime_error("does not end: " + process.program().toStdString());
}

QProcessEnvironment PatientEnvironment()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    const QString seconds = QString::number(Patience() / 1s);
    for (const QString& wait : {u"KTQDDE_LOCK_WAIT"_s, u"KTQDDE_DATABASE_WAIT"_s})
        environment.insert(wait, seconds);
    return environment;
}

void Kill(QProcess& process)
{
    process.kill();
    WaitForEnd(process);
}

} // namespace test
