#include "support/FaultyFileSystem.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// A real output file with faults.
class FaultyFile : public platform::OutputFile
{
public:
    FaultyFile(std::unique_ptr<platform::OutputFile> file, CString path, std::set<Fault> faults,
               qint64 writable)
        : m_file(std::move(file)), m_path(std::move(path)), m_faults(std::move(faults)), m_writable(writable)
    {
    }

    qint64 Size() const override { return m_file->Size(); }

    void Reserve(qint64 size) override
    {
        Check(Fault::NoRoom, u"no room"_s);
        m_file->Reserve(size);
    }

    void Write(const QByteArray& bytes) override
    {
        if (!m_faults.contains(Fault::Write)) return m_file->Write(bytes);
        const QByteArray taken = bytes.first(qMin(m_writable, bytes.size()));
        m_file->Write(taken);
        m_writable -= taken.size();
        if (taken.size() < bytes.size()) throw platform::FileError(m_path, u"write error"_s);
    }

    void SeekToEnd() override { m_file->SeekToEnd(); }

    void Resize(qint64 size) override
    {
        Check(Fault::Resize, u"cannot change the length"_s);
        m_file->Resize(size);
    }

    void Sync() override
    {
        Check(Fault::Sync, u"cannot sync"_s);
        m_file->Sync();
    }

private:
    void Check(Fault fault, const CString& reason) const
    {
        if (m_faults.contains(fault)) throw platform::FileError(m_path, reason);
    }

    std::unique_ptr<platform::OutputFile> m_file;
    CString m_path;
    std::set<Fault> m_faults;
    qint64 m_writable;
};

} // namespace

FaultyFileSystem::FaultyFileSystem()
    : platform::FileSystemProxy(platform::RealFileSystem()), m_installed(*this)
{
}

void FaultyFileSystem::FailAfter(qint64 bytes)
{
    Inject(Fault::Write);
    m_writable = bytes;
}

void FaultyFileSystem::Heal()
{
    m_faults.clear();
    m_onlyAt.reset();
}

std::optional<QByteArray> FaultyFileSystem::Read(const CString& path, CString* reason)
{
    if (!Has(Fault::RefuseRead)) return Target().Read(path, reason);
    if (reason != nullptr) *reason = u"read refused"_s;
    return std::nullopt;
}

std::optional<QByteArray> FaultyFileSystem::ReadHead(const CString& path, qint64 length)
{
    return Has(Fault::RefuseRead) ? std::nullopt : Target().ReadHead(path, length);
}

std::unique_ptr<platform::InputFile> FaultyFileSystem::OpenForReading(const CString& path)
{
    if (Has(Fault::RefuseRead)) throw platform::FileError(path, u"read refused"_s);
    return Target().OpenForReading(path);
}

std::unique_ptr<platform::OutputFile> FaultyFileSystem::OpenForWriting(const CString& path)
{
    const int writePoint = m_writePoints++;
    if (m_onlyAt.value_or(writePoint) != writePoint) return Target().OpenForWriting(path);
    if (Has(Fault::RefuseOpen)) throw platform::FileError(path, u"open refused"_s);
    return std::make_unique<FaultyFile>(Target().OpenForWriting(path), path, m_faults, m_writable);
}

bool FaultyFileSystem::Remove(const CString& path)
{
    return !Has(Fault::RefuseRemove) && Target().Remove(path);
}

bool FaultyFileSystem::CreateFolder(const CString& path)
{
    return !Has(Fault::RefuseCreateFolder) && Target().CreateFolder(path);
}

} // namespace test
