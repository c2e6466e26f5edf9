#include "cli/CliTesting.h"

#include "support/MadeOnce.h"
#include "support/Patience.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

QJsonObject Outcome::Json() const
{
    return QJsonDocument::fromJson(out).object();
}

QList<QJsonObject> Outcome::Lines() const
{
    QList<QJsonObject> lines;
    for (const QByteArray& line : out.split('\n'))
        if (!line.isEmpty()) lines.append(QJsonDocument::fromJson(line).object());
    return lines;
}

Cli::Cli(const QString& mode) : m_environment(QProcessEnvironment::systemEnvironment())
{
    m_environment.remove(u"KTQDDE_PROJECT"_s);
    if (mode.isEmpty()) return;
    PutMadeOnce(m_folder.Native(u"project"_s), u"init "_s + mode, [&](const QString& folder) {
        const Outcome made = Run({u"init"_s, folder, u"--mode"_s, mode, u"--spec"_s, u"给排水"_s});
        if (made.status != 0) throw std::runtime_error("no project: " + made.err.toStdString());
    });
}

Outcome Cli::Run(const QStringList& arguments, const QByteArray& input) const
{
    QProcess process;
    process.setWorkingDirectory(m_folder.Native({}));
    process.setProcessEnvironment(m_environment);
    if (!m_output.isEmpty()) process.setStandardOutputFile(m_output);
    process.start(QStringLiteral(KTQDDE_PROGRAM), arguments);
    process.write(input);
    process.closeWriteChannel();
    WaitForEnd(process);
    const bool normal = process.exitStatus() == QProcess::NormalExit;
    return {normal ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

Outcome Cli::RunInProject(const QStringList& arguments, const QByteArray& input) const
{
    return Run(QStringList{u"--project"_s, u"project"_s} + arguments, input);
}

Outcome Cli::Batch(const QByteArray& script, const QStringList& options) const
{
    return RunInProject(QStringList{u"batch"_s, u"-"_s} + options, script);
}

QString Cli::RuleFile(const QString& configuration)
{
    return u"project\\app\\自动套配置\\%1.xml"_s.arg(configuration);
}

QByteArray Cli::Sample()
{
    QFile file(test::InSourceTree(QStringLiteral("samples/SampleRules.xml")));
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no sample");
    return file.readAll();
}

} // namespace test
