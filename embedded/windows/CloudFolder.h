#pragma once

#include "platform/Text.h"

namespace embedded {

/// The folder of the cloud disk: any folder that several people reach, such as one on a network share. A
/// folder that a person chooses is kept in the project's SysRegedit.ini, section "CloudDisk", key "Folder",
/// as a path text, and so holds for everyone who opens the project. Without one it is the project's own
/// "云盘\NAME", which is made when it is missing.
class CloudFolder
{
public:
    /// `projectFile` is the path text of the project file. `preset`, a native path, goes before the kept and
    /// the default folder unless it is empty.
    CloudFolder(const CString& projectFile, const CString& name, const QString& preset);

    /// The path text of the folder; it need not exist.
    const CString& Path() const noexcept { return m_path; }
    /// Whether a person has chosen the folder through this object.
    bool WasChosen() const noexcept { return m_chosen; }

    /// Why the folder cannot be read, as a sentence for the user; empty when it can.
    CString Fault() const;

    /// Takes a folder, a native path, from now on and keeps it in the project. Gives what is wrong, as a
    /// sentence for the user without final mark; empty when all went well. A folder that could not be kept
    /// is taken all the same.
    CString Choose(const QString& nativeFolder);

private:
    CString m_projectFile;
    CString m_path;
    bool m_chosen = false;
};

} // namespace embedded
