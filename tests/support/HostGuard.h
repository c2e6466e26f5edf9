#pragma once

#include "support/MemoryHost.h"
#include "support/MessageRecorder.h"
#include "support/TempFolder.h"

#include <memory>

namespace test {

/// The surroundings of one test: an in-memory host with the standard catalogue, installed; a temporary folder
/// with the application folder "app" and the project "project\工程.prj" (the project's folder exists, the
/// file does not); a recorder of messages. All of it ends with this object.
class HostGuard
{
public:
    HostGuard();

    const TempFolder& Folder() const noexcept { return m_folder; }
    MemoryHost& Host() noexcept { return m_host; }
    MessageRecorder& Messages() noexcept { return m_messages; }

    /// The path text of the application folder.
    CString AppFolder() const;
    /// The path text of the project's folder.
    CString ProjectFolder() const;
    /// Installs the host again after its roles have changed (`MemoryHost::SetWindows`).
    void Reinstall();

private:
    TempFolder m_folder;
    MemoryHost m_host;
    MessageRecorder m_messages;
    std::unique_ptr<host::Installation> m_installed;
};

} // namespace test
