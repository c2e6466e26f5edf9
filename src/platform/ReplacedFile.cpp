#include "platform/ReplacedFile.h"

#include "platform/Paths.h"

#include <QtCore/QCoreApplication>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// How much is gathered before it is written.
constexpr qsizetype BufferSize = qsizetype{1} << 20;

/// Whether what stands at `path` is a file: no folder, pipe or device.
bool IsFile(const CString& path)
{
    const CString name = FileNameOf(path);
    return Files().FindFiles(FolderOf(path), name).contains(name, Qt::CaseInsensitive);
}

CString Beside(const CString& path)
{
    return path + u'.' + CString::number(QCoreApplication::applicationPid());
}

/// Gives a file the place of the one at `path`, which keeps its name until the last moment and gets it back
/// if that fails.
void MoveOver(const CString& part, const CString& path)
{
    FileSystem& files = Files();
    const CString former = Beside(path) + u".old"_s;
    const bool stood = files.Rename(path, former);
    if (!files.Rename(part, path)) {
        if (stood) files.Rename(former, path);
        throw FileError(path, u"文件不能替换"_s);
    }
    if (stood) files.Remove(former);
}

} // namespace

ReplacedFile::ReplacedFile(const CString& path) : m_path(path)
{
    FileSystem& files = Files();
    const bool stands = files.Exists(path);
    if (stands && !IsFile(path)) {
        m_file = files.OpenForWriting(path);
        return;
    }
    // Write protection is of the file; its folder would let it be replaced.
    if (stands) files.OpenForWriting(path);
    m_part = Beside(path) + u".part"_s;
    m_file = files.OpenForWriting(m_part);
}

ReplacedFile::~ReplacedFile()
{
    if (m_part.isEmpty()) return;
    m_file.reset();
    Files().Remove(m_part);
}

void ReplacedFile::Write(const QByteArray& bytes)
{
    m_buffer += bytes;
    if (m_buffer.size() >= BufferSize) Flush();
}

void ReplacedFile::Flush()
{
    const qint64 size = m_written + m_buffer.size();
    m_file->Reserve(size);
    m_file->Write(m_buffer);
    m_written = size;
    m_buffer.resize(0);
}

void ReplacedFile::Commit()
{
    Flush();
    m_file->Resize(m_written);
    m_file->Sync();
    m_file.reset();
    if (m_part.isEmpty()) return;
    MoveOver(m_part, m_path);
    m_part.clear();
}

} // namespace platform
