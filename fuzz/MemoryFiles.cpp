#include "fuzz/MemoryFiles.h"

using namespace Qt::StringLiterals;

namespace fuzz {

namespace {

class MemoryOutput : public platform::OutputFile
{
public:
    explicit MemoryOutput(std::shared_ptr<QByteArray> bytes) : m_bytes(std::move(bytes)) {}
    qint64 Size() const override { return m_bytes->size(); }
    void Reserve(qint64 /*size*/) override {}
    void Write(const QByteArray& bytes) override
    {
        if (m_bytes->size() < m_position + bytes.size()) m_bytes->resize(m_position + bytes.size());
        m_bytes->replace(m_position, bytes.size(), bytes);
        m_position += bytes.size();
    }
    void SeekToEnd() override { m_position = m_bytes->size(); }
    void Resize(qint64 size) override { m_bytes->resize(size); }
    void Sync() override {}

private:
    std::shared_ptr<QByteArray> m_bytes;
    qsizetype m_position = 0;
};

} // namespace

bool MemoryFiles::Exists(const CString& path)
{
    return m_files.contains(path);
}

platform::FileKind MemoryFiles::KindOf(const CString& path)
{
    return Exists(path) ? platform::FileKind::File : platform::FileKind::Missing;
}

std::optional<QByteArray> MemoryFiles::Read(const CString& path, CString* reason)
{
    const auto found = m_files.find(path);
    if (found != m_files.end()) return *found->second;
    if (reason != nullptr) *reason = u"no such file"_s;
    return std::nullopt;
}

std::optional<QByteArray> MemoryFiles::ReadHead(const CString& path, qint64 length)
{
    const auto all = Read(path, nullptr);
    return all ? std::optional(all->left(length)) : std::nullopt;
}

std::unique_ptr<platform::OutputFile> MemoryFiles::OpenForWriting(const CString& path)
{
    auto& bytes = m_files[path];
    if (!bytes) bytes = std::make_shared<QByteArray>();
    return std::make_unique<MemoryOutput>(bytes);
}

bool MemoryFiles::Remove(const CString& path)
{
    return m_files.erase(path) != 0;
}
bool MemoryFiles::CreateFolder(const CString& /*path*/)
{
    return true;
}
CStringArray MemoryFiles::FindFiles(const CString& /*folder*/, const CString& /*extension*/)
{
    return {};
}
CStringArray MemoryFiles::FindFolders(const CString& /*folder*/)
{
    return {};
}
bool MemoryFiles::Rename(const CString& from, const CString& to)
{
    if (!m_files.contains(from) || m_files.contains(to)) return false;
    auto file = m_files.extract(from);
    file.key() = to;
    m_files.insert(std::move(file));
    return true;
}
bool MemoryFiles::MoveOver(const CString& from, const CString& to)
{
    return m_files.contains(from) && m_files.contains(to) && from != to && Remove(to) && Rename(from, to);
}

void MemoryFiles::Put(const CString& path, const QByteArray& bytes)
{
    m_files[path] = std::make_shared<QByteArray>(bytes);
}

QByteArray MemoryFiles::Get(const CString& path) const
{
    const auto found = m_files.find(path);
    return found == m_files.end() ? QByteArray() : *found->second;
}

} // namespace fuzz
