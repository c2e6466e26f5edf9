#include "bench/MatchFigures.h"

#include "bench/Measure.h"
#include "rules/match/Matching.h"
#include "rules/sql/RulesSql.h"
#include "tests/rules/reference/ReferenceMatcher.h"

#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

#include <QtCore/QVariant>

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr std::size_t Components = 1'000'000;
constexpr std::size_t Sample = 500;
constexpr std::size_t SqlSample = 100'000;
constexpr std::size_t ManyRules = 3'700;
constexpr std::size_t FewRules = 370;

const CString Material = u"材质"_s;
const CString Diameter = u"公称直径"_s;
const CString Connection = u"连接方式"_s;
const CStringArray Headers{Material, Diameter, Connection};
constexpr std::array Bounds{0, 15, 20, 25, 32, 40, 50, 65, 80, 100, 125, 150, 200, 250, 300, 350};
constexpr std::size_t Materials = 20;

rules::Condition Is(const CString& attribute, const CString& value)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.equalOperator = u"＝"_s;
    condition.value = value;
    return condition;
}

rules::Condition Between(const CString& attribute, int lower, int upper)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.isValueForm = false;
    condition.lowerOperator = u"＞"_s;
    condition.lowerBound = QString::number(lower);
    condition.upperOperator = u"≤"_s;
    condition.upperBound = QString::number(upper);
    return condition;
}

CString MaterialName(std::size_t index)
{
    return u"镀锌钢管%1型"_s.arg(index);
}

CString ConnectionName(std::size_t index)
{
    return u"沟槽连接%1"_s.arg(index);
}

/// A category with every combination of material, diameter range and connection, and components drawn from
/// these values alike; one in twenty has a material that no rule knows.
struct Work
{
    rules::SmallCategoryPtr category;
    std::vector<std::array<CString, 3>> components;

    explicit Work(std::size_t ruleCount)
    {
        auto made = std::make_shared<rules::SmallCategory>();
        const std::size_t ranges = Bounds.size() - 1;
        for (std::size_t i = 0; i < ruleCount; ++i) {
            rules::Rule rule;
            const std::size_t range = i / Materials % ranges;
            rule.conditions = {Is(Material, MaterialName(i % Materials)),
                               Between(Diameter, Bounds[range], Bounds[range + 1]),
                               Is(Connection, ConnectionName(i / Materials / ranges))};
            made->rules.push_back(std::move(rule));
        }
        made->rules.emplace_back().isDefault = true;
        category = std::move(made);

        const std::size_t connections = (ruleCount - 1) / Materials / ranges + 1;
        std::mt19937 random(20'240'601);
        components.reserve(Components);
        for (std::size_t i = 0; i < Components; ++i)
            components.push_back({MaterialName(random() % (Materials + 1)),
                                  QString::number(Bounds[1 + random() % ranges]),
                                  ConnectionName(random() % connections)});
    }
};

/// Compiles the rules and matches all components from their texts.
void MatchAll(const Work& work)
{
    rules::Matching matching(
        std::make_shared<const rules::CategoryMatcher>(work.category, rules::CategoryFacts()));
    std::uint64_t sum = 0;
    std::array<rules::Matching::Value, 3> values{};
    for (const std::array<CString, 3>& cells : work.components) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            values[i] = matching.Resolve(i, cells[i]);
        sum += static_cast<std::uint64_t>(matching.Match(values));
    }
    Keep(&sum);
}

void MatchSample(const Work& work)
{
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < Sample; ++i) {
        test::Component component;
        for (std::size_t attribute = 0; attribute < 3; ++attribute)
            component.cells[Headers[static_cast<qsizetype>(attribute)]] = work.components[i][attribute];
        sum += test::ReferenceMatch(work.category->rules, {}, component);
    }
    Keep(&sum);
}

