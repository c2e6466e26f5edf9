#pragma once

#include <QtCore/QByteArray>

#include <memory>

namespace tables {

/// Makes an archive in memory, one part after the other; equal parts give equal bytes. Raises
/// `std::bad_alloc` when memory is short.
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
    /// Ends the archive and gives its bytes. Once only, and nothing is written afterwards.
    QByteArray Finish();

private:
    struct Target;

    void EndPart();

    std::unique_ptr<Target> m_target;
    void* m_zip = nullptr;
    bool m_isOpen = false;
};

} // namespace tables
