#pragma once

#include "platform/Files.h"

#include <optional>
#include <set>

namespace test {

/// What can go wrong with a file or folder.
enum class Fault {
    RefuseRead,         ///< files cannot be read
    RefuseOpen,         ///< files cannot be opened for writing
    NoRoom,             ///< reserving finds no room; the file is open by then
    Write,              ///< writing stops after a number of bytes, which have been written
    Resize,             ///< the length cannot be changed
    Sync,               ///< the disk does not take what was written
    RefuseRemove,       ///< files cannot be removed
    RefuseCreateFolder, ///< folders cannot be created
};

/// The real file system with faults put in by a test. In force for as long as it lives. A write point is one
/// opening of a file for writing; the points are counted from 0, with or without faults, so that a test first
/// counts those of an action and then repeats it with a fault at each.
class FaultyFileSystem : public platform::FileSystemProxy
{
public:
    FaultyFileSystem();

    /// Lets every operation of that kind fail.
    void Inject(Fault fault) { m_faults.insert(fault); }
    /// Lets writing fail after `bytes` bytes of each file.
    void FailAfter(qint64 bytes);
    /// Limits the faults of writing (`RefuseOpen` to `Sync`) to one write point.
    void OnlyAt(int writePoint) { m_onlyAt = writePoint; }
    /// Takes all faults away.
    void Heal();

    /// How many files were opened for writing, or refused, so far.
    int WritePoints() const noexcept { return m_writePoints; }

    std::optional<QByteArray> Read(const CString& path, CString* reason) override;
    std::optional<QByteArray> ReadHead(const CString& path, qint64 length) override;
    std::unique_ptr<platform::InputFile> OpenForReading(const CString& path) override;
    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString& path) override;
    bool Remove(const CString& path) override;
    bool CreateFolder(const CString& path) override;

private:
    bool Has(Fault fault) const { return m_faults.contains(fault); }

    std::set<Fault> m_faults;
    qint64 m_writable = 0;
    std::optional<int> m_onlyAt;
    int m_writePoints = 0;
    platform::ScopedFileSystem m_installed;
};

} // namespace test
