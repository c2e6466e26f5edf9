#include "cli/model/RequestGenerator.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace test::model {

namespace {

struct Weight
{
    QString op;
    int weight;
};

/// Adding and deleting are in balance, so that lists stay short and are empty now and then.
const QList<Weight>& Weights()
{
    static const QList<Weight> weights{
        {u"AddConfig"_s, 11},
        {u"AddConfigByCopy"_s, 6},
        {u"DelConfig"_s, 12},
        {u"MoveUpConfig"_s, 9},
        {u"MoveDownConfig"_s, 9},
        {u"AddCondition"_s, 12},
        {u"ResetCondition"_s, 5},
        {u"DelCondition"_s, 6},
        {u"AddQd"_s, 14},
        {u"ResetQd"_s, 6},
        {u"DelQd"_s, 3},
        {u"AddDe2QdNode"_s, 18},
        {u"AddDe2ConfigNode"_s, 8},
        {u"ResetDeToQd"_s, 10},
        {u"ResetDeToConfig"_s, 4},
        {u"DelDeInQdNode"_s, 4},
        {u"DelDeInConfigNode"_s, 4},
        {u"GetConfig"_s, 5},
        {u"GetExistQdIndex"_s, 3},
        {u"Save"_s, 3},
        {u"SaveAs"_s, 1},
        {u"ReLoad"_s, 3},
        {u"NewFile"_s, 1},
    };
    return weights;
}

} // namespace

QJsonObject RequestGenerator::Next(const Tree& rules)
{
    int place = Below(std::accumulate(Weights().begin(), Weights().end(), 0,
                                      [](int sum, const Weight& weight) { return sum + weight.weight; }));
    const auto chosen = std::find_if(Weights().begin(), Weights().end(),
                                     [&](const Weight& weight) { return (place -= weight.weight) < 0; });
    const QString op = chosen->op;
    QJsonObject request{{u"op"_s, op}};
    if (op == u"Save") return request;
    if (op == u"SaveAs" || op == u"ReLoad" || op == u"NewFile") {
        // The last path is that of a file that never exists and may only be asked for.
        const int count = static_cast<int>(m_files.size());
        request.insert(u"file"_s, m_files[Below(op == u"ReLoad" ? count : count - 1)]);
        return request;
    }
    const Small* small = nullptr;
    QJsonObject path = CategoryPath(rules, small);
    CompletePath(op, *small, path);
    request.insert(u"path"_s, path);
    if (op == u"AddCondition" || op == u"ResetCondition") request.insert(u"array"_s, ConditionArray());
    if (op == u"AddQd" || op == u"ResetQd") request.insert(u"qd"_s, Record(QdFieldNames()));
    if (op.startsWith(u"AddDe2") || op.startsWith(u"ResetDe"))
        request.insert(u"de"_s, Record(DeFieldNames()));
    if (op == u"DelQd" || op == u"DelDeInConfigNode") request.insert(u"ids"_s, SomeIds(8));
    if (op == u"DelDeInQdNode")
        request.insert(u"deIdsByQd"_s, QJsonObject{{QString::number(1 + Below(4)), SomeIds(4)},
                                                   {QString::number(5 + Below(4)), SomeIds(4)}});
    return request;
}

int RequestGenerator::Below(int limit)
{
    return static_cast<int>(m_random() % static_cast<unsigned>(limit));
}

QString RequestGenerator::Text()
{
    static const QStringList texts{
        u""_s,           u"DN25"_s,      u"镀锌钢管"_s,       u"＝"_s,     u"＞"_s, u"≥"_s,  u"≤"_s,
        u"a<b>&\"c'd"_s, u" 首尾 "_s,    u"一\n二\t三\r四"_s, u"𠮷野家"_s, u"10"_s, u"是"_s, u"]]>"_s,
        u"&amp;"_s,      u"\\反斜杠\\"_s};
    return texts[Below(static_cast<int>(texts.size()))];
}

template <typename Node>
int RequestGenerator::SomeId(const std::vector<Node>& nodes)
{
    if (nodes.empty() || Chance(6)) return Below(30) - 2;
    return nodes[static_cast<std::size_t>(Below(static_cast<int>(nodes.size())))].id;
}

QJsonArray RequestGenerator::SomeIds(int highest)
{
    QJsonArray ids;
    for (int count = Below(3); count > 0; --count)
        ids.append(Below(highest + 1));
    return ids;
}

QJsonArray RequestGenerator::ConditionArray()
{
    const int size = Chance(5) ? Below(8) : 8 + Below(2);
    QJsonArray array;
    for (int i = 0; i < size; ++i)
        array.append(i == 1 ? QString::number(Below(3)) : Text());
    return array;
}

QJsonObject RequestGenerator::Record(const QStringList& names)
{
    QJsonObject record;
    for (const QString& name : names)
        record.insert(name, Chance(80) ? Text() : QString()); // one that is not named comes from the library
    return record;
}

/// One of the first three small categories, so that their lists grow, now and then behind a wrong id.
QJsonObject RequestGenerator::CategoryPath(const Tree& rules, const Small*& small)
{
    const Big& big = rules.bigs[static_cast<std::size_t>(Below(2))];
    small = &big.smalls[static_cast<std::size_t>(Below(2))];
    QJsonObject path{{u"specId"_s, rules.id}, {u"lMemberId"_s, big.id}, {u"sMemberId"_s, small->id}};
    if (Chance(3)) {
        const QStringList keys = path.keys();
        path.insert(keys[Below(static_cast<int>(keys.size()))], 99999);
    } else if (Chance(30)) {
        path = {{u"category"_s, rules.name + u'\\' + big.name + u'\\' + small->name},
                {u"specId"_s, rules.id},
                {u"lMemberId"_s, big.id},
                {u"sMemberId"_s, small->id}};
    }
    return path;
}

void RequestGenerator::CompletePath(const QString& op, const Small& small, QJsonObject& path)
{
    if (op == u"GetConfig" && Chance(50)) return;
    const int ruleId = SomeId(small.rules);
    path.insert(u"configId"_s, ruleId);
    const auto rule = std::find_if(small.rules.begin(), small.rules.end(),
                                   [&](const Rule& entry) { return entry.id == ruleId; });
    if (rule == small.rules.end()) return;
    path.insert(u"conditionId"_s, SomeId(rule->conditions));
    const int billId = SomeId(rule->bills);
    path.insert(u"qdId"_s, billId);
    const auto bill = std::find_if(rule->bills.begin(), rule->bills.end(),
                                   [&](const Bill& entry) { return entry.id == billId; });
    const bool underBill = op.contains(u"Qd") && bill != rule->bills.end();
    path.insert(u"deId"_s, SomeId(underBill ? bill->quotas : rule->quotas));
}

} // namespace test::model
