#include "platform/ReplacedFile.h"

#include <QtCore/QRandomGenerator>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// How much is gathered before it is written.
constexpr qsizetype BufferSize = qsizetype{1} << 20;

} // namespace

CString PartBeside(const CString& path)
{
    return path + u".%1.part"_s.arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
}

ReplacedFile::ReplacedFile(const CString& path, FileSystem& files)
    : m_files(files), m_target(files.ThroughLinks(path)), m_kind(files.KindOf(m_target))
{
    const bool isStream = m_kind == FileKind::Other || m_kind == FileKind::Folder;
    if (isStream)
        m_file = m_files.OpenForWriting(m_target);
    else
        OpenBeside();
}

ReplacedFile::~ReplacedFile()
{
    m_file.reset(); // some platforms remove no open file
    if (!m_part.isEmpty()) m_files.Remove(m_part);
}

void ReplacedFile::OpenBeside()
{
    // Write protection is of the file; its folder would let it be replaced.
    if (m_kind == FileKind::File) m_files.OpenForWriting(m_target);
    const CString part = PartBeside(m_target);
    try {
        m_file = m_files.OpenForWriting(part);
        m_part = part;
    } catch (const FileError&) {
        if (m_kind == FileKind::Missing) throw; // where nothing can be made, the file cannot be made either
        // All is held, then, and written in place.
    }
}

void ReplacedFile::Write(const QByteArray& bytes)
{
    m_buffer += bytes;
    if (m_file && m_buffer.size() >= BufferSize) Flush();
}

void ReplacedFile::Flush()
{
    const qint64 size = m_written + m_buffer.size();
    if (!m_part.isEmpty()) m_file->Reserve(size);
    m_file->Write(m_buffer);
    m_written = size;
    m_buffer.resize(0);
}

void ReplacedFile::Commit()
{
    if (!m_file) return m_files.WriteInPlace(m_target, m_buffer);
    Flush();
    if (!m_part.isEmpty()) m_file->Resize(m_written);
    m_file->Sync();
    m_file.reset();
    if (!m_part.isEmpty()) TakePlace();
}

void ReplacedFile::TakePlace()
{
    if (m_kind == FileKind::Missing) {
        if (!m_files.Rename(m_part, m_target)) throw FileError(m_target, u"文件不能替换"_s);
    } else if (!m_files.MoveOver(m_part, m_target)) {
        CString reason;
        const std::optional<QByteArray> bytes = m_files.Read(m_part, &reason);
        if (!bytes) throw FileError(m_part, reason);
        m_files.WriteInPlace(m_target, *bytes);
        return; // the destructor removes what stands beside it
    }
    m_part.clear();
}

} // namespace platform