/// SQLite in memory with a table of the components and the query that decides them.
class SqlPeer
{
public:
    explicit SqlPeer(const Work& work) : m_database(QSqlDatabase::addDatabase(u"QSQLITE"_s, Connection))
    {
        auto category = std::make_shared<rules::SmallCategory>(*work.category);
        category->text = u"给排水\\管道\\给水管"_s;
        const rules::Configuration configuration({{1, u"给排水"_s, {{1, u"管道"_s, {category}}}}});
        rules::SqlOptions options;
        options.dialect = rules::SqlDialect::Sqlite;
        m_sql = rules::RulesSql(configuration, {}, options);
        m_database.setDatabaseName(u":memory:"_s);
        if (!m_database.open()) throw std::runtime_error(m_database.lastError().text().toStdString());
        Run(u"CREATE TABLE components (构件编号 text, 类别 text, 材质 text, 公称直径 text, 连接方式 text)"_s);
        Run(u"BEGIN"_s);
        QSqlQuery insert(m_database);
        insert.prepare(u"INSERT INTO components VALUES (?, ?, ?, ?, ?)"_s);
        for (std::size_t i = 0; i < SqlSample; ++i) {
            insert.bindValue(0, QString::number(i));
            insert.bindValue(1, category->text);
            for (int cell = 0; cell < 3; ++cell)
                insert.bindValue(2 + cell, work.components[i][static_cast<std::size_t>(cell)]);
            Check(insert, insert.exec());
        }
        insert.finish();
        Run(u"COMMIT"_s);
    }
    ~SqlPeer()
    {
        m_database = {};
        QSqlDatabase::removeDatabase(Connection);
    }
    SqlPeer(const SqlPeer&) = delete;
    SqlPeer& operator=(const SqlPeer&) = delete;

    /// The sum of the rules' places, over which the two are held together; only the sum leaves the database.
    std::int64_t SumOfRules()
    {
        QSqlQuery query(m_database);
        const CString select = m_sql.chopped(2); // without the semicolon and the line break
        Check(query, query.exec(u"SELECT sum(\"规则\") FROM ("_s + select + u')') && query.next());
        return query.value(0).toLongLong();
    }

private:
    static void Check(const QSqlQuery& query, bool done)
    {
        if (!done) throw std::runtime_error(query.lastError().text().toStdString());
    }
    void Run(const CString& sql)
    {
        QSqlQuery query(m_database);
        Check(query, query.exec(sql));
    }

    static inline const QString Connection = u"bench"_s;
    QSqlDatabase m_database;
    CString m_sql;
};

/// The same sum by the matcher.
std::int64_t SumOfRules(const Work& work, std::size_t count)
{
    rules::Matching matching(
        std::make_shared<const rules::CategoryMatcher>(work.category, rules::CategoryFacts()));
    std::int64_t sum = 0;
    std::array<rules::Matching::Value, 3> values{};
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t cell = 0; cell < values.size(); ++cell)
            values[cell] = matching.Resolve(cell, work.components[i][cell]);
        sum += matching.Match(values) + 1;
    }
    return sum;
}

} // namespace

bool Match(int rounds)
{
    const Work work(ManyRules);
    const Timed timed = Alternate(
        rounds, [&] { MatchAll(work); }, [&] { MatchSample(work); });
    const double peer = timed.peerMs * (static_cast<double>(Components) / Sample);
    return Report({"match", "reference_scaled", 0.02}, timed.oursMs, peer, timed.oursMs / peer);
}

bool MatchGrowth(int rounds)
{
    const Work many(ManyRules);
    const Work few(FewRules);
    const Timed timed = Alternate(
        rounds, [&] { MatchAll(many); }, [&] { MatchAll(few); });
    return Report({"match_growth", "370_rules", 1.5}, timed.oursMs, timed.peerMs, timed.Ratio());
}

bool ApplySql(int rounds)
{
    const Work work(ManyRules);
    SqlPeer peer(work);
    if (peer.SumOfRules() != SumOfRules(work, SqlSample))
        throw std::runtime_error("the query and the matcher decide differently");
    const Timed timed = Alternate(
        rounds, [&] { MatchAll(work); },
        [&] {
            const std::int64_t sum = peer.SumOfRules();
            Keep(&sum);
        });
    const double scaled = timed.peerMs * (static_cast<double>(Components) / SqlSample);
    return Report({"apply_sql", "sqlite_scaled", 0.05}, timed.oursMs, scaled, timed.oursMs / scaled);
}

} // namespace bench
