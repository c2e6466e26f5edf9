#pragma once

#include <QtCore/QByteArray>

#include <memory>

namespace tables {

/// Makes an archive, one part after the other, of which nothing needs to be held: what has been packed can be
/// taken at any time, and what is known of a part at its end only stands behind it. Equal parts give equal
/// bytes. Raises `std::bad_alloc` when memory is short, and `std::length_error` when the archive gets larger
/// than its plain kind can be, 4 GiB.
class ZipWriter
{
public:
    ZipWriter();
    ~ZipWriter();
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    /// Starts a part and ends the one before.
    void Begin(const char* part);
    void Write(const QByteArray& bytes);
    /// The bytes of the archive that have come since the last call. They follow those taken before.
    QByteArray Take();
    /// Ends the archive and gives the bytes that have not been taken. Once only, and nothing is written
    /// afterwards.
    QByteArray Finish();

private:
    struct Packer;

    void EndPart();

    std::unique_ptr<Packer> m_packer;
};

} // namespace tables
