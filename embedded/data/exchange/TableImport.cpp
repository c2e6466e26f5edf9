#include "embedded/data/exchange/TableImport.h"

#include "embedded/data/catalogue/CatalogueDatabase.h"
#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/catalogue/LibraryDatabase.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/exchange/ImportMeter.h"
#include "embedded/data/exchange/MakeExchange.h"
#include "embedded/data/exchange/OtherProjects.h"
#include "embedded/data/exchange/TableDifference.h"
#include "embedded/data/office/ProjectCatalogue.h"
#include "embedded/data/project/ProjectDatabase.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Paths.h"
#include "tables/CreateTable.h"
#include "tables/CsvText.h"
#include "tables/Record.h"
#include "tables/TableError.h"

#include <algorithm>
#include <map>
#include <optional>

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

CArray<tables::Record> ReadRecords(const QString& nativeFile, const CString& sheet)
{
    const CString path = PathOf(nativeFile);
    CArray<tables::Record> records;
    try {
        records = tables::ReadRecords(*tables::OpenTable(path, {sheet}));
    } catch (const tables::TableError& error) {
        throw Error(error.Message());
    }
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
    bool Check(const CArray<tables::Record>& records, bool replace)
    {
        m_report.rows = static_cast<int>(records.size()) - 1;
        try {
            m_exchange->Prepare(m_database);
            m_exchange->Load(m_database);
            const QList<CStringArray> before = m_exchange->Rows();
            const ImportHeader header(m_exchange->Columns(), records.first());
            if (replace) RefuseEmptying();
            m_exchange->Begin(replace);
            TakeRows(header, records);
            m_exchange->Finish(m_report);
            TellDifference(m_exchange->Columns(), before, m_exchange->Rows(), m_report);
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

    void TakeRows(const ImportHeader& header, const CArray<tables::Record>& records)
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

/// Whether the project could still be opened on what the transaction holds, if it also stores `toStore`, and
/// the others of its office as well.
bool StaysUsable(ProjectDatabase& project, const CArray<Library>& before, const OtherProjects& others,
                 Database& database, ImportReport& report, Roles& toStore)
{
    const CatalogueData data = ReadCatalogue(database);
    const CArray<Library> after = ReadLibraries(database);
    const ProjectDatabase::Settings settings = project.ReadSettings();
    if (!HasSpecialty(data, settings.spec))
        report.refused.append({0, u"文件中没有工程的当前专业“%1”"_s.arg(settings.spec)});
    toStore = KeepLibrariesInUse(before, after, settings, report);
    others.Check(data, after, report);
    return report.refused.isEmpty();
}

/// A table as it is exported, and the library whose table it is.
struct Table
{
    CStringArray labels;
    QList<CStringArray> rows;
    LibraryName library;
};

Table ReadTable(const QString& nativeProject, TableKind kind, const CString& library)
{
    const ProjectFolder folder = ExistingProject(nativeProject);
    const ProjectDatabase::Settings settings = ProjectDatabase(folder.ProjectFile()).ReadSettings();
    ProjectCatalogue catalogue(folder, settings);
    catalogue.BringUpToDate();
    Database& database = catalogue.Local();
    const LibraryScope scope = ScopeOf(ReadLibraries(database), settings, kind, library);
    const std::unique_ptr<TableExchange> exchange = MakeExchange(kind, scope);
    exchange->Load(database);
    Table table;
    for (const ImportColumn& column : exchange->Columns())
        table.labels.append(column.label);
    table.rows = exchange->Rows();
    table.library = scope.library.name;
    return table;
}

/// What a worksheet with a table of that kind is called.
CString SheetName(TableKind kind)
{
    switch (kind) {
    case TableKind::Catalogue:
        return u"类别"_s;
    case TableKind::Attributes:
        return u"属性"_s;
    case TableKind::Bill:
        return u"清单"_s;
    case TableKind::Quota:
        return u"定额"_s;
    case TableKind::Guide:
        return u"清单指引"_s;
    case TableKind::Libraries:
        return u"库"_s;
    case TableKind::Calc:
        break;
    }
    return u"计算项目"_s;
}

/// All columns are texts: numbers of items must keep their zeros.
CArray<tables::Column> ColumnsOf(const Table& table)
{
    constexpr qsizetype Narrowest = 8;
    constexpr qsizetype Widest = 60;
    CArray<tables::Column> columns;
    for (qsizetype index = 0; index < table.labels.size(); ++index) {
        qsizetype width = std::max(Narrowest, table.labels[index].size() * 2);
        for (const CStringArray& row : table.rows)
            width = std::max(width, row[index].size());
        columns.append({table.labels[index], tables::ColumnKind::Text, -1,
                        static_cast<int>(std::min(Widest, width + 2))});
    }
    return columns;
}

void WriteTable(const Table& table, TableKind kind, const CString& path, const Progress& progress)
{
    const std::unique_ptr<tables::TableWriter> writer = tables::CreateTable(path);
    writer->BeginSheet(SheetName(kind), ColumnsOf(table));
    ImportMeter meter(progress);
    meter.Begin(Loaded, Written, table.rows.size());
    for (const CStringArray& row : table.rows) {
        meter.Step();
        for (const CString& text : row)
            writer->Text(text);
        writer->EndRow();
    }
    Tell(progress, Written);
    writer->Finish();
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

/// Where an import works: on the project's own catalogue, or on that of its office, so that all of its
/// projects get the data. A trial for an office looks at the copy, which keeps nobody waiting.
class Target
{
public:
    /// Raises `UnreachableError` and `RightsError` when the office takes nothing in, for a trial, too.
    Target(ProjectCatalogue& catalogue, bool isTrial) : m_catalogue(catalogue), m_isTrial(isTrial)
    {
        if (catalogue.Office() != nullptr) RequireKeeper(*catalogue.Office());
        // Nobody is to choose a library from the copy that is about to go.
        if (OnOffice()) m_copyStays.emplace(catalogue.Local());
    }

    Database& Ground()
    {
        return OnOffice() ? m_catalogue.Office()->Reached()->Connection() : m_catalogue.Local();
    }

    /// What the other projects of the office use.
    CArray<ProjectUse> UsesOfOthers()
    {
        ProjectOffice* const office = m_catalogue.Office();
        if (office == nullptr) return {};
        return ProjectUses(office->Reached()->Connection(), office->Place());
    }

    /// After the commit: what is stored is stored, whatever happens to the copy.
    void Follow(ImportReport& report)
    {
        if (!OnOffice()) return;
        CString fault;
        try {
            m_catalogue.Office()->BringUpToDateWithin(m_catalogue.Local());
            m_copyStays->Commit();
            fault = m_catalogue.Office()->Fault();
        } catch (const Error& error) {
            fault = error.Message();
        }
        if (!fault.isEmpty())
            report.notes.append(
                u"数据已导入办公室，但工程的副本还没有跟上（%1），下次打开时再跟上"_s.arg(fault));
    }

private:
    static void RequireKeeper(ProjectOffice& office)
    {
        if (office.Reached() == nullptr) throw UnreachableError(office.Fault() + u"，现在不能导入"_s);
        const OfficeRight right = office.Reached()->Right();
        if (right == OfficeRight::Keeper) return;
        throw RightsError(u"办公室“%1”：导入会改变办公室所有工程的数据，要有%2的权限，连接的用户是%3"_s.arg(
            office.Name(), RightWord(OfficeRight::Keeper), RightWord(right)));
    }

    bool OnOffice() const { return m_catalogue.Office() != nullptr && !m_isTrial; }

    ProjectCatalogue& m_catalogue;
    bool m_isTrial;
    std::optional<Transaction> m_copyStays;
};

} // namespace

ImportReport Import(const QString& nativeProject, TableKind kind, const QString& nativeFile,
                    const ImportOptions& options, const Progress& progress)
{
    const ProjectFolder folder = ExistingProject(nativeProject);
    const CArray<tables::Record> records = ReadRecords(nativeFile, options.sheet);
    ProjectDatabase project(folder.ProjectFile());
    ProjectCatalogue catalogue(folder, project.ReadSettings());
    catalogue.BringUpToDate();
    Target target(catalogue, options.isTrial);
    Database& database = target.Ground();
    Transaction transaction(database);
    if (!options.isTrial) transaction.KeepOthersFrom(CatalogueTables() + CStringArray{GivenIdsTable()});
    const CArray<Library> libraries = ReadLibraries(database);
    const OtherProjects others(target.UsesOfOthers(), libraries, database);
    Importer importer(database, kind, ScopeOf(libraries, project.ReadSettings(), kind, options.library),
                      progress);
    Roles toStore;
    try {
        if (!importer.Check(records, options.replace)) return Undone(importer.Report());
        importer.Store();
        if (!StaysUsable(project, libraries, others, database, importer.Report(), toStore))
            return Undone(importer.Report());
    } catch (const Cancelled&) {
        ImportReport report = Undone(importer.Report());
        report.cancelled = true;
        return report;
    }
    if (options.isTrial) return importer.Report();
    // What the project used so far, so that it does no harm when the catalogue then cannot be written.
    for (const auto& [role, code] : toStore)
        project.WriteLibrary(role, code);
    transaction.Commit();
    importer.Report().stored = true;
    target.Follow(importer.Report());
    return importer.Report();
}

CString ExportText(const QString& nativeProject, TableKind kind, const CString& library)
{
    const Table table = ReadTable(nativeProject, kind, library);
    CString text = tables::CsvLine(table.labels);
    for (const CStringArray& row : table.rows)
        text += tables::CsvLine(row);
    return text;
}

LibraryName Export(const QString& nativeProject, TableKind kind, const QString& nativeFile,
                   const CString& library, const Progress& progress)
{
    const CString path = PathOf(nativeFile);
    Tell(progress, 0);
    const Table table = ReadTable(nativeProject, kind, library);
    try {
        WriteTable(table, kind, path, progress);
    } catch (const tables::TableError& error) {
        throw Error(error.Message());
    }
    return table.library;
}

} // namespace embedded
