#pragma once

#include "platform/Files.h"

#include <csignal>

namespace test {

/// While it lives, interrupts the program at one of the openings of a file, told by the end of its path.
class InterruptingReads : public platform::FileSystemProxy
{
public:
    /// Openings are counted from 1.
    InterruptingReads(CString name, int opening)
        : FileSystemProxy(platform::Files()), m_name(std::move(name)), m_left(opening), m_installed(*this)
    {
    }

    std::unique_ptr<platform::InputFile> OpenForReading(const CString& path) override
    {
        if (path.endsWith(m_name) && --m_left == 0) std::raise(SIGINT);
        return FileSystemProxy::OpenForReading(path);
    }
    bool HasCome() const { return m_left <= 0; }

private:
    CString m_name;
    int m_left;
    platform::ScopedFileSystem m_installed;
};

} // namespace test
