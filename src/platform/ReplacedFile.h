#pragma once

#include "platform/Export.h"
#include "platform/Files.h"

#include <memory>

namespace platform {

/// A file that is written anew beside the one whose place it takes at the end: until then the old one stands
/// whole, whatever happens, and without an end nothing is left. Made for what is written piece by piece and
/// must not be held as a whole. Links and permissions are those of a new file; what must keep them is written
/// by `FileSystem::WriteInPlace`.
class KTQDDE_EXPORT ReplacedFile
{
public:
    /// Makes ready to write for `path`. What stands there and is no regular file (a device) is written
    /// directly. Raises `FileError` when `path` cannot be written.
    explicit ReplacedFile(const CString& path);
    /// Removes what has been written, unless `Commit` went well.
    ~ReplacedFile();
    ReplacedFile(const ReplacedFile&) = delete;
    ReplacedFile& operator=(const ReplacedFile&) = delete;

    /// Adds `bytes`. Raises `FileError`.
    void Write(const QByteArray& bytes);
    /// Hands all to the disk and puts the new file in the place of the old one. Raises `FileError`; the old
    /// one then stands. Once only, and nothing is written afterwards.
    void Commit();

private:
    void Flush();

    CString m_path;
    CString m_part; ///< empty when `m_path` is written directly
    std::unique_ptr<OutputFile> m_file;
    QByteArray m_buffer;
    qint64 m_written = 0;
};

} // namespace platform
