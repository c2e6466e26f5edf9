#include "cli/printing/RuleJson.h"

namespace cli {

namespace {

void WriteCondition(JsonWriter& json, const ConditionNode& condition)
{
    json.BeginObject();
    json.Key(u"id").Number(condition.GetId());
    json.Key(u"strCFType").Text(condition.GetCFType());
    json.Key(u"bEqual").Bool(condition.IsEqual());
    json.Key(u"strEqualoperator").Text(condition.GetEqualOperator());
    json.Key(u"strRangeoperator1").Text(condition.GetRangeOperator1());
    json.Key(u"strRangeoperator2").Text(condition.GetRangeOperator2());
    json.Key(u"strValue").Text(condition.GetValue());
    json.Key(u"strRange1").Text(condition.GetRange1());
    json.Key(u"strRange2").Text(condition.GetRange2());
    json.EndObject();
}

template <typename Node, typename Fields>
void WriteItemFields(JsonWriter& json, const Node& node, const Fields& fields)
{
    json.Key(u"id").Number(node.GetId());
    for (const auto& field : fields)
        json.Key(field.name).Text(node.GetRecord().*field.field);
}

void WriteQuotaItems(JsonWriter& json, const std::vector<DeNode*>& items)
{
    json.Key(u"de").BeginArray();
    for (const DeNode* item : items) {
        json.BeginObject();
        WriteItemFields(json, *item, DeFields);
        json.EndObject();
    }
    json.EndArray();
}

void WriteBillItem(JsonWriter& json, const QdNode& item)
{
    json.BeginObject();
    WriteItemFields(json, item, QdFields);
    json.Key(u"LastDeId").Number(item.GetLastDeId());
    WriteQuotaItems(json, item.GetDe());
    json.EndObject();
}

void WriteRule(JsonWriter& json, const ConfigNode& rule)
{
    json.BeginObject();
    json.Key(u"id").Number(rule.GetId());
    json.Key(u"bDefault").Bool(rule.IfDefault());
    json.Key(u"LastConditionId").Number(rule.GetLastConditionId());
    json.Key(u"LastQdId").Number(rule.GetLastQdId());
    json.Key(u"LastDeId").Number(rule.GetLastDeId());
    json.Key(u"text").Text(rule.GetConditionString());
    json.Key(u"conditions").BeginArray();
    for (const ConditionNode* condition : rule.GetCondition())
        WriteCondition(json, *condition);
    json.EndArray();
    json.Key(u"qd").BeginArray();
    for (const QdNode* item : rule.GetQd())
        WriteBillItem(json, *item);
    json.EndArray();
    WriteQuotaItems(json, rule.GetDe());
    json.EndObject();
}

} // namespace

void WriteRules(JsonWriter& json, const std::vector<ConfigNode*>& rules)
{
    json.BeginArray();
    for (const ConfigNode* rule : rules)
        WriteRule(json, *rule);
    json.EndArray();
}

} // namespace cli
