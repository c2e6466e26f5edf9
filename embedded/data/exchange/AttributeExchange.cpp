#include "embedded/data/exchange/AttributeExchange.h"

#include "embedded/data/catalogue/AttributeUnits.h"
#include "embedded/data/exchange/SharedColumns.h"
#include "xml/Dom.h"

#include <QtCore/QSet>
#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString DisplayName = u"display_name"_s;
const CString ListName = u"list_name"_s;
const CString Values = u"values"_s;

/// Where the values of a code come from.
const CString FreeEntry = u"0"_s;
const CString OwnValues = u"1"_s;
const CString DropLists = u"9"_s;

CArray<CStringArray> Kinds()
{
    return {{FreeEntry, u"自由填写"_s}, {OwnValues, u"固定值"_s}, {DropLists, u"值表"_s}};
}

CString KeyOf(const CString& category, const CString& code)
{
    return category + u'\n' + code;
}

/// Attributes of small categories, one a row, each with where the values of its code come from.
class AttributeExchange final : public TableExchange
{
public:
    AttributeExchange();
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    void Clear() override;

    KeyedTable::Change TakeSource(const ImportRow& row, const CString& code, const CString& list);
    KeyedTable::Change TakeListed(const ImportRow& row, const CString& code, const CString& list,
                                  const CString& values);
    CString ValuesOf(const CString& code, const CString& kind, const CString& list) const;

    KeyedTable m_attributes;
    KeyedTable m_cells;
    KeyedTable m_lists;
    QSet<CString> m_categories;
    QSet<CString> m_listedCodes; ///< that have a list
    QHash<CString, int> m_lines; ///< of the attributes that the file holds, by category and code
    SeenKeys m_seen;
    SeenKeys m_agreed;
};

AttributeExchange::AttributeExchange()
    : TableExchange({{Category, u"类别"_s, true, true},
                     {u"group_name"_s, u"分组"_s},
                     {DisplayName, u"属性"_s, true},
                     {Code, u"代码"_s, true, true},
                     {Kind, u"取值方式"_s},
                     {ListName, u"值表"_s},
                     {Values, u"值"_s},
                     {Unit, u"单位"_s}}),
      m_attributes(u"attributes"_s, {Category, Code, u"group_name"_s, DisplayName, u"extra"_s, Unit}, 2),
      m_cells(u"cell_data"_s, {Code, Kind, u"value_list"_s}, 1),
      m_lists(u"drop_lists"_s, {Code, u"name"_s, u"value_list"_s}, 2)
{
}

void AttributeExchange::Load(Database& database)
{
    for (KeyedTable* table : {&m_attributes, &m_cells, &m_lists})
        table->Load(database);
    KeyedTable smalls(u"small_categories"_s, {u"specialty"_s, u"big_category"_s, u"name"_s}, 3);
    smalls.Load(database);
    for (const CStringArray& small : smalls.Rows())
        m_categories.insert(small.join(u'\\'));
    for (const CStringArray& list : m_lists.Rows())
        m_listedCodes.insert(list[0]);
}

CString AttributeExchange::ValuesOf(const CString& code, const CString& kind, const CString& list) const
{
    if (kind == OwnValues) return m_cells.Find({code}).value(2);
    return kind == DropLists ? m_lists.Find({code, list}).value(2) : CString();
}

QList<CStringArray> AttributeExchange::Rows() const
{
    QList<CStringArray> rows;
    for (const CStringArray& row : m_attributes.Rows()) {
        const CString kind = m_cells.Find({row[1]}).value(1);
        rows.append({row[0], row[2], row[3], row[1], kind, row[4], ValuesOf(row[1], kind, row[4]), row[5]});
    }
    return rows;
}

void AttributeExchange::Clear()
{
    m_attributes.Clear();
}

