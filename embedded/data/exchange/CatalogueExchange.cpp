#include "embedded/data/exchange/CatalogueExchange.h"

#include "embedded/data/catalogue/CatalogueSchema.h"
#include "host/TreeCategories.h"
#include "xml/Dom.h"

#include <algorithm>
#include <limits>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString Specialty = u"specialty"_s;
const CString BigCategory = u"big_category"_s;
const CString Name = u"name"_s;

constexpr int LargestId = std::numeric_limits<int>::max();

/// A name that becomes a tag of the rule file.
CString TagName(const ImportRow& row, const CString& column)
{
    CString name = row.Key(column);
    if (!xml::IsName(name)) row.Refuse(column, u"“%1”不能作为 XML 元素名，而类别名要写成标签"_s.arg(name));
    // A legal name, but readers that know namespaces take what stands before the colon for a prefix, which
    // nothing declares.
    if (name.contains(u':')) row.Refuse(column, u"“%1”含有冒号，而类别名要写成 XML 标签"_s.arg(name));
    return name;
}

/// Specialty, big and small category of a small category's row.
CString FullName(const CStringArray& small)
{
    return small.first(3).join(u'\\');
}

/// Ids of one level of categories. An id stays with its category and is never given out again, since rule
/// files hold it: the highest id ever given out is remembered in the catalogue.
class CategoryIds
{
public:
    void Load(const KeyedTable& level, qsizetype idColumn, int highest);
    /// Forgets which ids are in use, for the categories are about to be replaced.
    void Clear() { m_owners.clear(); }
    /// Notes that `owner` has an id; raises `RowRefused` when another one has it.
    void Claim(const CString& id, const CString& owner);
    /// An id that nobody ever had.
    CString Next() { return CString::number(++m_highest); }
    int Highest() const noexcept { return m_highest; }

private:
    QHash<CString, CString> m_owners;
    int m_highest = 0;
};

/// Specialties, big and small categories: one row a small category, which makes the levels above it when they
/// are missing.
class CatalogueExchange final : public TableExchange
{
public:
    CatalogueExchange();
    void Prepare(Database& database) override;
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    void Clear() override;

    /// A level of the catalogue: its table, whose id stands behind the key, and its ids.
    struct Level
    {
        qsizetype idColumn;
        KeyedTable table;
        CategoryIds ids;
        KeyedTable::Change Put(const ImportRow& row, const CString& idName, const CStringArray& key,
                               const CStringArray& rest);
        void GiveIds();
    };

    void CheckBigCategories(ImportReport& report) const;
    void FollowRemoved(ImportReport& report);
    qsizetype FollowIn(KeyedTable& table, const QHash<CString, CString>& renamed);

    Level m_specialties;
    Level m_bigs;
    Level m_smalls;
    KeyedTable m_given;
    KeyedTable m_attributes;
    KeyedTable m_calculation;
    SeenKeys m_seen;
    QHash<CString, int> m_lineOfBig;
};

void CategoryIds::Load(const KeyedTable& level, qsizetype idColumn, int highest)
{
    m_highest = highest;
    for (const CStringArray& row : level.Rows()) {
        m_owners.insert(row[idColumn], row.first(idColumn).join(u'\\'));
        m_highest = std::max(m_highest, row[idColumn].toInt());
    }
}

void CategoryIds::Claim(const CString& id, const CString& owner)
{
    const auto found = m_owners.constFind(id);
    if (found != m_owners.constEnd() && *found != owner)
        throw RowRefused(u"编号 %1 已属于“%2”"_s.arg(id, *found));
    m_owners.insert(id, owner);
    m_highest = std::max(m_highest, id.toInt());
}

