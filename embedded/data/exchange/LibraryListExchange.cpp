#include "embedded/data/exchange/LibraryListExchange.h"

#include "embedded/data/exchange/GuideTable.h"

#include <QtCore/QSet>

#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString Code = u"code"_s;
const CString Role = u"role"_s;
const CString Name = u"file_name"_s;
const CString BillLibrary = u"bill_library"_s;

enum Column { CodeAt, RoleAt, NameAt, LocalAt, YearAt, CodeLengthAt, SuffixLengthAt, ItemsAt, BillLibraryAt };

constexpr int LongestNumber = 30;

/// What the columns of the item tables are for the roles: sections first, then items.
struct ItemTables
{
    bool isBill;
    CString sections;
    CString sectionKey;
    CString items;
};

const ItemTables BillTables{true, u"bill_sections"_s, u"index_path"_s, u"bill_items"_s};
const ItemTables QuotaTables{false, u"quota_sections"_s, u"code"_s, u"quota_items"_s};

/// The item sets that bill libraries, or quota libraries, offer.
QSet<CString> ItemSets(const CArray<Library>& libraries, bool ofBills)
{
    QSet<CString> sets;
    for (const Library& library : libraries) {
        if ((library.role == LibraryRole::Bill) == ofBills) sets.insert(library.items);
    }
    return sets;
}

/// For every item set of quota libraries the set of bill items that its guide speaks of.
QHash<CString, CString> Guides(const CArray<Library>& libraries)
{
    QHash<CString, CString> guides;
    for (const Library& library : libraries) {
        if (library.role != LibraryRole::Bill) guides.insert(library.items, ItemsOfGuide(libraries, library));
    }
    return guides;
}

/// What all libraries that share an item set must agree on.
CString Agreement(const Library& library)
{
    return library.role == LibraryRole::Bill ? CString::number(library.codeLength) : library.billLibrary;
}

} // namespace

LibraryListExchange::LibraryListExchange()
    : m_libraries(u"libraries"_s,
                  {Code, Role, Name, u"local"_s, u"year"_s, u"code_length"_s, u"suffix_length"_s, u"items"_s,
                   BillLibrary},
                  1)
{
}

CArray<ImportColumn> LibraryListExchange::Columns() const
{
    return {{Role, u"用途"_s, true},
            {Code, u"代码"_s, true},
            {Name, u"名称"_s, true},
            {u"local"_s, u"地区"_s},
            {u"year"_s, u"年份"_s},
            {u"code_length"_s, u"编号位数"_s},
            {u"suffix_length"_s, u"后缀位数"_s},
            {u"items"_s, u"项目集"_s},
            {BillLibrary, u"指引的清单库"_s}};
}

void LibraryListExchange::Prepare(Database& database)
{
    m_database = &database;
}

void LibraryListExchange::Load(Database& database)
{
    m_libraries.Load(database);
    m_loaded = Libraries();
}

CArray<Library> LibraryListExchange::Libraries() const
{
    CArray<Library> libraries;
    for (const CStringArray& row : m_libraries.Rows()) {
        Library library;
        library.role = RoleOfWord(row[RoleAt]).value_or(LibraryRole::Bill);
        library.name = {row[CodeAt], row[NameAt], row[LocalAt], row[YearAt]};
        library.codeLength = row[CodeLengthAt].toInt();
        library.items = row[ItemsAt].isEmpty() ? row[CodeAt] : row[ItemsAt];
        library.billLibrary = row[BillLibraryAt];
        libraries.append(library);
    }
    return libraries;
}

QList<CStringArray> LibraryListExchange::Rows() const
{
    QList<CStringArray> rows;
    for (CStringArray row : m_libraries.Rows()) {
        row[RoleAt] = RoleLabel(RoleOfWord(row[RoleAt]).value_or(LibraryRole::Bill));
        row.move(RoleAt, 0);
        rows.append(row);
    }
    return rows;
}

void LibraryListExchange::Begin(bool replace)
{
    if (replace) m_libraries.Clear();
}

void LibraryListExchange::Take(const ImportRow& row, ImportReport& report)
{
    const CString code = row.Key(Code);
    m_seen.Take(code, row.Line());
    m_lineOf.insert(code, row.Line());
    row.Key(Role);
    CArray<CStringArray> roles;
    for (const LibraryRole role : AllLibraryRoles)
        roles.append({RoleWord(role), RoleLabel(role)});
    const CString role = row.Choice(Role, roles, {}, {});
    const CString name = row.Key(Name);
    const CStringArray loaded = m_libraries.FindLoaded({code});
    const auto length = [&](const CString& column, int at) {
        return row.Number(column, -1, LongestNumber, loaded.value(at, u"-1"_s), u"-1"_s);
    };
    Count(m_libraries.Put({code, role, name, row.Word(u"local"_s, loaded.value(LocalAt)),
                           row.Word(u"year"_s, loaded.value(YearAt)), length(u"code_length"_s, CodeLengthAt),
                           length(u"suffix_length"_s, SuffixLengthAt),
                           row.Word(u"items"_s, loaded.value(ItemsAt)),
                           row.Word(BillLibrary, loaded.value(BillLibraryAt))}),
          report);
}

