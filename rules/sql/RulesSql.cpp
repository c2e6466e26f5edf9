#include "rules/sql/RulesSql.h"

#include "rules/sql/ReadingSteps.h"
#include "rules/sql/SqlPlan.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

const CString Table = u"components"_s;
const CString ChosenStep = u"chosen"_s;
const CString CountedStep = u"counted"_s;
/// Columns of the query beside those of the cells.
const CString IdName = u"component_id"_s;
const CString CategoryTextName = u"component_category"_s;
const CString RuleKey = u"rule_key"_s;
const CStringArray RuleColumns{RuleKey, u"place"_s, u"is_default"_s, u"conditions"_s};
const CStringArray ItemColumns{RuleKey,   u"place"_s, u"bill_number"_s, u"number"_s,       u"name"_s,
                               u"unit"_s, u"code"_s,  u"formula"_s,     u"with_fittings"_s};

/// A text of the rules in the answer, where it is told and not compared: what no database can hold is left
/// out of it.
CString Told(const CString& text, const Dialect& dialect)
{
    if (Dialect::CanHold(text)) return dialect.Literal(text);
    CString known = CString::fromUtf8(text.toUtf8()); // half surrogate pairs become question marks
    return dialect.Literal(known.remove(QChar(u'\0')));
}

/// Rows as a table with named columns; without any row one that has none.
CString TableText(const CString& name, const CStringArray& columns, const CStringArray& rows)
{
    const CString head = name + u'(' + columns.join(u", "_s) + u") AS (\n  "_s;
    if (!rows.isEmpty()) return head + u"VALUES "_s + rows.join(u",\n    "_s) + u')';
    CStringArray none{u"0"_s, u"0"_s};
    while (none.size() < columns.size())
        none.append(u"''"_s);
    return head + u"SELECT "_s + none.join(u", "_s) + u" WHERE 1 = 0)"_s;
}

CString RuleRow(const Rule& rule, std::size_t key, std::size_t place, const Dialect& dialect)
{
    return u'(' +
           CStringArray{CString::number(key), CString::number(place), rule.isDefault ? u"'是'"_s : u"'否'"_s,
                        Told(rule.Text(), dialect)}
               .join(u", "_s) +
           u')';
}

/// The rows of one rule's items.
class ItemRows
{
public:
    ItemRows(std::size_t key, const SqlOptions& options, CStringArray& rows)
        : m_key(key), m_options(options), m_dialect(options.dialect), m_rows(rows)
    {
    }

    void Add(const Rule& rule)
    {
        if (!m_options.isBill) return AddQuotas(rule.quotas, u"NULL"_s);
        for (const BillItem& bill : rule.bills) {
            if (!IsSameLibrary(bill.record.strQdCode, m_options.billLibrary)) continue;
            const QdStruct& record = bill.record;
            Append(u"NULL"_s, {record.strQdId, record.strName, record.strUnit, record.strQdCode,
                               record.strFormula, record.strAnnex});
            AddQuotas(bill.quotas, Told(record.strQdId, m_dialect));
        }
    }

private:
    /// As the editor compares codes of libraries.
    static bool IsSameLibrary(const CString& a, const CString& b)
    {
        return a.compare(b, Qt::CaseInsensitive) == 0;
    }

    void AddQuotas(const std::vector<QuotaItem>& quotas, const CString& billNumber)
    {
        for (const QuotaItem& quota : quotas) {
            const DeStruct& record = quota.record;
            if (IsSameLibrary(record.strDeCode, m_options.quotaLibrary))
                Append(billNumber, {record.strDeId, record.strName, record.strUnit, record.strDeCode,
                                    record.strFormula, record.strAnnex});
        }
    }

    void Append(const CString& billNumber, const CStringArray& texts)
    {
        CStringArray row{CString::number(m_key), CString::number(++m_place), billNumber};
        for (const CString& text : texts)
            row.append(Told(text, m_dialect));
        m_rows.append(u'(' + row.join(u", "_s) + u')');
    }

    std::size_t m_key;
    const SqlOptions& m_options;
    Dialect m_dialect;
    CStringArray& m_rows;
    std::size_t m_place = 0;
};

/// The rules and their items as two tables of the query.
CStringArray ConstantTables(const SqlPlan& plan, const SqlOptions& options)
{
    const Dialect dialect(options.dialect);
    CStringArray rules;
    CStringArray items;
    for (const SqlPlan::Category& planned : plan.categories) {
        std::size_t place = 0;
        for (const Rule& rule : planned.category->rules) {
            const std::size_t key = planned.firstKey + place++;
            rules.append(RuleRow(rule, key, place, dialect));
            ItemRows(key, options, items).Add(rule);
        }
    }
    // A column of nothing but NULL has no type: one row that is never met tells what it is.
    items.prepend(u"(0, 0, '', '', '', '', '', '', '')"_s);
    return {TableText(u"rule_list"_s, RuleColumns, rules), TableText(u"item_list"_s, ItemColumns, items)};
}

/// Which number the component's category has, null when the rules do not know it.
CString CategoryChoice(const SqlPlan& plan, const Dialect& dialect)
{
    if (plan.categories.empty()) return u"CAST(NULL AS INTEGER)"_s;
    CString choice = u"CASE "_s + CellExpression(CategoryHeading, dialect);
    for (std::size_t i = 0; i < plan.categories.size(); ++i)
        choice += u"\n    WHEN "_s + dialect.Literal(plan.categories[i].category->text) + u" THEN "_s +
                  CString::number(i + 1);
    return choice + u" END"_s;
}