CatalogueExchange::CatalogueExchange()
    : TableExchange({{u"specialty_id"_s, u"专业编号"_s},
                     {Specialty, u"专业"_s, true, true},
                     {u"big_category_id"_s, u"大类编号"_s},
                     {BigCategory, u"大类"_s, true, true},
                     {u"small_category_id"_s, u"小类编号"_s},
                     {u"small_category"_s, u"小类"_s, true, true},
                     {u"att_type"_s, u"管件列"_s},
                     {u"index_path"_s, u"清单位置"_s}}),
      m_specialties{1, {u"specialties"_s, {Name, u"id"_s}, 1}, {}},
      m_bigs{2, {u"big_categories"_s, {Specialty, Name, u"id"_s}, 2}, {}},
      m_smalls{
          3,
          {u"small_categories"_s, {Specialty, BigCategory, Name, u"id"_s, u"att_type"_s, u"index_path"_s}, 3},
          {}},
      m_given(u"given_ids"_s, {u"level"_s, u"highest"_s}, 1),
      m_attributes(u"attributes"_s,
                   {u"category"_s, u"code"_s, u"group_name"_s, u"display_name"_s, u"extra"_s, u"unit"_s}, 2),
      m_calculation(u"calculation_items"_s, {u"category"_s, u"item"_s, u"list_name"_s}, 2)
{
}

void CatalogueExchange::Prepare(Database& database)
{
    EnsureGivenIds(database);
    m_given.Load(database);
}

void CatalogueExchange::Load(Database& database)
{
    for (Level* level : {&m_specialties, &m_bigs, &m_smalls}) {
        level->table.Load(database);
        level->ids.Load(level->table, level->idColumn, m_given.LoadedValue({level->table.Name()}, 1).toInt());
    }
    m_attributes.Load(database);
    m_calculation.Load(database);
}

QList<CStringArray> CatalogueExchange::Rows() const
{
    QHash<CString, QList<CStringArray>> bigsOf;
    QHash<CString, QList<CStringArray>> smallsOf;
    for (const CStringArray& big : m_bigs.table.Rows())
        bigsOf[big[0]].append(big);
    for (const CStringArray& small : m_smalls.table.Rows())
        smallsOf[small[0] + u'\\' + small[1]].append(small);
    QList<CStringArray> rows;
    for (const CStringArray& specialty : m_specialties.table.Rows()) {
        for (const CStringArray& big : bigsOf.value(specialty[0])) {
            for (const CStringArray& small : smallsOf.value(big[0] + u'\\' + big[1])) {
                rows.append({specialty[1], small[0], big[2], small[1], small[3], small[2],
                             small[4] == u"0" ? u"否"_s : u"是"_s, small[5]});
            }
        }
    }
    return rows;
}

void CatalogueExchange::Clear()
{
    for (Level* level : {&m_specialties, &m_bigs, &m_smalls}) {
        level->table.Clear();
        level->ids.Clear();
    }
}

/// The row keeps the id that the category has. A new one gets that of the file or, at the end, a fresh one.
KeyedTable::Change CatalogueExchange::Level::Put(const ImportRow& row, const CString& idName,
                                                 const CStringArray& key, const CStringArray& rest)
{
    CString id = row.Number(idName, 1, LargestId, {}, {});
    const CString known = table.Find(key).value(idColumn);
    if (id.isEmpty()) id = known;
    if (id.isEmpty()) id = table.FindLoaded(key).value(idColumn);
    if (!known.isEmpty() && id != known) row.Refuse(idName, u"应为 %1，编号不能改"_s.arg(known));
    if (!id.isEmpty()) ids.Claim(id, key.join(u'\\'));
    return table.Put(key + CStringArray{id} + rest);
}

