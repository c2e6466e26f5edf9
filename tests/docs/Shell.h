#pragma once

#include "support/TempFolder.h"

#include <QtCore/QProcess>

namespace test {

/// A user in a folder of his own, with the programs of this build and a home that ends with the test.
class Shell
{
public:
    /// The folder holds a copy of the sample files.
    Shell();

    const TempFolder& Folder() const noexcept { return m_folder; }
    /// Does what the words say. Empty when it succeeded, else what went wrong. A program that shows a window
    /// succeeds when the window stands; it is ended then.
    QString Run(const QStringList& words) const;

private:
    QString RunToTheEnd(const QString& program, const QStringList& arguments) const;
    QString RunWindow(const QString& program, const QStringList& arguments) const;
    QString Remembered() const;

    TempFolder m_folder;
    QProcessEnvironment m_environment;
};

} // namespace test
