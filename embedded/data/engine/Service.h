#pragma once

#include "platform/Text.h"

namespace embedded {

/// A named connection to a PostgreSQL server: an entry of the connection service file of the engine's own
/// client library ("pg_service.conf"), which also knows where passwords are kept (".pgpass"). Only what is
/// needed to choose and to name a connection is read here; a password that stands in the file is not.
///
/// The file is the one of the environment variable PGSERVICEFILE, else the user's (".pg_service.conf" in the
/// home folder; on Windows "postgresql\.pg_service.conf" in the folder of application data), then
/// "pg_service.conf" in the folder that PGSYSCONFDIR names.
struct Service
{
    CString name;
    CString host; ///< a host, an address, or the folder of a socket; empty for the client library's default
    CString address;  ///< where the host is reached, if the entry says so; goes before the name of the host
    CString port;     ///< empty for the client library's default
    CString database; ///< empty for the client library's default
    CString user;     ///< empty for the client library's default
    CString sslMode;  ///< empty for the client library's default
    /// The seconds after which an attempt to connect is given up, each address of the host by itself; 0 when
    /// the entry says nothing of it, or nothing that is a number above 0.
    int connectTimeout = 0;
    bool isRead = false; ///< whether the entry was found, or no more than its name is known

    /// Whether the server is known to be on this machine, so that nobody can listen on the way: a socket, or
    /// an address that loops back.
    bool IsLocal() const;

    /// Why a text cannot name a service, as a sentence without final mark; empty when it can.
    static CString NameFault(const CString& name);
};

/// All entries of the service files, in their order. A file that cannot be read gives none.
CArray<Service> ReadServices();

/// The entry of a name. One that no file has is a name alone; the client library may still know it.
Service ServiceOf(const CString& name);

} // namespace embedded