void AttributeExchange::Take(const ImportRow& row, ImportReport& report)
{
    const CString category = row.Key(Category);
    if (!m_categories.contains(category)) row.Refuse(Category, u"：没有小类“%1”"_s.arg(category));
    const CString code = row.Key(Code);
    if (!xml::IsName(code)) row.Refuse(Code, u"“%1”不能作为 XML 元素名，而属性代码要写成标签"_s.arg(code));
    if (code.contains(u':')) row.Refuse(Code, u"“%1”含有冒号，而属性代码要写成 XML 标签"_s.arg(code));
    m_seen.Take(KeyOf(category, code), row.Line());
    m_lines.insert(KeyOf(category, code), row.Line());

    const CStringArray loaded = m_attributes.FindLoaded({category, code});
    const CString list = row.Word(ListName, loaded.value(4));
    const CString name = row.Key(DisplayName);
    const CString unit = row.Word(Unit, loaded.isEmpty() ? ShippedUnitOf(name) : loaded.value(5));
    const auto change =
        m_attributes.Put({category, code, row.Text(u"group_name"_s, loaded.value(2)), name, list, unit});
    Count(Stronger(change, TakeSource(row, code, list)), report);
}

/// All rows of a code must say the same of its values, and those of the same list the same of the list.
KeyedTable::Change AttributeExchange::TakeSource(const ImportRow& row, const CString& code,
                                                 const CString& list)
{
    const CString known = m_cells.Find({code}).value(1);
    const CString values = row.Text(Values);
    const CString guess = values.isEmpty() ? FreeEntry : list.isEmpty() ? OwnValues : DropLists;
    const CString usual = known.isEmpty() ? guess : known;
    const CString kind = row.Choice(Kind, Kinds(), usual, usual);
    m_agreed.Agree(code, kind, row.Line());
    if (kind == DropLists) return TakeListed(row, code, list, values);
    if (kind == FreeEntry) {
        if (!values.isEmpty()) row.Refuse(Values, u"应为空：取值方式 0 没有值"_s);
        return m_cells.Put({code, kind, {}});
    }
    const CString own = values.isEmpty() && known == OwnValues ? m_cells.Find({code}).value(2) : values;
    if (own.isEmpty()) row.Refuse(Values, u"不能为空：取值方式 1 要写明各个值"_s);
    m_agreed.Agree(code + u" 的值"_s, own, row.Line());
    return m_cells.Put({code, kind, own});
}

KeyedTable::Change AttributeExchange::TakeListed(const ImportRow& row, const CString& code,
                                                 const CString& list, const CString& values)
{
    const auto change = m_cells.Put({code, DropLists, m_cells.Find({code}).value(2)});
    if (values.isEmpty()) {
        if (!m_listedCodes.contains(code)) row.Refuse(Values, u"不能为空：代码 %1 还没有值表"_s.arg(code));
        return change;
    }
    if (list.isEmpty()) row.Refuse(ListName, u"不能为空：取值方式 9 的值属于一个值表"_s);
    m_agreed.Agree(code + u" 的值表 "_s + list, values, row.Line());
    m_listedCodes.insert(code);
    return Stronger(change, m_lists.Put({code, list, values}));
}

/// A new condition takes the place of an older one whose text holds the attribute's name, so that the names
/// of a category must not hold each other.
void AttributeExchange::Finish(ImportReport& report)
{
    QHash<CString, QList<CStringArray>> byCategory;
    for (const CStringArray& row : m_attributes.Rows())
        byCategory[row[0]].append(row);
    for (const CStringArray& row : m_attributes.Rows()) {
        const auto line = m_lines.constFind(KeyOf(row[0], row[1]));
        if (line == m_lines.constEnd()) continue;
        for (const CStringArray& other : std::as_const(byCategory[row[0]])) {
            if (other[1] == row[1] || (!other[3].contains(row[3]) && !row[3].contains(other[3]))) continue;
            report.refused.append(
                {*line, u"属性“%1”和同一小类的属性“%2”，名称一个包含另一个"_s.arg(row[3], other[3])});
            break;
        }
    }
    if (Replaces()) report.removed = m_attributes.CountVanished();
}

QList<const KeyedTable*> AttributeExchange::Tables() const
{
    return {&m_attributes, &m_cells, &m_lists};
}

} // namespace

std::unique_ptr<TableExchange> MakeAttributeExchange()
{
    return std::make_unique<AttributeExchange>();
}

} // namespace embedded
