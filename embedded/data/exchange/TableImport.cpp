#include "embedded/data/exchange/TableImport.h"

#include "embedded/data/catalogue/CatalogueDatabase.h"
#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/catalogue/LibraryDatabase.h"
#include "embedded/data/exchange/MakeExchange.h"
#include "embedded/data/project/ProjectDatabase.h"
#include "embedded/data/project/ProjectFolder.h"
#include "embedded/data/sqlite/Error.h"
#include "platform/Encoding.h"
#include "platform/Files.h"
#include "platform/Paths.h"


#include <algorithm>
#include <map>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// How far the work is when all rows are checked, and when all are written; the rest is the last check.
constexpr int Checked = 50;
constexpr int Written = 95;
constexpr int Done = 100;
/// How far an export is when the table is read; it is `Written` when its text stands.
constexpr int Loaded = 40;

CString PathOf(const QString& nativeFile)
{
    if (nativeFile.isEmpty() || !platform::HasPathText(nativeFile))
        throw Error(nativeFile + u"：不能用作文件路径"_s);
    return platform::FromNative(nativeFile);
}

CArray<CsvRecord> ReadRecords(const QString& nativeFile)
{
    const CString path = PathOf(nativeFile);
    CString reason;
    const auto bytes = platform::Files().Read(path, &reason);
    if (!bytes) throw Error(platform::ToNative(path) + u"："_s + reason);
    const auto text = platform::Decode(*bytes, platform::GuessEncoding(*bytes));
    if (!text) throw Error(platform::ToNative(path) + u"：既不是 UTF-8 文本，也不是 GB18030 文本"_s);
    CArray<CsvRecord> records = ParseCsv(*text);
    if (records.isEmpty()) throw Error(platform::ToNative(path) + u"：是空文件，连表头也没有"_s);
    return records;
}

ProjectFolder ExistingProject(const QString& nativeProject)
{
    ProjectFolder folder(nativeProject);
    folder.RequireProject();
    return folder;
}

/// The library whose table a kind is: the named one, or that which the project uses.
LibraryScope ScopeOf(const CArray<Library>& libraries, const ProjectDatabase::Settings& settings,
                     TableKind kind, const CString& code)
{
    if (!IsOfALibrary(kind)) {
        if (!code.isEmpty()) throw Error(u"这种数据不属于某一个库，不能指定库“%1”"_s.arg(code));
        return {};
    }
    const bool isBill = kind == TableKind::Bill;
    if (code.isEmpty()) {
        const LibraryRole role = isBill ? LibraryRole::Bill : QuotaRole(settings.mode);
        return {libraries, RequireStoredLibrary(libraries, role, settings.Library(role))};
    }
    CArray<LibraryName> known;
    for (const Library& library : libraries) {
        if ((library.role == LibraryRole::Bill) != isBill) continue;
        if (library.name.code == code) return {libraries, library};
        known.append(library.name);
    }
    RefuseLibrary(code, isBill ? u"清单库"_s : u"定额库"_s, known);
}

/// One import between the opening of its transaction and the commit.
class Importer
{
public:
    Importer(Database& database, TableKind kind, const LibraryScope& scope, const Progress& progress)
        : m_database(database), m_exchange(MakeExchange(kind, scope)), m_meter(progress)
    {
        m_report.library = scope.library.name;
    }

    ImportReport& Report() noexcept { return m_report; }

    /// Whether no row was refused.
    bool Check(const CArray<CsvRecord>& records, bool replace)
    {
        m_report.rows = static_cast<int>(records.size()) - 1;
        try {
            m_exchange->Prepare(m_database);
            m_exchange->Load(m_database);
            const ImportHeader header(m_exchange->Columns(), records.first());
            if (replace) RefuseEmptying();
            m_exchange->Begin(replace);
            TakeRows(header, records);
            m_exchange->Finish(m_report);
        } catch (const RowRefused& refused) {
            m_report.refused.append({records.first().line, refused.Reason()});
        }
        std::stable_sort(
            m_report.refused.begin(), m_report.refused.end(),
            [](const RefusedRow& left, const RefusedRow& right) { return left.line < right.line; });
        return m_report.refused.isEmpty();
    }

    void Store()
    {
        qsizetype rows = 0;
        for (const KeyedTable* table : m_exchange->Tables())
            rows += table->RowsToStore();
        m_meter.Begin(Checked, Written, rows);
        for (const KeyedTable* table : m_exchange->Tables())
            table->Store(m_database, m_meter);
        m_meter.Begin(Written, Done, 0);
    }

private:
    /// A file without rows is rather one that was cut off than the wish to have an empty table.
    void RefuseEmptying() const
    {
        if (m_report.rows == 0 && !m_exchange->Rows().isEmpty())
            throw RowRefused(u"文件只有表头，没有数据行，不能用来代替整个表"_s);
    }

    void TakeRows(const ImportHeader& header, const CArray<CsvRecord>& records)
    {
        m_meter.Begin(0, Checked, records.size());
        for (qsizetype record = 1; record < records.size(); ++record) {
            m_meter.Step();
            try {
                m_exchange->Take(ImportRow(header, records[record]), m_report);
            } catch (const RowRefused& refused) {
                m_report.refused.append({records[record].line, refused.Reason()});
            }
        }
    }

