#pragma once

#include "embedded/data/engine/Database.h"
#include "embedded/data/engine/Progress.h"
#include "embedded/data/office/OfficeSchema.h"

#include <optional>

namespace embedded {

/// What the connected user may do in an office, each including what stands before it.
enum class OfficeRight {
    None,
    Reader, ///< sees everything
    Editor, ///< publishes new versions of configurations, takes bill numbers
    Keeper, ///< imports libraries, creates and removes configurations
};

/// The right in one word for a person: "无", "读者", "编辑", "管理员".
CString RightWord(OfficeRight right);

/// What an office says first.
struct OfficeAnswer
{
    OfficeRight right = OfficeRight::None; ///< of the connected user
    qint64 revision = 0;                   ///< see `Office::CatalogueRevision`
};

/// An office in words and numbers.
struct OfficeStatus
{
    CString name;   ///< of the service
    CString server; ///< "HOST:PORT/DATABASE"; "本机/DATABASE" for a socket
    CString user;   ///< of the connection
    OfficeRight right = OfficeRight::None;
    bool isEncrypted = false;
    int schema = 0;      ///< 0 where no office has been created
    int knownSchema = 0; ///< the one of this program
    /// What is in it; nothing where that was not looked at: the user may not, or a newer program keeps it
    /// elsewhere.
    struct Contents
    {
        qint64 revision = 0; ///< grows with every change of the catalogue
        int configurations = 0;
        int libraries = 0;
    };
    std::optional<Contents> contents;
};

/// One office: a PostgreSQL database that holds the catalogue, the libraries and their guides, the
/// calculation items, the bill numbers that its projects have taken, and the published configurations with
/// all their versions. Its name is the one of a service (see `Service`).
///
/// Who may do what is the matter of the server: an office has three roles, named DATABASE_reader,
/// DATABASE_editor and DATABASE_keeper, each a member of the one before it, with grants on the tables and on
/// the few functions through which versions and numbers come in. An administrator grants them to people.
class Office
{
public:
    /// The schema version of this program.
    static constexpr int SchemaVersion = OfficeSchemaVersion;

    /// Connects. Raises `UnreachableError`, `RightsError` for a user without any of the roles, and `Error`
    /// where no office has been created, or by a newer program.
    explicit Office(const CString& name);
    ~Office();
    Office(const Office&) = delete;
    Office& operator=(const Office&) = delete;

    const CString& Name() const noexcept { return m_name; }

    /// Creates the office in the service's database, filled with what this program ships, and its roles, in
    /// one transaction. The connected user owns it and is made a keeper; needs the right to create schemas in
    /// the database and to create roles. Raises `Error` when one stands there already, `RightsError`,
    /// `UnreachableError`, and `Cancelled`; nothing has changed then.
    static void Create(const CString& name, const Progress& progress = {});
    /// Brings an office of an older program to this program's schema, in one transaction. Gives the version
    /// that it had. Raises as `Create`, and `Error` for one of a newer program.
    static int Upgrade(const CString& name);
    /// Looks without needing an office there. Raises `UnreachableError`.
    static OfficeStatus Status(const CString& name);

    /// What the office said when this connected.
    const OfficeAnswer& First() const noexcept { return m_first; }

    OfficeRight Right();
    CString User();
    /// Grows with every change of the catalogue; another number means that it is another one.
    qint64 CatalogueRevision();

    /// The open connection, for the catalogue's tables.
    Database& Connection() noexcept { return m_database; }

private:
    OfficeAnswer AskFirst();

    CString m_name;
    Database m_database;
    OfficeAnswer m_first;
};

} // namespace embedded
