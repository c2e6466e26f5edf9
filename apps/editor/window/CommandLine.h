#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <stdexcept>

namespace editor {

/// The words were no correct use of the program. The text says what is wrong.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString& message);
    ~UsageError() override;
};

/// What the user asks for by the command line.
struct CommandLine
{
    bool help = false;
    bool version = false;
    bool sample = false;           ///< the sample project, made if it is missing
    QString project;               ///< native folder; empty when none is named
    std::optional<QString> wizard; ///< rule file to run the wizard on, as named
    QString note;                  ///< of the wizard
    bool allowBack = true;         ///< of the wizard

    /// Reads the words behind the program's name. Raises `UsageError`.
    static CommandLine Parse(const QStringList& words);

    /// What `--help` prints.
    static QString HelpText();
};

} // namespace editor
