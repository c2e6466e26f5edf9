#pragma once

#include "embedded/data/engine/Database.h"
#include "embedded/data/office/PublishedConfigurations.h"

#include <functional>
#include <optional>

namespace embedded {

/// What waits to be published until the office can be reached again.
struct WaitingPublication
{
    qint64 id = 0; ///< in the order of waiting
    QDateTime since;
    Publication publication;
};

/// What a project remembers of its office: the file "office.db" in the application folder, made when it is
/// first needed. Several programs may use it at once. One that an older program has made is brought up to
/// date when it is opened, or stays what it is where it cannot be written: it is read all the same then, and
/// whatever has to be remembered raises `ReadOnlyError`. Raises `Error`.
class OfficeMemory
{
public:
    /// `path` is the path text of the file.
    explicit OfficeMemory(const CString& path);

    /// The revision of the office's catalogue that the local copy was last found to hold as the office did,
    /// and when that was; nothing before the first time. The copy itself knows better which one it holds: see
    /// `StateOfCopy`.
    struct Seen
    {
        qint64 revision = 0;
        QDateTime at; ///< UTC
    };
    std::optional<Seen> LastSeen();
    void RememberSeen(qint64 revision, const QDateTime& at);

    /// The published version from which the project's file of a configuration was made. Without a digest
    /// where an older program has remembered it.
    VersionMark Base(const CString& configuration);
    /// What was sent before is settled then.
    void RememberBase(const CString& configuration, const VersionMark& version);

    /// The digests of the contents that were sent to be published and not answered yet: by a program that
    /// waits for the answer, or one that has ended without it. They may be published.
    CArray<QByteArray> Sent(const CString& configuration);
    void RememberSent(const CString& configuration, const QByteArray& digest);
    void ForgetSent(const CString& configuration, const QByteArray& digest);

    CArray<WaitingPublication> Waiting();
    /// Takes the place of what waits already for the same configuration: it is the newer state of the file.
    void Wait(const Publication& publication);
    /// Gives what waits the contents of a newer state of the file. Nothing happens when it waits no more.
    void Renew(const WaitingPublication& waiting, const Publication& publication);
    void Forget(const WaitingPublication& waiting);

private:
    void EnsureWritten();
    bool IsFormer();
    void Write(const std::function<void()>& statements);

    Database m_database;
};

} // namespace embedded
