#pragma once

#include "embedded/data/engine/Database.h"
#include "embedded/data/office/PublishedConfigurations.h"

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
/// first needed. Several programs may use it at once. Raises `Error`.
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

    /// The published version from which the project's file of a configuration was made; 0 when there is none.
    int Base(const CString& configuration);
    void RememberBase(const CString& configuration, int version);

    CArray<WaitingPublication> Waiting();
    /// Takes the place of what waits already for the same configuration: it is the newer state of the file.
    void Wait(const Publication& publication);
    void Forget(const WaitingPublication& waiting);

private:
    Database m_database;
};

} // namespace embedded
