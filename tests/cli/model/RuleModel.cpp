#include "cli/model/RuleModel.h"

#include <QtCore/QJsonObject>

using namespace Qt::StringLiterals;

namespace test::model {

namespace {

QStringList ConditionFieldNames()
{
    return {u"strCFType"_s, u"strEqualoperator"_s, u"strRangeoperator1"_s, u"strRangeoperator2"_s,
            u"strValue"_s,  u"strRange1"_s,        u"strRange2"_s};
}

QString Field(const Fields& fields, const QString& name)
{
    for (const auto& [key, value] : fields)
        if (key == name) return value;
    return {};
}

QString ConditionText(const Condition& condition)
{
    const auto field = [&](const QString& name) { return Field(condition.fields, name); };
    const QString attribute = field(u"strCFType"_s);
    if (condition.equal) return attribute + field(u"strEqualoperator"_s) + field(u"strValue"_s);
    const QString low = field(u"strRange1"_s);
    const QString high = field(u"strRange2"_s);
    if (!low.isEmpty() && !high.isEmpty()) {
        const QString mirrored = field(u"strRangeoperator1"_s) == u"＞" ? u"＜"_s : u"≤"_s;
        return low + mirrored + attribute + field(u"strRangeoperator2"_s) + high;
    }
    if (!low.isEmpty()) return attribute + field(u"strRangeoperator1"_s) + low;
    if (!high.isEmpty()) return attribute + field(u"strRangeoperator2"_s) + high;
    return attribute;
}

QString RuleText(const Rule& rule)
{
    if (rule.isDefault) return u"其它"_s;
    QString text;
    for (const Condition& condition : rule.conditions)
        text += ConditionText(condition) + u';';
    return text;
}

QJsonObject FieldsJson(int id, const Fields& fields)
{
    QJsonObject object{{u"id"_s, id}};
    for (const auto& [key, value] : fields)
        object.insert(key, value);
    return object;
}

QJsonArray QuotasJson(const std::vector<Quota>& quotas)
{
    QJsonArray array;
    for (const Quota& quota : quotas)
        array.append(FieldsJson(quota.id, quota.fields));
    return array;
}

QJsonObject RuleJson(const Rule& rule)
{
    QJsonArray conditions;
    for (const Condition& condition : rule.conditions) {
        QJsonObject object = FieldsJson(condition.id, condition.fields);
        object.insert(u"bEqual"_s, condition.equal);
        conditions.append(object);
    }
    QJsonArray bills;
    for (const Bill& bill : rule.bills) {
        QJsonObject object = FieldsJson(bill.id, bill.fields);
        object.insert(u"LastDeId"_s, bill.lastDe);
        object.insert(u"de"_s, QuotasJson(bill.quotas));
        bills.append(object);
    }
    return {{u"id"_s, rule.id},
            {u"bDefault"_s, rule.isDefault},
            {u"LastConditionId"_s, rule.lastCondition},
            {u"LastQdId"_s, rule.lastQd},
            {u"LastDeId"_s, rule.lastDe},
            {u"text"_s, RuleText(rule)},
            {u"conditions"_s, conditions},
            {u"qd"_s, bills},
            {u"de"_s, QuotasJson(rule.quotas)}};
}

} // namespace

QStringList QdFieldNames()
{
    return {u"strQdId"_s,   u"strQdIdUser"_s, u"strName"_s,    u"strUnit"_s, u"strUnitCode"_s,
            u"strtypeid"_s, u"strQdCode"_s,   u"strFormula"_s, u"strAnnex"_s};
}

QStringList DeFieldNames()
{
    return {u"strName"_s,   u"strUnit"_s,    u"strUnitCode"_s, u"strDeId"_s,
            u"strDeCode"_s, u"strFormula"_s, u"strAnnex"_s};
}

Fields FillFields(const QStringList& names, const QMap<QString, QString>& given)
{
    Fields fields;
    for (const QString& name : names)
        fields.append({name, given.value(name, u""_s)});
    return fields;
}

Condition MakeCondition(const QStringList& texts)
{
    Condition condition;
    // The generator writes the flag as plain digits only.
    condition.equal = texts[1].toInt() != 0;
    const QList<int> places{0, 2, 3, 4, 5, 6, 7};
    const QStringList names = ConditionFieldNames();
    for (qsizetype i = 0; i < names.size(); ++i)
        condition.fields.append({names[i], texts[places[i]]});
    return condition;
}

QJsonArray RulesJson(const std::vector<Rule>& rules)
{
    QJsonArray array;
    for (const Rule& rule : rules)
        array.append(RuleJson(rule));
    return array;
}

} // namespace test::model
