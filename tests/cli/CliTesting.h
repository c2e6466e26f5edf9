#pragma once

#include "support/TempFolder.h"

#include <QtCore/QJsonObject>
#include <QtCore/QProcess>

namespace test {

/// What a run of the program left behind.
struct Outcome
{
    int status = -1; ///< the exit status; -1 when the program did not end by itself
    QByteArray out;
    QByteArray err;

    QString Out() const { return QString::fromUtf8(out); }
    QString Err() const { return QString::fromUtf8(err); }
    /// Standard output as one JSON object.
    QJsonObject Json() const;
    /// Standard output as one JSON object a line.
    QList<QJsonObject> Lines() const;
};

/// Runs the program in a temporary folder of its own, with no project in the environment.
class Cli
{
public:
    /// Without `mode` there is no project yet, else "project" in the folder.
    explicit Cli(const QString& mode = {});

    const TempFolder& Folder() const noexcept { return m_folder; }
    /// Runs the program as it is called, the folder being the current one.
    Outcome Run(const QStringList& arguments, const QByteArray& input = {}) const;
    /// Runs it with the project named.
    Outcome RunInProject(const QStringList& arguments, const QByteArray& input = {}) const;
    /// Runs a batch whose script comes on standard input.
    Outcome Batch(const QByteArray& script, const QStringList& options = {}) const;
    /// Sets an environment variable for the runs to come.
    void SetVariable(const QString& name, const QString& value) { m_environment.insert(name, value); }
    /// Sends the standard output of the runs to come to a native path instead of into their outcome.
    void SendOutputTo(const QString& nativePath) { m_output = nativePath; }

    /// The name, in the folder, of the rule file of a configuration.
    static QString RuleFile(const QString& configuration = QStringLiteral("DefaultConfig"));
    /// The sample rule file of the sources.
    static QByteArray Sample();

private:
    TempFolder m_folder;
    QProcessEnvironment m_environment;
    QString m_output;
};

} // namespace test
