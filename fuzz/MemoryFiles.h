#pragma once

#include "platform/Files.h"

#include <map>
#include <memory>

namespace fuzz {

/// Files that live in memory: a fuzzer that touched the disk for every input would mostly wait for it.
class MemoryFiles : public platform::FileSystem
{
public:
    bool Exists(const CString& path) override;
    platform::FileKind KindOf(const CString& path) override;
    CString ThroughLinks(const CString& path) override { return path; }
    std::optional<QByteArray> Read(const CString& path, CString* reason) override;
    std::optional<QByteArray> ReadHead(const CString& path, qint64 length) override;
    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString& path) override;
    bool Remove(const CString& path) override;
    bool CreateFolder(const CString& path) override;
    CStringArray FindFiles(const CString& folder, const CString& extension) override;
    CStringArray FindFolders(const CString& folder) override;
    bool Rename(const CString& from, const CString& to) override;
    bool MoveOver(const CString& from, const CString& to) override;

    void Put(const CString& path, const QByteArray& bytes);
    QByteArray Get(const CString& path) const;
    void Clear() { m_files.clear(); }

private:
    std::map<CString, std::shared_ptr<QByteArray>> m_files;
};

} // namespace fuzz
