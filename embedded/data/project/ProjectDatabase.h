#pragma once

#include "embedded/data/catalogue/LibraryName.h"
#include "embedded/data/engine/Database.h"
#include "host/Records.h"

#include <map>

namespace embedded {

/// What a project remembers: its settings and the bill items with which it started. Holds one open
/// connection.
class ProjectDatabase
{
public:
    /// What a project is set to.
    struct Settings
    {
        SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode;
        CString spec; ///< name of the current specialty
        /// Codes of the libraries in use. A role that is missing has the first library of the catalogue, for
        /// projects of older programs hold none.
        std::map<LibraryRole, CString> libraries{};
        /// Name of the office whose catalogue the project reads; empty for a project with one of its own.
        CString office{};

        /// The code of a role; empty when it is missing.
        CString Library(LibraryRole role) const;
    };

    /// Opens an existing project file. Raises `Error` when it is damaged, locked, newer or no project.
    explicit ProjectDatabase(const CString& path);

    /// Fills an empty database with a new project: these settings and the shipped history. To be called in a
    /// transaction. Programs that know no office refuse a project that has one.
    static void Fill(Database& database, const Settings& settings);

    /// The stored settings. Raises `Error` when they are missing or make no sense.
    Settings ReadSettings();
    /// Store one setting. Raise `Error`; the old value then stays.
    void WriteMode(SQdDeInfo::EQdDeMode mode);
    void WriteSpec(const CString& name);
    void WriteLibrary(LibraryRole role, const CString& code);

    /// The bill items of a base number with which the project started; none for another bill library than the
    /// one from which they come, where the number means something else. Raises `Error`.
    CArray<SQdInfo> History(const CString& baseNumber, const CString& billLibrary);

private:
    /// The bill library of the items with which the project started; projects of older programs store none.
    CString HistoryLibrary();
    void Write(const CString& name, const CString& value);

    Database m_database;
};

} // namespace embedded
