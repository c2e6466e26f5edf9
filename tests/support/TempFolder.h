#pragma once

#include "platform/Text.h"
#include "support/PrintText.h"

#include <QtCore/QByteArray>
#include <QtCore/QTemporaryDir>

namespace test {

/// A temporary folder of one test, removed with everything in it at the end. Names may lead into folders
/// below it, separated by backslashes. Its reading and writing go past `platform::Files()`, so that a failing
/// file system under test does not get in the way. A preparation that fails ends the test by an exception.
class TempFolder
{
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// The path text of the folder itself, without trailing backslash.
    CString Root() const;
    /// The path text of something in the folder.
    CString Path(const CString& name) const;
    /// The native path of something in the folder.
    QString Native(const CString& name) const;

    /// Creates a folder and those above it, and gives its path text.
    CString MakeFolder(const CString& name) const;
    /// Writes a file and gives its path text. The folder must exist.
    CString WriteFile(const CString& name, const QByteArray& bytes) const;
    /// The content of a file.
    QByteArray ReadFile(const CString& name) const;
    bool Exists(const CString& name) const;
    /// The names of the files in it, sorted.
    CStringArray FileNames() const;
    /// Takes from everybody the right to write a file or folder, or gives it back to the owner.
    void SetReadOnly(const CString& name, bool readOnly) const;
    /// Lets a file say that it was written at another time.
    void SetTime(const CString& name, const QDateTime& written) const;
    /// Whether the process may write everywhere in spite of `SetReadOnly`, as an administrator may. Tests
    /// that rely on a refusal skip then.
    static bool IgnoresPermissions();

private:
    QTemporaryDir m_folder;
};

} // namespace test
