#include "embedded/data/exchange/LibraryListExchange.h"

#include "embedded/data/catalogue/Library.h"

#include "embedded/data/exchange/GuideTable.h"
#include "embedded/data/exchange/SharedColumns.h"
#include "host/BillNumbering.h"

#include <QtCore/QSet>

#include <algorithm>
#include <vector>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString Role = u"role"_s;
const CString FileName = u"file_name"_s;
const CString CodeLength = u"code_length"_s;
const CString SuffixLength = u"suffix_length"_s;
const CString BillLibrary = u"bill_library"_s;

enum Column {
    CodeAt,
    RoleAt,
    FileNameAt,
    LocalAt,
    YearAt,
    CodeLengthAt,
    SuffixLengthAt,
    ItemsAt,
    BillLibraryAt
};

constexpr int LongestNumber = 30;

/// Digits of a bill item's number and of what a project adds to it, in a new library of bills.
const CStringArray UsualNumberRule{u"9"_s, u"3"_s};
const CStringArray NoNumberRule{u"-1"_s, u"-1"_s};

/// What the tables of items are called: sections first, then items.
struct ItemTables
{
    bool isBill;
    CString sections;
    CString sectionKey;
    CString items;
};

const ItemTables BillTables{true, u"bill_sections"_s, u"index_path"_s, u"bill_items"_s};
const ItemTables QuotaTables{false, u"quota_sections"_s, u"code"_s, u"quota_items"_s};

bool IsBill(const Library& library)
{
    return library.role == LibraryRole::Bill;
}

const ItemTables& TablesOf(const Library& library)
{
    return IsBill(library) ? BillTables : QuotaTables;
}

/// The item sets that bill libraries, or quota libraries, offer.
QSet<CString> ItemSets(const CArray<Library>& libraries, bool ofBills)
{
    QSet<CString> sets;
    for (const Library& library : libraries) {
        if (IsBill(library) == ofBills) sets.insert(library.items);
    }
    return sets;
}

/// For every item set of quota libraries the set of bill items that its guide speaks of.
QHash<CString, CString> Guides(const CArray<Library>& libraries)
{
    QHash<CString, CString> guides;
    for (const Library& library : libraries) {
        if (!IsBill(library)) guides.insert(library.items, ItemsOfGuide(libraries, library));
    }
    return guides;
}

/// What all libraries that share an item set must agree on.
CString Agreement(const Library& library)
{
    return IsBill(library) ? CString::number(library.codeLength) : library.name.billLibrary;
}

/// The libraries themselves, one a row. Item sets that no library offers any more go with the last that did.
class LibraryListExchange final : public TableExchange
{
public:
    LibraryListExchange();
    void Prepare(Database& database) override;
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    void Clear() override;

    CArray<Library> Libraries() const;
    CStringArray NumberRule(const ImportRow& row, const CString& role, const CStringArray& loaded) const;
    void CheckRoles(ImportReport& report) const;
    void CheckCodes(ImportReport& report) const;
    void CheckReferences(ImportReport& report) const;
    void CheckSharedItems(ImportReport& report) const;
    void CheckNumbers(ImportReport& report) const;
    void CheckItemsStay(ImportReport& report) const;
    const Library* SuccessorOf(const Library& former, const CArray<Library>& libraries) const;
    /// The numbers of the items that a library offers.
    CStringArray Numbers(const Library& library) const;
    void DropItems(ImportReport& report);
    void NoteNewLibraries(ImportReport& report) const;
    void FollowBillLibraries(ImportReport& report);
    void Refuse(const Library& library, const CString& reason, ImportReport& report) const;

    Database* m_database = nullptr; ///< of an import
    KeyedTable m_libraries;
    CArray<Library> m_loaded;
    std::vector<KeyedTable> m_others; ///< tables of items that change with the libraries
    SeenKeys m_seen;
    QHash<CString, int> m_lineOf; ///< by code
};

