#include "embedded/data/history/KeepingFiles.h"

#include <QtCore/QScopedValueRollback>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

/// Tells when the writing of a file breaks off.
class KeepingFiles::Output : public platform::OutputFile
{
public:
    Output(std::unique_ptr<platform::OutputFile> file, CString path, CString& torn)
        : m_file(std::move(file)), m_path(std::move(path)), m_torn(torn)
    {
    }

    qint64 Size() const override { return m_file->Size(); }
    void Reserve(qint64 size) override
    {
        // A file that has just been made is taken away again.
        if (Size() > 0) return m_file->Reserve(size);
        Watch([&] { m_file->Reserve(size); });
    }
    void Write(const QByteArray& bytes) override
    {
        Watch([&] { m_file->Write(bytes); });
    }
    void SeekToEnd() override
    {
        Watch([&] { m_file->SeekToEnd(); });
    }
    void Resize(qint64 size) override
    {
        Watch([&] { m_file->Resize(size); });
    }
    void Sync() override
    {
        Watch([&] { m_file->Sync(); });
    }

private:
    template <typename Step>
    void Watch(Step step)
    {
        try {
            step();
        } catch (...) {
            m_torn = m_path;
            throw;
        }
    }

    std::unique_ptr<platform::OutputFile> m_file;
    CString m_path;
    CString& m_torn;
};

KeepingFiles::KeepingFiles(History history, IsRuleFile isRuleFile, MayGoOn mayGoOn)
    : FileSystemProxy(platform::Files()), m_history(std::move(history)), m_isRuleFile(std::move(isRuleFile)),
      m_mayGoOn(std::move(mayGoOn)), m_installed(*this)
{
}

KeepingFiles::~KeepingFiles() = default;

std::unique_ptr<platform::OutputFile> KeepingFiles::OpenForWriting(const CString& path)
{
    BeforeChange(path);
    return std::make_unique<Output>(Target().OpenForWriting(path), path, m_torn);
}

bool KeepingFiles::Remove(const CString& path)
{
    try {
        BeforeChange(path);
    } catch (const platform::FileError&) {
        return false;
    }
    return Target().Remove(path);
}

void KeepingFiles::BeforeChange(const CString& path)
{
    const bool isTorn = std::exchange(m_torn, CString()) == path && !path.isEmpty();
    if (!m_keeping && !isTorn && m_isRuleFile(path)) Keep(path);
}

void KeepingFiles::Keep(const CString& path)
{
    const QScopedValueRollback<bool> keeping(m_keeping, true);
    try {
        m_history.Keep(path);
    } catch (const Error& error) {
        m_goesOn = m_goesOn || m_mayGoOn(error);
        if (!m_goesOn) throw platform::FileError(path, error.Message());
    }
}

} // namespace embedded
