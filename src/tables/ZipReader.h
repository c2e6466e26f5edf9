#pragma once

#include "platform/Files.h"
#include "platform/Text.h"

#include <memory>

namespace tables {

/// An archive whose parts are read one at a time, each piece by piece. What goes wrong raises `TableError`
/// with the path of the archive.
class ZipReader
{
public:
    /// Raises `TableError` when the file is no archive.
    ZipReader(std::unique_ptr<platform::InputFile> file, const CString& path);
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    const CString& Path() const noexcept { return m_path; }

    /// Whether the archive has such a part; letter case does not count.
    bool Has(const CString& part);
    /// Starts the reading of a part and ends that of the one before. Raises `TableError` when it is missing,
    /// encrypted or packed in an unknown way.
    void Open(const CString& part);
    /// Reads up to `length` bytes of the opened part; 0 at its end, when its checksum has been found right.
    /// Raises `TableError` for damage.
    qsizetype Read(char* to, qsizetype length);
    /// How much of the opened part has been read, from 0 to 1.
    double Progress() const;

private:
    struct Source;

    bool Find(const CString& part);
    [[noreturn]] void FailPart(const CString& reason) const;

    CString m_path;
    std::unique_ptr<Source> m_source;
    void* m_zip = nullptr;
    CString m_part;
    bool m_isOpen = false;
    qint64 m_size = 0;
    qint64 m_read = 0;
};

} // namespace tables
