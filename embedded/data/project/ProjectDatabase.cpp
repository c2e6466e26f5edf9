#include "embedded/data/project/ProjectDatabase.h"

#include "embedded/data/catalogue/Library.h"
#include "embedded/data/catalogue/ShippedLibraries.h"
#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Schema.h"

#include <QtCore/QUuid>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// The tables of both are the same. A program that knows the first only would take the copy of an office's
/// catalogue for the project's own and change it.
enum SchemaVersion { WithoutOffice = 1, WithOffice = 2 };

const CString ModeSetting = u"mode"_s;
const CString SpecSetting = u"specialty"_s;
const CString HistorySetting = u"history_library"_s;
const CString OfficeSetting = u"office"_s;
const CString IdSetting = u"id"_s;

CString NewId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

/// The bill library from which the shipped history comes.
CString ShippedHistoryLibrary()
{
    return RequireLibrary(AllShippedLibraries(), LibraryRole::Bill, {}).name.code;
}

CString LibrarySetting(LibraryRole role)
{
    return u"library_"_s + RoleWord(role);
}

CString ModeText(SQdDeInfo::EQdDeMode mode)
{
    return CString::number(static_cast<int>(mode));
}

} // namespace

CString ProjectDatabase::Settings::Library(LibraryRole role) const
{
    const auto code = libraries.find(role);
    return code == libraries.end() ? CString() : code->second;
}

ProjectDatabase::ProjectDatabase(const CString& path) : m_database(path)
{
    if (m_database.SchemaVersion() != WithoutOffice) RequireSchema(m_database, WithOffice);
}

void ProjectDatabase::Fill(Database& database, const Settings& settings)
{
    database.ExecuteScript(CString::fromUtf8(ShippedFile(u"project.sql"_s)));
    QList<CStringArray> rows{{ModeSetting, ModeText(settings.mode)}, {SpecSetting, settings.spec}};
    for (const auto& [role, code] : settings.libraries)
        rows.append({LibrarySetting(role), code});
    rows.append({HistorySetting, ShippedHistoryLibrary()});
    if (!settings.office.isEmpty()) rows += {{OfficeSetting, settings.office}, {IdSetting, NewId()}};
    database.Insert(u"settings"_s, {u"name"_s, u"value"_s}, rows);
    ImportShipped(database, u"history"_s);
    database.SetSchemaVersion(settings.office.isEmpty() ? WithoutOffice : WithOffice);
}

ProjectDatabase::Settings ProjectDatabase::ReadSettings()
{
    QHash<CString, CString> values;
    m_database.ForEach(u"SELECT name, value FROM settings"_s, {}, [&](const QSqlQuery& row) {
        values.insert(row.value(0).toString(), row.value(1).toString());
    });
    Settings settings;
    settings.spec = values.value(SpecSetting);
    settings.office = values.value(OfficeSetting);
    for (const LibraryRole role : AllLibraryRoles) {
        const CString code = values.value(LibrarySetting(role));
        if (!code.isEmpty()) settings.libraries.emplace(role, code);
    }
    const CString mode = values.value(ModeSetting);
    if (mode == ModeText(SQdDeInfo::QuotaMode))
        settings.mode = SQdDeInfo::QuotaMode;
    else if (mode != ModeText(SQdDeInfo::BillMode))
        m_database.Fail(u"工程的模式“%1”无法识别"_s.arg(mode));
    return settings;
}

void ProjectDatabase::WriteMode(SQdDeInfo::EQdDeMode mode)
{
    Write(ModeSetting, ModeText(mode));
}

void ProjectDatabase::WriteSpec(const CString& name)
{
    Write(SpecSetting, name);
}

void ProjectDatabase::WriteLibrary(LibraryRole role, const CString& code)
{
    Write(LibrarySetting(role), code);
}

void ProjectDatabase::Write(const CString& name, const CString& value)
{
    Transaction transaction(m_database);
    m_database.Execute(u"INSERT INTO settings (name, value) VALUES (?, ?) "
                       "ON CONFLICT (name) DO UPDATE SET value = excluded.value"_s,
                       {name, value});
    transaction.Commit();
}

CString ProjectDatabase::Id()
{
    const auto read = [this] {
        return m_database.Single(u"SELECT value FROM settings WHERE name = ?"_s, {IdSetting}).toString();
    };
    CString id = read();
    if (!id.isEmpty()) return id;
    Transaction transaction(m_database);
    // Another program may have been faster.
    m_database.Execute(u"INSERT INTO settings (name, value) VALUES (?, ?) ON CONFLICT DO NOTHING"_s,
                       {IdSetting, NewId()});
    transaction.Commit();
    return read();
}

CString ProjectDatabase::HistoryLibrary()
{
    CString code;
    m_database.ForEach(u"SELECT value FROM settings WHERE name = ?"_s, {HistorySetting},
                       [&](const QSqlQuery& row) { code = row.value(0).toString(); });
    return code.isEmpty() ? ShippedHistoryLibrary() : code;
}

CArray<SQdInfo> ProjectDatabase::History(const CString& baseNumber, const CString& billLibrary)
{
    CArray<SQdInfo> items;
    if (billLibrary != HistoryLibrary()) return items;
    m_database.ForEach(u"SELECT number, name, unit, unit_code, with_annex, cal_rule FROM history "
                       "WHERE base_number = ? ORDER BY rowid"_s,
                       {baseNumber}, [&](const QSqlQuery& row) {
                           SQdInfo item;
                           item.strNumber = row.value(0).toString();
                           item.strName = row.value(1).toString();
                           item.strUnit = row.value(2).toString();
                           item.nUnitCode = row.value(3).toInt();
                           item.nWithAnnex = row.value(4).toInt();
                           item.strCalRule = row.value(5).toString();
                           items.append(item);
                       });
    return items;
}

} // namespace embedded
