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

    /// What tells the project from all others on an office: made with it there, or when it is first asked
    /// for. It goes with the folder, be that moved, renamed or carried to another machine. A copy of the
    /// folder is the same project to the office. That loses nothing, for versions are compared by what they
    /// hold; but two copies that are worked on without the server may give one bill number to different
    /// items, and that is then no collision between projects but a finding of the check, as within one file.
    /// Raises `Error`.
    CString Id();

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
