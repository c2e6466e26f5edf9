#include "docs/Shell.h"

#include "support/Patience.h"
#include "support/SourceTree.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QHash>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// How long a window that leaves no trace must stand, in milliseconds.
constexpr int Moment = 3'000;

QString ProgramFile(const QString& name)
{
    static const QHash<QString, QString> files{
        {u"ktqdde"_s, QStringLiteral(KTQDDE_PROGRAM)},
        {u"ktqdde-editor"_s, QStringLiteral(KTQDDE_EDITOR_PROGRAM)},
        {u"ktqdde-pictures"_s, QStringLiteral(KTQDDE_PICTURES_PROGRAM)},
    };
    return files.value(name);
}

QString Output(QProcess& process)
{
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

bool AsksForText(const QStringList& arguments)
{
    return arguments.contains(u"--help"_s) || arguments.contains(u"--version"_s);
}

} // namespace

Shell::Shell() : m_environment(QProcessEnvironment::systemEnvironment())
{
    m_environment.remove(u"KTQDDE_PROJECT"_s);
    m_environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    m_environment.insert(u"KTQDDE_EDITOR_SETTINGS"_s, m_folder.Native(u"editor.ini"_s));
    for (const QString& home : {u"HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s})
        m_environment.insert(home, m_folder.Native(u"home"_s));
    m_folder.MakeFolder(u"home"_s);
    m_folder.MakeFolder(u"samples"_s);
    const QDir samples(InSourceTree(u"samples"_s));
    for (const QString& name : samples.entryList(QDir::Files))
        QFile::copy(samples.filePath(name), m_folder.Native(u"samples\\"_s + name));
}

QString Shell::Run(const QStringList& words) const
{
    const QStringList arguments = words.mid(1);
    if (words.first() == u"rm") {
        const bool gone = QFile::remove(m_folder.Native(QString(words.last()).replace(u'/', u'\\')));
        return gone ? QString() : u"cannot be removed"_s;
    }
    const bool showsWindow = words.first() == u"ktqdde-editor" && !AsksForText(arguments);
    const QString program = ProgramFile(words.first());
    return showsWindow ? RunWindow(program, arguments) : RunToTheEnd(program, arguments);
}

QString Shell::RunToTheEnd(const QString& program, const QStringList& arguments) const
{
    QProcess process;
    process.setWorkingDirectory(m_folder.Native({}));
    process.setProcessEnvironment(m_environment);
    process.start(program, arguments);
    process.closeWriteChannel();
    WaitForEnd(process);
    if (process.exitStatus() != QProcess::NormalExit) return u"crashed: "_s + Output(process);
    if (process.exitCode() != 0) return u"status %1: "_s.arg(process.exitCode()) + Output(process);
    return {};
}

// A window that opened a project has remembered it; the wizard alone remembers nothing.
QString Shell::RunWindow(const QString& program, const QStringList& arguments) const
{
    const bool remembers = !arguments.contains(u"--wizard"_s);
    m_folder.WriteFile(u"editor.ini"_s, {});
    QProcess process;
    process.setWorkingDirectory(m_folder.Native({}));
    process.setProcessEnvironment(m_environment);
    process.start(program, arguments);
    QElapsedTimer time;
    time.start();
    while (!process.waitForFinished(100) && time.elapsed() < Patience().count()) {
        if (remembers ? !Remembered().isEmpty() : time.elapsed() > Moment) {
            Kill(process);
            return {};
        }
    }
    const QString said = Output(process);
    Kill(process);
    return u"shows no window: "_s + said;
}

QString Shell::Remembered() const
{
    return QString::fromUtf8(m_folder.ReadFile(u"editor.ini"_s));
}

} // namespace test
