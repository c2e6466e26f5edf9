#include "embedded/data/catalogue/LibraryDatabase.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

using Row = QSqlQuery;

CString Text(const Row& row, int column)
{
    return row.value(column).toString();
}

int Number(const Row& row, int column)
{
    return row.value(column).toInt();
}

/// The sections of an item set, found by their key.
template <typename Section>
class Sections
{
public:
    Sections(Database& catalogue, CString items) : m_catalogue(catalogue), m_items(std::move(items)) {}

    /// Calls `row` for every row of a table that belongs to the set, in the order of insertion.
    void Each(const CString& columns, const CString& table, const std::function<void(const Row&)>& row)
    {
        m_catalogue.ForEach(u"SELECT %1 FROM %2 WHERE items = ? ORDER BY %3"_s.arg(
                                columns, table, m_catalogue.InsertionOrder()),
                            {m_items}, row);
    }
    void Add(const CString& key, Section section)
    {
        m_places.insert(key, m_sections.size());
        m_sections.push_back(std::move(section));
    }
    /// The section of a key; a damaged database may name one that is missing.
    Section& At(const CString& key)
    {
        const auto place = m_places.constFind(key);
        if (place == m_places.constEnd()) m_catalogue.Fail(u"数据库已损坏（没有名为“%1”的记录）"_s.arg(key));
        return m_sections[*place];
    }
    std::vector<Section> Take() { return std::move(m_sections); }

private:
    Database& m_catalogue;
    CString m_items;
    std::vector<Section> m_sections;
    QHash<CString, std::size_t> m_places;
};

std::vector<BillSection> ReadBills(Database& catalogue, const CString& items)
{
    Sections<BillSection> sections(catalogue, items);
    sections.Each(u"index_path, title"_s, u"bill_sections"_s, [&](const Row& row) {
        sections.Add(Text(row, 0), {Text(row, 0), Text(row, 1), {}});
    });
    sections.Each(u"number, name, unit, unit_code, with_annex, cal_rule, index_path"_s, u"bill_items"_s,
                  [&](const Row& row) {
                      SQdInfo item;
                      item.strNumber = Text(row, 0);
                      item.strName = Text(row, 1);
                      item.strUnit = Text(row, 2);
                      item.nUnitCode = Number(row, 3);
                      item.nWithAnnex = Number(row, 4);
                      item.strCalRule = Text(row, 5);
                      sections.At(Text(row, 6)).items.push_back(item);
                  });
    return sections.Take();
}

std::vector<QuotaSection> ReadQuotas(Database& catalogue, const CString& items, bool withGuide)
{
    Sections<QuotaSection> sections(catalogue, items);
    sections.Each(u"code, title"_s, u"quota_sections"_s, [&](const Row& row) {
        sections.Add(Text(row, 0), {Text(row, 0), Text(row, 1), {}});
    });
    sections.Each(u"number, name, unit, unit_code, with_annex, cal_rule, section, bills"_s, u"quota_items"_s,
                  [&](const Row& row) {
                      QuotaItem item;
                      item.record = {Number(row, 3), Number(row, 4), Text(row, 0),
                                     Text(row, 1),   Text(row, 2),   Text(row, 5)};
                      if (withGuide) item.bills = Text(row, 7).split(u',', Qt::SkipEmptyParts);
                      sections.At(Text(row, 6)).items.push_back(item);
                  });
    return sections.Take();
}

} // namespace

CArray<Library> ReadLibraries(Database& catalogue)
{
    CArray<Library> libraries;
    catalogue.ForEach(u"SELECT role, code, file_name, local, year, code_length, suffix_length, items, "
                      "bill_library FROM libraries ORDER BY %1"_s.arg(catalogue.InsertionOrder()),
                      {}, [&](const Row& row) {
                          const auto role = RoleOfWord(Text(row, 0));
                          if (!role)
                              catalogue.Fail(u"数据库已损坏（没有名为“%1”的记录）"_s.arg(Text(row, 0)));
                          const CString code = Text(row, 1);
                          const CString items = Text(row, 7);
                          libraries.append({*role,
                                            {code, Text(row, 2), Text(row, 3), Text(row, 4), Text(row, 8)},
                                            Number(row, 5),
                                            Number(row, 6),
                                            items.isEmpty() ? code : items});
                      });
    return libraries;
}

CStringArray ReadBillNumbers(Database& catalogue, const Library& bill)
{
    CStringArray numbers;
    catalogue.ForEach(u"SELECT number FROM bill_items WHERE items = ?"_s, {bill.items},
                      [&](const Row& row) { numbers.append(Text(row, 0)); });
    return numbers;
}

LibraryContents ReadContents(Database& catalogue, const CArray<Library>& libraries, const Library& bill,
                             const Library& quota)
{
    const bool isGuideOfBill = ItemsOfGuide(libraries, quota) == bill.items;
    return {ReadBills(catalogue, bill.items), ReadQuotas(catalogue, quota.items, isGuideOfBill)};
}

} // namespace embedded
