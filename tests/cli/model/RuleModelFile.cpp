#include "cli/model/RuleModel.h"

#include <algorithm>

using namespace Qt::StringLiterals;

// How rules stand in a file: reader and writer differ in places, and the differences are the point.
namespace test::model {

namespace {

Fields ReadFields(const XmlTree& element, const QStringList& names)
{
    Fields fields;
    for (const QString& name : names)
        fields.append({name, element.Attribute(name)});
    return fields;
}

int Id(const XmlTree& element)
{
    return element.Attribute(u"id"_s).toInt();
}

Quota ReadQuota(const XmlTree& element)
{
    return {Id(element), ReadFields(element, DeFieldNames())};
}

Bill ReadBill(XmlTree& element)
{
    Bill bill{Id(element), 0, ReadFields(element, QdFieldNames()), {}};
    if (XmlTree* container = element.Child(u"De"_s)) {
        for (const XmlTree& child : container->children) {
            bill.quotas.push_back(ReadQuota(child));
            bill.lastDe = std::max(bill.lastDe, bill.quotas.back().id);
        }
    }
    return bill;
}

Condition ReadCondition(const XmlTree& element)
{
    Condition condition;
    condition.id = Id(element);
    condition.equal = element.Attribute(u"bEqual"_s) == u"true";
    condition.fields =
        ReadFields(element, {u"strCFType"_s, u"strEqualoperator"_s, u"strRangeoperator1"_s,
                             u"strRangeoperator2"_s, u"strValue"_s, u"strRange1"_s, u"strRange2"_s});
    return condition;
}

/// Reads all children of a container, whatever they are called, and raises the counter to the highest id.
template <typename Node, typename Read>
void ReadContainer(XmlTree& rule, const QString& name, std::vector<Node>& nodes, int& counter,
                   const Read& read)
{
    XmlTree* container = rule.Child(name);
    if (container == nullptr) return;
    for (XmlTree& child : container->children) {
        nodes.push_back(read(child));
        counter = std::max(counter, nodes.back().id);
    }
}

Rule ReadRule(XmlTree& element)
{
    Rule rule;
    rule.id = Id(element);
    rule.lastQd = element.Attribute(u"LastQdId"_s).toInt();
    rule.lastCondition = element.Attribute(u"LastConditionId"_s).toInt();
    rule.isDefault = element.Attribute(u"bDefault"_s).toInt() != 0;
    rule.lastDe = element.Attribute(u"LastDeId"_s).toInt();
    ReadContainer(element, u"Condition"_s, rule.conditions, rule.lastCondition, ReadCondition);
    ReadContainer(element, u"Qd"_s, rule.bills, rule.lastQd, ReadBill);
    ReadContainer(element, u"De"_s, rule.quotas, rule.lastDe, ReadQuota);
    return rule;
}

void AddDefault(XmlTree& container)
{
    XmlTree& rule = container.Append(u"config"_s);
    rule.attributes = {{u"id"_s, u"1"_s},
                       {u"bDefault"_s, u"1"_s},
                       {u"LastQdId"_s, u"0"_s},
                       {u"LastConditionId"_s, u"0"_s},
                       {u"LastDeId"_s, u"0"_s}};
}

void ReadSmall(XmlTree& element, Small& small)
{
    small.name = element.Attribute(u"name"_s);
    if (element.Child(u"Config"_s) == nullptr) AddDefault(element.Append(u"Config"_s));
    XmlTree& container = *element.Child(u"Config"_s);
    bool hasDefault = false;
    for (XmlTree& child : container.children) {
        small.rules.push_back(ReadRule(child));
        hasDefault = hasDefault || small.rules.back().isDefault;
        small.lastConfig = std::max(small.lastConfig, small.rules.back().id);
    }
    if (hasDefault) return;
    AddDefault(container);
    ++small.lastConfig;
    small.rules.push_back(ReadRule(container.children.last()));
}

/// The first child whose attribute "name" is that name.
XmlTree* ByName(XmlTree& parent, const QString& name)
{
    for (XmlTree& child : parent.children)
        if (child.Attribute(u"name"_s) == name) return &child;
    return nullptr;
}

void WriteFields(XmlTree& element, int id, const Fields& fields)
{
    element.SetAttribute(u"id"_s, QString::number(id));
    for (const auto& [key, value] : fields)
        element.SetAttribute(key, value);
}

void WriteQuotas(XmlTree& parent, const std::vector<Quota>& quotas)
{
    XmlTree& container = parent.Append(u"De"_s);
    for (const Quota& quota : quotas)
        WriteFields(container.Append(u"De"_s), quota.id, quota.fields);
}

void WriteCondition(XmlTree& element, const Condition& condition)
{
    Fields fields = condition.fields;
    fields.insert(1, {u"bEqual"_s, condition.equal ? u"true"_s : u"false"_s});
    WriteFields(element, condition.id, fields);
}

void WriteRule(XmlTree& element, const Rule& rule)
{
    WriteFields(element, rule.id,
                {{u"LastQdId"_s, QString::number(rule.lastQd)},
                 {u"LastConditionId"_s, QString::number(rule.lastCondition)},
                 {u"bDefault"_s, rule.isDefault ? u"1"_s : u"0"_s},
                 {u"LastDeId"_s, QString::number(rule.lastDe)}});
    XmlTree& conditions = element.Append(u"Condition"_s);
    for (const Condition& condition : rule.conditions)
        WriteCondition(conditions.Append(u"condition"_s), condition);
    XmlTree& bills = element.Append(u"Qd"_s);
    for (const Bill& bill : rule.bills) {
        XmlTree& child = bills.Append(u"qd"_s);
        WriteFields(child, bill.id, bill.fields);
        WriteQuotas(child, bill.quotas);
    }
    WriteQuotas(element, rule.quotas);
}

} // namespace

Tree ReadTree(XmlTree& element, const Tree& host)
{
    Tree tree = host;
    tree.id = Id(element);
    for (Big& big : tree.bigs) {
        if (ByName(element, big.name) == nullptr)
            element.Append(u"LMember"_s).attributes = {{u"id"_s, QString::number(big.id)},
                                                       {u"name"_s, big.name}};
        XmlTree& bigElement = *ByName(element, big.name);
        for (Small& small : big.smalls) {
            if (ByName(bigElement, small.name) == nullptr)
                bigElement.Append(u"SMember"_s).attributes = {{u"name"_s, small.name}};
            ReadSmall(*ByName(bigElement, small.name), small);
        }
    }
    return tree;
}

void WriteTree(const Tree& tree, XmlTree& element)
{
    WriteFields(element, tree.id, {{u"name"_s, tree.name}});
    for (const Big& big : tree.bigs) {
        XmlTree& bigElement = element.Append(u"LMember"_s);
        WriteFields(bigElement, big.id, {{u"name"_s, big.name}});
        for (const Small& small : big.smalls) {
            XmlTree& smallElement = bigElement.Append(u"SMember"_s);
            WriteFields(smallElement, small.id,
                        {{u"name"_s, small.name}, {u"LastConfigId"_s, QString::number(small.lastConfig)}});
            XmlTree& container = smallElement.Append(u"Config"_s);
            for (const Rule& rule : small.rules)
                WriteRule(container.Append(u"Config"_s), rule);
        }
    }
}

} // namespace test::model
