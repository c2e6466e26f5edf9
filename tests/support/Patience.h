#pragma once

#include <QtCore/QString>

#include <chrono>
#include <functional>

class QProcess;
class QProcessEnvironment;

namespace test {

/// The limit of every wait of a test. Tests wait for a state and go on as soon as it is there, so this
/// decides how long a broken program holds the tests up and nothing else: it is far longer than a working
/// program takes on a tenth of a busy machine with sanitizers. The environment variable
/// `KTQDDE_TEST_PATIENCE` sets another limit, in seconds.
std::chrono::milliseconds Patience();

/// Waits until `holds`, and asks it again and again meanwhile; no events are handled. Raises
/// `std::runtime_error` with `what` when patience is over.
void WaitFor(const QString& what, const std::function<bool()>& holds);

/// The same while events are handled, for states that the test's own program has to come to.
void WaitInLoopFor(const QString& what, const std::function<bool()>& holds);

/// Waits for the end of a program that was started, also when it has ended already or could not be started.
/// Raises `std::runtime_error` when patience is over.
void WaitForEnd(QProcess& process);

/// For a program that finds a file or a database in the hands of another one: it waits as long as a test
/// does, instead of giving up after what is enough for people.
QProcessEnvironment PatientEnvironment();

/// Ends a program by force and waits until it is gone. Nothing happens when it does not run.
void Kill(QProcess& process);

} // namespace test