    Database& m_database;
    std::unique_ptr<TableExchange> m_exchange;
    ImportMeter m_meter;
    ImportReport m_report;
};

/// Libraries by the role that they take.
using Roles = std::map<LibraryRole, CString>;

/// The libraries that a project uses must stay in their roles. Which library is the first of a role may have
/// changed: gives, for a project that has stored none, the one that it used.
Roles KeepLibrariesInUse(const CArray<Library>& before, const CArray<Library>& after,
                         const ProjectDatabase::Settings& settings, ImportReport& report)
{
    Roles toStore;
    for (const LibraryRole role : AllLibraryRoles) {
        const Library* const used = FindLibrary(before, role, settings.Library(role));
        if (used == nullptr) continue;
        const CString& code = used->name.code;
        if (FindLibrary(after, role, code) == nullptr) {
            report.refused.append(
                {0, u"工程正在使用%1“%2”，不能去掉，也不能改作别用"_s.arg(RoleLabel(role), code)});
        } else if (FindLibrary(after, role, settings.Library(role))->name.code != code) {
            toStore.emplace(role, code);
        }
    }
    return toStore;
}

/// Whether the project could still be opened on what the transaction holds, if it also stores `toStore`.
bool StaysUsable(ProjectDatabase& project, const CArray<Library>& before, Database& database,
                 ImportReport& report, Roles& toStore)
{
    const CatalogueData data = ReadCatalogue(database);
    const ProjectDatabase::Settings settings = project.ReadSettings();
    const bool isThere =
        std::any_of(data.specialties.begin(), data.specialties.end(),
                    [&](const Specialty& specialty) { return specialty.name == settings.spec; });
    if (!isThere) report.refused.append({0, u"文件中没有工程的当前专业“%1”"_s.arg(settings.spec)});
    toStore = KeepLibrariesInUse(before, ReadLibraries(database), settings, report);
    return report.refused.isEmpty();
}

/// The text of a table, and the library whose table it is.
struct Table
{
    CString text;
    LibraryName library;
};

Table ReadTable(const QString& nativeProject, TableKind kind, const CString& library,
                const Progress& progress)
{
    const ProjectFolder folder = ExistingProject(nativeProject);
    Database database(folder.CatalogueFile());
    EnsureCatalogue(database);
    const LibraryScope scope =
        ScopeOf(ReadLibraries(database), ProjectDatabase(folder.ProjectFile()).ReadSettings(), kind, library);
    const std::unique_ptr<TableExchange> exchange = MakeExchange(kind, scope);
    exchange->Load(database);
    CStringArray labels;
    for (const ImportColumn& column : exchange->Columns())
        labels.append(column.label);
    Table table{CsvLine(labels), scope.library.name};
    const QList<CStringArray> rows = exchange->Rows();
    ImportMeter meter(progress);
    meter.Begin(Loaded, Written, rows.size());
    for (const CStringArray& row : rows) {
        meter.Step();
        table.text += CsvLine(row);
    }
    return table;
}

/// A report of nothing done.
ImportReport Undone(const ImportReport& report)
{
    ImportReport undone;
    undone.rows = report.rows;
    undone.refused = report.refused;
    undone.library = report.library;
    return undone;
}

} // namespace

ImportReport Import(const QString& nativeProject, TableKind kind, const QString& nativeFile,
                    const ImportOptions& options, const Progress& progress)
{
    const ProjectFolder folder = ExistingProject(nativeProject);
    const CArray<CsvRecord> records = ReadRecords(nativeFile);
    Database database(folder.CatalogueFile());
    EnsureCatalogue(database);
    Transaction transaction(database);
    ProjectDatabase project(folder.ProjectFile());
    const CArray<Library> libraries = ReadLibraries(database);
    Importer importer(database, kind, ScopeOf(libraries, project.ReadSettings(), kind, options.library),
                      progress);
    Roles toStore;
    try {
        if (!importer.Check(records, options.replace)) return Undone(importer.Report());
        importer.Store();
        if (!StaysUsable(project, libraries, database, importer.Report(), toStore))
            return Undone(importer.Report());
    } catch (const Cancelled&) {
        ImportReport report = Undone(importer.Report());
        report.cancelled = true;
        return report;
    }
    // What the project used so far, so that it does no harm when the catalogue then cannot be written.
    for (const auto& [role, code] : toStore)
        project.WriteLibrary(role, code);
    transaction.Commit();
    importer.Report().stored = true;
    return importer.Report();
}

CString ExportText(const QString& nativeProject, TableKind kind, const CString& library)
{
    return ReadTable(nativeProject, kind, library, {}).text;
}

LibraryName Export(const QString& nativeProject, TableKind kind, const QString& nativeFile,
                   const CString& library, const Progress& progress)
{
    const CString path = PathOf(nativeFile);
    Tell(progress, 0);
    const Table table = ReadTable(nativeProject, kind, library, progress);
    Tell(progress, Written);
    try {
        platform::Files().Replace(path, *platform::Encode(table.text, platform::Encoding::Utf8Bom));
    } catch (const platform::FileError& error) {
        throw Error(platform::FileError(path, error.Reason()).Message());
    }
    return table.library;
}

} // namespace embedded
