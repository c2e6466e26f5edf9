#include "embedded/data/catalogue/CatalogueDatabase.h"

#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

CStringArray List(const CString& joined, QChar separator)
{
    return joined.split(separator, Qt::SkipEmptyParts);
}

/// Fills one `CatalogueData` table by table. Rows come in the order in which they were inserted.
class Loader
{
public:
    explicit Loader(Database& database) : m_database(database) {}

    CatalogueData Load()
    {
        LoadSpecialties();
        LoadBigCategories();
        LoadSmallCategories();
        IndexSmallCategories();
        LoadAttributes();
        LoadValueSources();
        LoadCalculation();
        return std::move(m_data);
    }

private:
    using Row = QSqlQuery;

    void Each(const CString& columns, const CString& table, const std::function<void(const Row&)>& row)
    {
        m_database.ForEach(
            u"SELECT %1 FROM %2 ORDER BY %3"_s.arg(columns, table, m_database.InsertionOrder()), {}, row);
    }
    static CString Text(const Row& row, int column) { return row.value(column).toString(); }
    static int Number(const Row& row, int column) { return row.value(column).toInt(); }

    /// The element whose `field` equals `value`; a damaged database may name one that is missing.
    template <typename Element>
    Element& Find(std::vector<Element>& elements, CString Element::*field, const CString& value)
    {
        for (Element& element : elements) {
            if (element.*field == value) return element;
        }
        m_database.Fail(u"数据库已损坏（没有名为“%1”的记录）"_s.arg(value));
    }

    void LoadSpecialties();
    void LoadBigCategories();
    void LoadSmallCategories();
    void IndexSmallCategories();
    SmallCategory& Category(const CString& fullName);
    void LoadAttributes();
    void LoadValueSources();
    void LoadCalculation();

    Database& m_database;
    CatalogueData m_data;
    QHash<CString, SmallCategory*> m_categories;
};

void Loader::LoadSpecialties()
{
    Each(u"id, name"_s, u"specialties"_s, [&](const Row& row) {
        m_data.specialties.push_back({{Text(row, 0)}, Text(row, 1), {}});
    });
}

void Loader::LoadBigCategories()
{
    Each(u"id, specialty, name"_s, u"big_categories"_s, [&](const Row& row) {
        Specialty& specialty = Find(m_data.specialties, &Specialty::name, Text(row, 1));
        const CString name = Text(row, 2);
        specialty.bigCategories.push_back(
            {{specialty.id.strSpecId, Text(row, 0)}, name, specialty.name + u'\\' + name, {}});
    });
}

void Loader::LoadSmallCategories()
{
    Each(u"id, specialty, big_category, name, att_type, index_path"_s, u"small_categories"_s,
         [&](const Row& row) {
             Specialty& specialty = Find(m_data.specialties, &Specialty::name, Text(row, 1));
             BigCategory& big = Find(specialty.bigCategories, &BigCategory::name, Text(row, 2));
             SmallCategory category;
             category.id = {specialty.id.strSpecId, big.id.strBigCategoryId, Text(row, 0)};
             category.name = Text(row, 3);
             category.fullName = big.fullName + u'\\' + category.name;
             category.attType = Number(row, 4);
             category.indexPath = Text(row, 5);
             big.smallCategories.push_back(category);
         });
}

void Loader::IndexSmallCategories()
{
    for (Specialty& specialty : m_data.specialties) {
        for (BigCategory& big : specialty.bigCategories) {
            for (SmallCategory& category : big.smallCategories)
                m_categories.insert(category.fullName, &category);
        }
    }
}

SmallCategory& Loader::Category(const CString& fullName)
{
    SmallCategory* const category = m_categories.value(fullName);
    if (category == nullptr) m_database.Fail(u"数据库已损坏（没有名为“%1”的记录）"_s.arg(fullName));
    return *category;
}

void Loader::LoadAttributes()
{
    Each(u"category, group_name, display_name, extra, code, unit"_s, u"attributes"_s, [&](const Row& row) {
        SmallCategory& category = Category(Text(row, 0));
        category.attributes << Text(row, 1) << Text(row, 2) << Text(row, 3) << Text(row, 4);
        category.units << Text(row, 5);
    });
}

void Loader::LoadValueSources()
{
    Each(u"code, kind, value_list"_s, u"cell_data"_s, [&](const Row& row) {
        m_data.cells.insert(Text(row, 0), {Number(row, 1), List(Text(row, 2), u'|')});
    });
    Each(u"code, name, value_list"_s, u"drop_lists"_s, [&](const Row& row) {
        m_data.lists[Text(row, 0)].push_back({Text(row, 1), List(Text(row, 2), u'|')});
    });
}

void Loader::LoadCalculation()
{
    Each(u"item, code, kind, rule"_s, u"calculation_rules"_s, [&](const Row& row) {
        const CString item = Text(row, 0);
        m_data.rules.insert(item, {Text(row, 1), Number(row, 2), Text(row, 3), item});
    });
    Each(u"category, list_name, item"_s, u"calculation_items"_s, [&](const Row& row) {
        SmallCategory& category = Category(Text(row, 0));
        (Text(row, 1) == u"main"_s ? category.mainItems : category.otherItems).append(Text(row, 2));
    });
}

} // namespace

CatalogueData ReadCatalogue(Database& database)
{
    return Loader(database).Load();
}

bool HasSpecialty(const CatalogueData& data, const CString& name)
{
    return std::any_of(data.specialties.begin(), data.specialties.end(),
                       [&](const Specialty& specialty) { return specialty.name == name; });
}

} // namespace embedded