void CatalogueExchange::Take(const ImportRow& row, ImportReport& report)
{
    const CString specialty = TagName(row, Specialty);
    const CString big = TagName(row, BigCategory);
    const CString small = TagName(row, u"small_category"_s);
    const CStringArray key{specialty, big, small};
    m_seen.Take(key.join(u'\\'), row.Line());
    m_lineOfBig.insert(specialty + u'\\' + big, row.Line());

    m_specialties.Put(row, u"specialty_id"_s, {specialty}, {});
    m_bigs.Put(row, u"big_category_id"_s, {specialty, big}, {});
    const CStringArray loaded = m_smalls.table.FindLoaded(key);
    const CString attType =
        row.Choice(u"att_type"_s, {{u"1"_s, u"是"_s}, {u"0"_s, u"否"_s}}, loaded.value(4, u"1"_s), u"1"_s);
    Count(
        m_smalls.Put(row, u"small_category_id"_s, key, {attType, row.Word(u"index_path"_s, loaded.value(5))}),
        report);
}

void CatalogueExchange::Level::GiveIds()
{
    const QList<CStringArray> rows = table.Rows();
    for (CStringArray row : rows) {
        CString& id = row[idColumn];
        if (!id.isEmpty()) continue;
        id = ids.Next();
        table.Put(row);
    }
}

void CatalogueExchange::Finish(ImportReport& report)
{
    for (Level* level : {&m_specialties, &m_bigs, &m_smalls}) {
        level->GiveIds();
        m_given.Put({level->table.Name(), CString::number(level->ids.Highest())});
    }
    CheckBigCategories(report);
    if (Replaces()) FollowRemoved(report);
}

/// A big category of which the tree shows no small category could not be opened.
void CatalogueExchange::CheckBigCategories(ImportReport& report) const
{
    QHash<CString, bool> isShown;
    for (const CStringArray& small : m_smalls.table.Rows()) {
        bool& shown = isShown[small[0] + u'\\' + small[1]];
        shown = shown || host::IsInCategoryTree(small[2]);
    }
    for (auto big = isShown.constBegin(); big != isShown.constEnd(); ++big) {
        if (*big) continue;
        report.refused.append(
            {m_lineOfBig.value(big.key()),
             u"大类“%1”只有名称含“导线·导管”“配管配线”或“组合管线”的小类，规则树中不显示这些小类"_s.arg(
                 big.key())});
    }
}

/// What hangs on a category by its name goes where the id of the category has gone, or goes.
void CatalogueExchange::FollowRemoved(ImportReport& report)
{
    report.removed = m_smalls.table.CountVanished();
    QHash<CString, CString> nameOfId;
    for (const CStringArray& small : m_smalls.table.Rows())
        nameOfId.insert(small[3], FullName(small));
    QHash<CString, CString> renamed;
    for (const CStringArray& small : m_smalls.table.Loaded())
        renamed.insert(FullName(small), nameOfId.value(small[3]));
    if (const qsizetype count = FollowIn(m_attributes, renamed); count > 0)
        report.notes.append(u"随类别去掉的属性：%1 个"_s.arg(count));
    if (const qsizetype count = FollowIn(m_calculation, renamed); count > 0)
        report.notes.append(u"随类别去掉的计算项目：%1 个"_s.arg(count));
}

qsizetype CatalogueExchange::FollowIn(KeyedTable& table, const QHash<CString, CString>& renamed)
{
    const QList<CStringArray> rows = table.Rows();
    const bool isUnchanged = std::all_of(
        rows.begin(), rows.end(), [&](const CStringArray& row) { return renamed.value(row[0]) == row[0]; });
    if (isUnchanged) return 0;
    table.Clear();
    qsizetype removed = 0;
    for (CStringArray row : rows) {
        row[0] = renamed.value(row[0]);
        if (row[0].isEmpty()) {
            ++removed;
        } else {
            table.Put(row);
        }
    }
    return removed;
}

QList<const KeyedTable*> CatalogueExchange::Tables() const
{
    return {&m_given, &m_specialties.table, &m_bigs.table, &m_smalls.table, &m_attributes, &m_calculation};
}

} // namespace

std::unique_ptr<TableExchange> MakeCatalogueExchange()
{
    return std::make_unique<CatalogueExchange>();
}

} // namespace embedded