LibraryListExchange::LibraryListExchange()
    : TableExchange({{Role, u"用途"_s, true},
                     {Code, u"代码"_s, true, true},
                     {FileName, u"名称"_s, true},
                     {u"local"_s, u"地区"_s},
                     {u"year"_s, u"年份"_s},
                     {CodeLength, u"编号位数"_s},
                     {SuffixLength, u"后缀位数"_s},
                     {u"items"_s, u"项目集"_s},
                     {BillLibrary, u"指引的清单库"_s}}),
      m_libraries(
          u"libraries"_s,
          {Code, Role, FileName, u"local"_s, u"year"_s, CodeLength, SuffixLength, u"items"_s, BillLibrary}, 1)
{
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
        library.name = {row[CodeAt], row[FileNameAt], row[LocalAt], row[YearAt], row[BillLibraryAt]};
        library.codeLength = row[CodeLengthAt].toInt();
        library.items = row[ItemsAt].isEmpty() ? row[CodeAt] : row[ItemsAt];
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

void LibraryListExchange::Clear()
{
    m_libraries.Clear();
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
    const CString name = row.Key(FileName);
    const CStringArray loaded = m_libraries.FindLoaded({code});
    const CStringArray rule = NumberRule(row, role, loaded);
    Count(m_libraries.Put({code, role, name, row.Word(u"local"_s, loaded.value(LocalAt)),
                           row.Word(u"year"_s, loaded.value(YearAt)), rule[0], rule[1],
                           row.Word(u"items"_s, loaded.value(ItemsAt)),
                           row.Word(BillLibrary, loaded.value(BillLibraryAt))}),
          report);
}

/// The digits of numbers. A project on a bill library with any other rule than those known could not number
/// its items; one that such a library has already stays.
CStringArray LibraryListExchange::NumberRule(const ImportRow& row, const CString& role,
                                             const CStringArray& loaded) const
{
    const bool isBill = role == RoleWord(LibraryRole::Bill);
    const CStringArray& usual = isBill ? UsualNumberRule : NoNumberRule;
    const bool isNew = loaded.value(RoleAt) != role;
    const CStringArray former = isNew ? usual : CStringArray{loaded[CodeLengthAt], loaded[SuffixLengthAt]};
    CStringArray rule{row.Number(CodeLength, -1, LongestNumber, former[0], usual[0]),
                      row.Number(SuffixLength, -1, LongestNumber, former[1], usual[1])};
    if (isBill && rule != former && !host::BillNumbering::Of(rule[0].toInt(), rule[1].toInt()))
        row.Refuse(CodeLength, u"和后缀位数只能是 9 和 3、12 和 3、12 和 1、10 和 2，而不是 %1 和 %2"_s.arg(
                                   rule[0], rule[1]));
    return rule;
}

void LibraryListExchange::Finish(ImportReport& report)
{
    report.removed = m_libraries.CountVanished();
    CheckRoles(report);
    CheckCodes(report);
    CheckReferences(report);
    CheckSharedItems(report);
    if (!report.refused.isEmpty()) return;
    CheckNumbers(report);
    CheckItemsStay(report);
    if (!report.refused.isEmpty()) return;
    DropItems(report);
    FollowBillLibraries(report);
    NoteNewLibraries(report);
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
        const CString& bill = library.name.billLibrary;
        if (bill.isEmpty()) continue;
        if (IsBill(library)) {
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
        const CString key = (IsBill(library) ? u'b' : u'q') + library.items;
        const auto other = first.constFind(key);
        if (other == first.constEnd()) {
            first.insert(key, library);
        } else if (Agreement(*other) != Agreement(library)) {
            Refuse(library,
                   u"“%1”与“%2”共用项目集“%3”，%4必须相同：两行一起改，或让其中一个另用项目集"_s.arg(
                       library.name.code, other->name.code, library.items,
                       IsBill(library) ? u"编号位数"_s : u"指引的清单库"_s),
                   report);
        }
    }
}

/// The numbers of the items that a bill library offers must have its number of digits.
void LibraryListExchange::CheckNumbers(ImportReport& report) const
{
    for (const Library& library : Libraries()) {
        const bool isAsLoaded = std::any_of(m_loaded.begin(), m_loaded.end(), [&](const Library& former) {
            return IsBill(former) && former.items == library.items && former.codeLength == library.codeLength;
        });
        if (!IsBill(library) || library.codeLength <= 0 || isAsLoaded) continue;
        for (const CString& number : Numbers(library)) {
            if (number.size() == library.codeLength) continue;
            Refuse(library,
                   u"“%1”的编号位数不能是 %2：它的项目“%3”有 %4 位"_s.arg(library.name.code)
                       .arg(library.codeLength)
                       .arg(number)
                       .arg(number.size()),
                   report);
            break;
        }
    }
}

/// Items go only with a library that is taken out, and only if no other library is put in at the same time
/// for which they may be meant: a changed cell must not cost a library its items.
void LibraryListExchange::CheckItemsStay(ImportReport& report) const
{
    const CArray<Library> libraries = Libraries();
    for (const Library& former : m_loaded) {
        if (ItemSets(libraries, IsBill(former)).contains(former.items)) continue;
        const qsizetype items = Numbers(former).size();
        if (items == 0) continue;
        const CString& code = former.name.code;
        if (m_libraries.Has({code})) {
            Refuse(former,
                   u"“%1”换了项目集或用途，项目集“%2”的 %3 项将不再属于任何库"_s.arg(code, former.items)
                       .arg(items),
                   report);
        } else if (const Library* const successor = SuccessorOf(former, libraries)) {
            Refuse(*successor,
                   u"“%1”去掉而“%2”新加，“%1”的 %3 项会丢失：要留给“%2”，就在它的项目集中写“%4”；"
                   "不要了，就先去掉“%1”，再另外加“%2”"_s.arg(code, successor->name.code)
                       .arg(items)
                       .arg(former.items),
                   report);
        }
    }
}

/// A library of the same kind that is new and names no item set.
const Library* LibraryListExchange::SuccessorOf(const Library& former, const CArray<Library>& libraries) const
{
    const auto found = std::find_if(libraries.begin(), libraries.end(), [&](const Library& library) {
        return IsBill(library) == IsBill(former) && library.items == library.name.code &&
               m_libraries.FindLoaded({library.name.code}).isEmpty();
    });
    return found == libraries.end() ? nullptr : &*found;
}

CStringArray LibraryListExchange::Numbers(const Library& library) const
{
    KeyedTable items(TablesOf(library).items, {u"number"_s}, 1);
    items.Load(*m_database, library.items);
    CStringArray numbers;
    for (const CStringArray& item : items.Rows())
        numbers.append(item[0]);
    return numbers;
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

/// A library that comes with a row has no items yet, one that comes back neither.
void LibraryListExchange::NoteNewLibraries(ImportReport& report) const
{
    for (const Library& library : Libraries()) {
        const CString& code = library.name.code;
        if (m_libraries.FindLoaded({code}).isEmpty() && Numbers(library).isEmpty())
            report.notes.append(u"“%1”还没有项目，要另外导入"_s.arg(code));
    }
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

} // namespace

std::unique_ptr<TableExchange> MakeLibraryListExchange()
{
    return std::make_unique<LibraryListExchange>();
}

} // namespace embedded