void LibraryListExchange::Finish(ImportReport& report)
{
    report.removed = m_libraries.CountVanished();
    CheckRoles(report);
    CheckCodes(report);
    CheckReferences(report);
    CheckSharedItems(report);
    if (!report.refused.isEmpty()) return;
    DropItems(report);
    FollowBillLibraries(report);
}

void LibraryListExchange::Refuse(const Library& library, const CString& reason, ImportReport& report) const
{
    report.refused.append({m_lineOf.value(library.name.code), reason});
}

/// A project can change to either mode, so each role needs a library.
void LibraryListExchange::CheckRoles(ImportReport& report) const
{
    const CArray<Library> libraries = Libraries();
    for (const LibraryRole role : AllLibraryRoles) {
        if (FindLibrary(libraries, role, {}) == nullptr)
            report.refused.append({0, u"没有一个库作%1，至少要有一个"_s.arg(RoleLabel(role))});
    }
}

/// Rule files are compared with the library in use without regard to letter case.
void LibraryListExchange::CheckCodes(ImportReport& report) const
{
    QHash<CString, CString> codes;
    for (const Library& library : Libraries()) {
        const CString& code = library.name.code;
        const CString folded = code.toCaseFolded();
        if (codes.contains(folded))
            Refuse(library, u"代码“%1”与“%2”只有大小写不同"_s.arg(code, codes.value(folded)), report);
        codes.insert(folded, code);
    }
}

void LibraryListExchange::CheckReferences(ImportReport& report) const
{
    const CArray<Library> libraries = Libraries();
    for (const Library& library : libraries) {
        const CString& bill = library.billLibrary;
        if (bill.isEmpty()) continue;
        if (library.role == LibraryRole::Bill) {
            Refuse(library, u"“%1”是清单库，不写指引的清单库"_s.arg(library.name.code), report);
        } else if (FindLibrary(libraries, LibraryRole::Bill, bill) == nullptr) {
            Refuse(library, u"“%1”的指引所用的清单库“%2”不存在"_s.arg(library.name.code, bill), report);
        }
    }
}

void LibraryListExchange::CheckSharedItems(ImportReport& report) const
{
    QHash<CString, Library> first;
    for (const Library& library : Libraries()) {
        const CString key = (library.role == LibraryRole::Bill ? u'b' : u'q') + library.items;
        const auto other = first.constFind(key);
        if (other == first.constEnd()) {
            first.insert(key, library);
        } else if (Agreement(*other) != Agreement(library)) {
            Refuse(library,
                   u"“%1”与“%2”共用项目集“%3”，编号位数和指引的清单库必须相同"_s.arg(
                       library.name.code, other->name.code, library.items),
                   report);
        }
    }
}

/// Item sets that were offered and no longer are go.
void LibraryListExchange::DropItems(ImportReport& report)
{
    qsizetype items = 0;
    for (const ItemTables& tables : {BillTables, QuotaTables}) {
        for (const CString& set : ItemSets(m_loaded, tables.isBill) - ItemSets(Libraries(), tables.isBill)) {
            KeyedTable& sections = m_others.emplace_back(tables.sections, CStringArray{tables.sectionKey}, 1);
            sections.Load(*m_database, set);
            sections.Clear();
            KeyedTable& dropped = m_others.emplace_back(tables.items, CStringArray{u"number"_s}, 1);
            dropped.Load(*m_database, set);
            items += dropped.Rows().size();
            dropped.Clear();
        }
    }
    if (items > 0) report.notes.append(u"随库去掉的清单和定额：%1 项"_s.arg(items));
}

/// A guide that now speaks of other bill items loses what is not among them.
void LibraryListExchange::FollowBillLibraries(ImportReport& report)
{
    const QHash<CString, CString> former = Guides(m_loaded);
    const QHash<CString, CString> guides = Guides(Libraries());
    qsizetype lost = 0;
    for (auto guide = guides.constBegin(); guide != guides.constEnd(); ++guide) {
        if (!former.contains(guide.key()) || former.value(guide.key()) == guide.value()) continue;
        KeyedTable bills(BillTables.items, {u"number"_s}, 1);
        if (!guide->isEmpty()) bills.Load(*m_database, *guide);
        KeyedTable& quotas = m_others.emplace_back(GuideTable());
        quotas.Load(*m_database, guide.key());
        lost += LeaveOutOfGuide(quotas, [&](const CString& bill) { return bills.Has({bill}); });
    }
    report.notes += NoteOfGuides(lost);
}

QList<const KeyedTable*> LibraryListExchange::Tables() const
{
    QList<const KeyedTable*> tables{&m_libraries};
    for (const KeyedTable& other : m_others)
        tables.append(&other);
    return tables;
}

} // namespace embedded
