#pragma once

#include "embedded/OfficeDatabase.h"
#include "embedded/TestProject.h"
#include "embedded/data/office/Office.h"

#include <gtest/gtest.h>

namespace test {

/// What makes a project one of the office that a service leads to.
inline embedded::ProjectOptions On(const CString& service)
{
    embedded::ProjectOptions options;
    options.office = service;
    return options;
}

/// The server of the program is down while one lives.
class ServerDown
{
public:
    ServerDown() { SharedServer().Stop(); }
    ~ServerDown() { SharedServer().StartAgain(); }
    ServerDown(const ServerDown&) = delete;
    ServerDown& operator=(const ServerDown&) = delete;
};

/// A new office and a project of it, both in the hands of the office's administrator.
class OfficeFixture : public ::testing::Test
{
protected:
    OfficeFixture()
    {
        embedded::Office::Create(Administrator());
        m_project.Create(On(Administrator()));
    }

    static CString Administrator() { return OfficeDatabase::Administrator(); }
    /// Runs statements on the office.
    QString Ask(const QString& sql) const
    {
        return m_database.Ask(QStringLiteral("SET search_path TO ktqdde; ") + sql);
    }
    /// Gives the office another bill library, without items.
    void AddLibrary(const QString& code) const
    {
        Ask(QStringLiteral("INSERT INTO libraries (code, role, file_name, local, year, code_length, "
                           "suffix_length, items, bill_library) "
                           "VALUES ('%1', 'qd', '名', '', '', 9, 3, '', '')")
                .arg(code));
    }
    /// Whether a host offers a bill library.
    static bool Offers(const embedded::EmbeddedHost& host, const CString& code)
    {
        for (const embedded::LibraryName& library : host.LibrariesOf(embedded::LibraryRole::Bill))
            if (library.code == code) return true;
        return false;
    }

    OfficeDatabase m_database;
    TestProject m_project;
};

} // namespace test
