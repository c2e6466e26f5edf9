#pragma once

#include "platform/Export.h"
#include "platform/Files.h"

#include <memory>

namespace platform {

/// The path of a file to be written beside `path` before it gets that name: behind it come a full stop, a
/// word by chance, so that no two writers on whatever machines have one file, and ".part".
KTQDDE_EXPORT CString PartBeside(const CString& path);

/// A file that is written anew beside the one whose place it takes at the end: until then the old one stands
/// whole, whatever happens, and without an end nothing is left. Made for what is written piece by piece and
/// must not be held as a whole. Links, owner and permissions of the old one stay: where a file of its own
/// would lose something of it, or none can be made beside it, the old one is written in place at the end.
class KTQDDE_EXPORT ReplacedFile
{
public:
    /// Makes ready to write for `path`. A device or a pipe is written as the bytes come. Raises `FileError`
    /// when `path` cannot be written. `files` outlives this.
    explicit ReplacedFile(const CString& path, FileSystem& files = Files());
    /// Removes what has been written, unless `Commit` went well.
    ~ReplacedFile();
    ReplacedFile(const ReplacedFile&) = delete;
    ReplacedFile& operator=(const ReplacedFile&) = delete;

    /// Adds `bytes`. Raises `FileError`.
    void Write(const QByteArray& bytes);
    /// Hands all to the disk and puts it in the place of the old one. Raises `FileError`, with the old one as
    /// it was. Once only, and nothing is written afterwards.
    void Commit();

private:
    void OpenBeside();
    void Flush();
    void TakePlace();

    FileSystem& m_files;
    CString m_target;                   ///< where the links lead
    FileKind m_kind;                    ///< of what stands there
    CString m_part;                     ///< what is written beside it; empty when nothing is
    std::unique_ptr<OutputFile> m_file; ///< null while all is held until the end
    QByteArray m_buffer;
    qint64 m_written = 0;
};

} // namespace platform
