#include "support/UnprivilegedFolder.h"

#include "support/Patience.h"

#include <QtCore/QProcess>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

namespace {

bool IsAdministrator()
{
    QProcess id;
    id.start(u"id"_s, {u"-u"_s});
    WaitForEnd(id);
    return id.readAllStandardOutput().trimmed() == "0";
}

bool HasSucceeded(const QProcess& process)
{
    return process.error() != QProcess::FailedToStart && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

QString EndOf(const QProcess& process)
{
    if (process.error() == QProcess::FailedToStart) return process.errorString();
    if (process.exitStatus() == QProcess::CrashExit) return u"crashed"_s;
    return u"exit code %1"_s.arg(process.exitCode());
}

} // namespace

std::runtime_error Complaint(QProcess& process)
{
    const QString command = (QStringList(process.program()) + process.arguments()).join(u' ');
    return std::runtime_error((command + u": "_s + EndOf(process) + u'\n').toStdString() +
                              process.readAll().toStdString());
}

void RequireSuccess(QProcess& process)
{
    process.start();
    WaitForEnd(process);
    if (!HasSucceeded(process)) throw Complaint(process);
}

UnprivilegedFolder::UnprivilegedFolder() : m_isForNobody(IsAdministrator())
{
    if (!m_isForNobody) return;
    QProcess owner;
    owner.setProcessChannelMode(QProcess::MergedChannels);
    owner.setProgram(u"sh"_s);
    owner.setArguments({u"-c"_s, u"chmod 770 \"$0\" && chown nobody \"$0\""_s, Native({})});
    RequireSuccess(owner);
}

UnprivilegedFolder::~UnprivilegedFolder()
{
    if (!m_isForNobody) return;
    QProcess remover; // what is closed to the group, its owner alone removes
    SetUp(remover, u"find"_s, {Native({}), u"-mindepth"_s, u"1"_s, u"-delete"_s});
    remover.start();
    remover.waitForFinished(static_cast<int>(Patience().count()));
}

void UnprivilegedFolder::SetUp(QProcess& process, const QString& program, const QStringList& arguments) const
{
    QStringList words{u"--pdeathsig"_s, u"INT"_s};
    if (m_isForNobody) words += {u"--reuid"_s, u"nobody"_s, u"--regid"_s, u"nogroup"_s, u"--clear-groups"_s};
    process.setProgram(u"setpriv"_s);
    process.setArguments(words + QStringList{u"--"_s, program} + arguments);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(Native({}));
}

} // namespace test