CString RuleChoice(const SqlPlan& plan)
{
    CString choice;
    for (std::size_t i = 0; i < plan.categories.size(); ++i) {
        const SqlPlan::Category& planned = plan.categories[i];
        const CString otherwise = planned.defaultKey ? CString::number(*planned.defaultKey) : u"NULL"_s;
        choice += u"\n    WHEN "_s + CString::number(i + 1) + u" THEN "_s +
                  ChoiceOf(planned.tested, plan.columns, otherwise);
    }
    if (choice.isEmpty()) return u"CAST(NULL AS INTEGER)"_s;
    // The type stands within, not around: a cast around would give SQLite's column an affinity that the list
    // of rules has not, and that list would be read through for every component instead of looked up.
    return u"CASE "_s + CategoryName + choice + u" ELSE CAST(NULL AS INTEGER) END"_s;
}

/// The text in one line, so that it stays in its comment.
CString InOneLine(const CString& text)
{
    CString line = text;
    for (QChar& c : line)
        if (c < u' ' || c == QChar(0x7F) || c == QChar(0x85) || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
    return line;
}

CString Comment(const SqlPlan& plan, const Dialect& dialect)
{
    CStringArray columns;
    const auto add = [&](const CString& name) {
        const CString column = InOneLine(dialect.Name(name)) + u" text"_s;
        if (!columns.contains(column)) columns.append(column);
    };
    for (const CString& heading : {IdHeading, CategoryHeading})
        add(heading);
    for (const Column& column : plan.columns)
        add(column.Name());
    CString text =
        u"-- 构件表一行一个构件，至少有下面各列；没有的属性为 NULL 或空白。见手册 docs/rules-sql.md。\n"
        "-- CREATE TABLE %1 ("_s.arg(Table) +
        columns.join(u", "_s) + u");\n"_s;
    for (const auto& [attribute, index] : plan.columnByAttribute)
        if (plan.columns[index].Name() != attribute)
            text += u"-- "_s + InOneLine(dialect.Name(plan.columns[index].Name())) + u"：属性 "_s +
                    InOneLine(attribute) + u'\n';
    return text;
}

/// SQLite takes a query over many queries for a few rows, and reads the rules through for each of them
/// instead of looking them up. The table itself beside it, of which no row comes, tells that there are many.
CString CountedTable(const Dialect& dialect)
{
    const CStringArray columns{IdName, CategoryTextName, RuleKey};
    return u"%1 AS (\n  SELECT %2 FROM %3\n  UNION ALL SELECT NULL, NULL, NULL FROM %4 WHERE 1 = 0%5)"_s.arg(
        CountedStep, columns.join(u", "_s), ChosenStep, dialect.Name(Table), dialect.EndOfStep());
}

/// The answer: every component with its rule, a row for each of its items.
CString FinalSelect(const CString& last)
{
    return u"SELECT c.%1 AS \"构件编号\", c.%2 AS \"类别\", r.place AS \"规则\", r.conditions AS \"条件\",\n"
           "  r.is_default AS \"默认规则\", i.place AS \"项\", i.bill_number AS \"所属清单\",\n"
           "  i.number AS \"编码\", i.name AS \"名称\", i.unit AS \"单位\", i.code AS \"库\",\n"
           "  i.formula AS \"计算式\", i.with_fittings AS \"带管道配件\"\n"
           "FROM %3 AS c\n"
           "LEFT JOIN rule_list AS r ON r.rule_key = c.rule_key\n"
           "LEFT JOIN item_list AS i ON i.rule_key = c.rule_key;\n"_s.arg(IdName, CategoryTextName, last);
}

} // namespace

CString RulesSql(const Configuration& configuration, const CatalogueFacts& facts, const SqlOptions& options)
{
    const Dialect dialect(options.dialect);
    const SqlPlan plan(configuration, facts, options);
    StepList steps(ReadingStepNames(plan.columns) + CStringArray{ChosenStep});
    const CString first = ReadingStepNames(plan.columns).first();
    steps.Define(first, IdName, SourceName + u'.' + dialect.Name(IdHeading));
    steps.Define(first, CategoryTextName, SourceName + u'.' + dialect.Name(CategoryHeading));
    steps.Define(first, CategoryName, CategoryChoice(plan, dialect));
    CStringArray kinds{CategoryName};
    for (const Column& column : plan.columns) {
        AddReadingSteps(steps, column, dialect);
        if (column.HasValues()) kinds.append(column.Named(u't'));
        if (!column.Numbers().empty()) kinds.append(column.Named(u'n'));
        if (column.HasRanges()) kinds.append(column.Named(u'r'));
    }
    steps.Define(ChosenStep, RuleKey, RuleChoice(plan), kinds);
    CString source = dialect.Name(Table) + u" AS "_s + SourceName;
    if (!options.category.isEmpty() && Dialect::CanHold(options.category))
        source += u" WHERE "_s + CellExpression(CategoryHeading, dialect) + u" = "_s +
                  dialect.Literal(options.category);
    CStringArray tables = steps.Text({IdName, CategoryTextName, RuleKey}, source, dialect);
    const bool isCounted = options.dialect == SqlDialect::Sqlite;
    if (isCounted) tables.append(CountedTable(dialect));
    tables += ConstantTables(plan, options);
    return Comment(plan, dialect) + u"WITH "_s + tables.join(u",\n"_s) + u'\n' +
           FinalSelect(isCounted ? CountedStep : ChosenStep);
}

std::map<CString, CString> SqlColumns(const Configuration& configuration, const CatalogueFacts& facts,
                                      const SqlOptions& options)
{
    const SqlPlan plan(configuration, facts, options);
    std::map<CString, CString> names;
    for (const auto& [attribute, index] : plan.columnByAttribute)
        names.emplace(attribute, plan.columns[index].Name());
    return names;
}

} // namespace rules
