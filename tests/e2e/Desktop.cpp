#include "e2e/Desktop.h"

#include "support/Patience.h"

#include <QtCore/QRegularExpression>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// In which a window manager tells the widths of a frame: left, right, top, bottom.
const QString FrameProperty = u"_NET_FRAME_EXTENTS"_s;

/// Lets a program clean up behind it; a server that is killed leaves the file that keeps its display.
void End(QProcess& process)
{
    process.terminate();
    try {
        WaitForEnd(process);
    } catch (const std::runtime_error&) {
        process.kill();
        process.waitForFinished();
    }
}

} // namespace

Desktop::Desktop() : m_environment(QProcessEnvironment::systemEnvironment())
{
    for (const QString& name : m_environment.keys())
        if (name.startsWith(u"QT_")) m_environment.remove(name);
    for (const QString& name : {u"WAYLAND_DISPLAY"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s,
                                u"XDG_RUNTIME_DIR"_s, u"DBUS_SESSION_BUS_ADDRESS"_s, u"XMODIFIERS"_s})
        m_environment.remove(name);
    m_environment.insert(u"HOME"_s, m_home.Native({}));
    // The platform's libraries keep some memory to the end; that is no affair of the editor's.
    m_environment.insert(u"ASAN_OPTIONS"_s, m_environment.value(u"ASAN_OPTIONS"_s) + u":detect_leaks=0"_s);
    m_environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    m_environment.insert(u"KTQDDE_EDITOR_SETTINGS"_s, m_home.Native(u"editor.ini"_s));
    StartServer();
    StartManager();
}

Desktop::~Desktop()
{
    End(m_manager);
    End(m_server);
}

// The server finds a free display and says its number. It repeats no key: a tool that the machine holds
// between the press and the release of one would type it many times. Repeats would come at once, so that no
// test is left to chance should a server repeat keys all the same.
void Desktop::StartServer()
{
    m_server.setProgram(QStringLiteral(KTQDDE_XVFB));
    m_server.setArguments({u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1600x1200x24"_s, u"-nolisten"_s,
                           u"tcp"_s, u"-noreset"_s, u"-r"_s, u"-ardelay"_s, u"1"_s, u"-arinterval"_s,
                           u"1"_s});
    m_server.setStandardErrorFile(m_records.Native(u"server"_s));
    QByteArray number;
    const auto isReady = [&] {
        if (m_server.state() == QProcess::NotRunning) { // not yet, or it could not start
            number.clear();
            m_server.start();
        }
        m_server.waitForReadyRead(100);
        number += m_server.readAllStandardOutput();
        return number.endsWith('\n');
    };
    try {
        WaitFor(u"X server"_s, isReady);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(error.what() +
                                 u"; state %1, it says: "_s.arg(m_server.state()).toStdString() +
                                 m_records.ReadFile(u"server"_s).toStdString());
    }
    m_environment.insert(u"DISPLAY"_s, u":"_s + QString::fromLatin1(number.trimmed()));
}

void Desktop::StartManager()
{
    m_manager.setProgram(QStringLiteral(KTQDDE_OPENBOX));
    m_manager.setArguments({u"--sm-disable"_s});
    m_manager.setProcessEnvironment(m_environment);
    m_manager.setStandardErrorFile(QProcess::nullDevice());
    m_manager.start();
    // One that has not begun to listen yet does nothing of what is asked of it.
    WaitFor(u"window manager"_s, [&] {
        Do({u"set_num_desktops"_s, QString::number(m_desktops)});
        return HasDesktops();
    });
}

void Desktop::WaitFor(const QString& what, const std::function<bool()>& holds)
{
    test::WaitFor(what, holds);
}

bool Desktop::Shows(const QString& title) const
{
    return !WindowId(title).isEmpty();
}

bool Desktop::HasFocus(const QString& title) const
{
    const QByteArray id = WindowId(title);
    return !id.isEmpty() && Do({u"getwindowfocus"_s}).trimmed() == id;
}

void Desktop::Focus(const QString& title)
{
    WaitFor(u"focus of "_s + title, [&] {
        if (HasFocus(title)) return true;
        const QByteArray id = WindowId(title);
        if (!id.isEmpty()) Do({u"windowactivate"_s, QString::fromLatin1(id)});
        return false;
    });
}

void Desktop::WaitUntilGone(const QString& title)
{
    WaitFor(u"end of "_s + title, [&] { return !Shows(title); });
}

void Desktop::Press(const QStringList& keys)
{
    Act(QStringList{u"key"_s, u"--delay"_s, u"5"_s} + keys);
}

void Desktop::PressIn(const QString& title, const QString& key)
{
    const QByteArray id = WindowId(title);
    if (!id.isEmpty()) Do({u"key"_s, u"--window"_s, QString::fromLatin1(id), key});
}

void Desktop::Type(const QString& text)
{
    Act({u"type"_s, u"--delay"_s, u"5"_s, text});
}

// The tools fail now and then although the window is there: another one went while they walked over all of
// them.
QRect Desktop::Geometry(const QString& title) const
{
    QRect found;
    WaitFor(u"the place of "_s + title, [&] {
        const QString id = QString::fromLatin1(WindowId(title));
        const QString geometry = QString::fromLatin1(Do({u"getwindowgeometry"_s, u"--shell"_s, id}));
        static const QRegularExpression Numbers(
            u"X=(-?\\d+)\\s+Y=(-?\\d+)\\s+WIDTH=(\\d+)\\s+HEIGHT=(\\d+)"_s);
        const QRegularExpressionMatch match = Numbers.match(geometry);
        const auto number = [&match](int group) { return match.captured(group).toInt(); };
        if (match.hasMatch()) found = {number(1), number(2), number(3), number(4)};
        return match.hasMatch();
    });
    return found;
}

QRect Desktop::FrameGeometry(const QString& title) const
{
    QMargins frame;
    WaitFor(u"the frame of "_s + title, [&] {
        const std::optional<QMargins> told = ToldFrame(title);
        frame = told.value_or(QMargins());
        return told.has_value();
    });
    return Geometry(title).marginsAdded(frame);
}

std::optional<QMargins> Desktop::ToldFrame(const QString& title) const
{
    const QString id = QString::fromLatin1(WindowId(title));
    const QByteArray told =
        Run(QStringLiteral(KTQDDE_XPROP), {u"-id"_s, id, FrameProperty}).value_or(QByteArray());
    static const QRegularExpression Numbers(u"= (\\d+), (\\d+), (\\d+), (\\d+)"_s);
    const QRegularExpressionMatch match = Numbers.match(QString::fromLatin1(told));
    if (!match.hasMatch()) return std::nullopt;
    const auto number = [&match](int group) { return match.captured(group).toInt(); };
    return QMargins(number(1), number(3), number(2), number(4));
}

void Desktop::TellFrame(const QString& title, const QMargins& frame)
{
    const QString widths =
        u"%1, %2, %3, %4"_s.arg(frame.left()).arg(frame.right()).arg(frame.top()).arg(frame.bottom());
    WaitFor(u"another frame of "_s + title, [&] {
        Run(QStringLiteral(KTQDDE_XPROP), {u"-id"_s, QString::fromLatin1(WindowId(title)), u"-f"_s,
                                           FrameProperty, u"32c"_s, u"-set"_s, FrameProperty, widths});
        return ToldFrame(title) == frame;
    });
}

QString Desktop::Describe() const
{
    QString text;
    for (const QByteArray& line : Do({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"."_s}).split('\n')) {
        const QString id = QString::fromLatin1(line.trimmed());
        if (id.isEmpty()) continue;
        const QByteArray name = Do({u"getwindowname"_s, id}).trimmed();
        const QByteArray place = Do({u"getwindowgeometry"_s, id}).simplified();
        const QByteArray frame =
            Run(QStringLiteral(KTQDDE_XPROP), {u"-id"_s, id, FrameProperty}).value_or(QByteArray()).trimmed();
        text += QString::fromUtf8(name + ": " + place + "; " + frame + '\n');
    }
    return text;
}

// The server takes the move before the click. Nobody waits for the move: there is none when the pointer is
// there already.
void Desktop::Click(const QString& title, QPointF place)
{
    const QRect window = Geometry(title);
    const auto x = static_cast<int>(place.x() * window.width());
    const auto y = static_cast<int>(place.y() * window.height());
    Act({u"mousemove"_s, u"--window"_s, QString::fromLatin1(WindowId(title)), QString::number(x),
         QString::number(y), u"click"_s, u"1"_s});
    WaitForManager();
}

void Desktop::KeepManagerBusy()
{
    const QString script = u"kill -STOP %1; (sleep 1; kill -CONT %1) >/dev/null 2>&1 &"_s;
    Run(u"sh"_s, {u"-c"_s, script.arg(m_manager.processId())});
}

// It does one thing after the other, and the number of desktops can be seen.
void Desktop::WaitForManager()
{
    m_desktops = 3 - m_desktops;
    Act({u"set_num_desktops"_s, QString::number(m_desktops)});
    WaitFor(u"the window manager"_s, [this] { return HasDesktops(); });
}

bool Desktop::HasDesktops() const
{
    return Do({u"get_num_desktops"_s}).trimmed() == QByteArray::number(m_desktops);
}

// The tool finds nothing, too, when another window goes while it walks over all of them; but then it
// complains.
QByteArray Desktop::WindowId(const QString& title) const
{
    constexpr int Tries = 5; // a tool that complains of something else is believed in the end
    QByteArray id;
    for (int i = 0; i < Tries; ++i) {
        QByteArray complaint;
        id = Run(QStringLiteral(KTQDDE_XDOTOOL), {u"search"_s, u"--onlyvisible"_s, u"--name"_s, title},
                 &complaint)
                 .value_or(QByteArray())
                 .split('\n')
                 .first()
                 .trimmed();
        if (!id.isEmpty() || complaint.isEmpty()) break;
    }
    return id;
}

std::optional<QByteArray> Desktop::Run(const QString& tool, const QStringList& words,
                                       QByteArray* complaint) const
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(tool, words);
    WaitForEnd(process);
    if (complaint != nullptr) *complaint = process.readAllStandardError();
    const bool done = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return done ? std::optional(process.readAllStandardOutput()) : std::nullopt;
}

QByteArray Desktop::Do(const QStringList& words) const
{
    return Run(QStringLiteral(KTQDDE_XDOTOOL), words).value_or(QByteArray());
}

void Desktop::Act(const QStringList& words) const
{
    if (!Run(QStringLiteral(KTQDDE_XDOTOOL), words))
        throw std::runtime_error("the user cannot do: " + words.join(u' ').toStdString());
}

} // namespace test
