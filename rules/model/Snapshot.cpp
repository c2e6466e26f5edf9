#include "rules/model/Snapshot.h"

#include "platform/Numbers.h"
#include "rules/model/StructureReader.h"
#include "store/RuleFile.h"
#include "tree/Spec.h"
#include "tree/XmlVisitor.h"

#include <functional>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

QuotaItem Copy(const DeNode& node);
Condition Copy(const ConditionNode& node);
BillItem Copy(const QdNode& node);
Rule Copy(const ConfigNode& node);

template <typename Node>
auto CopyAll(const std::vector<Node*>& nodes)
{
    std::vector<decltype(Copy(*nodes.front()))> copies;
    copies.reserve(nodes.size());
    for (const Node* node : nodes)
        copies.push_back(Copy(*node));
    return copies;
}

QuotaItem Copy(const DeNode& node)
{
    return {node.GetId(), node.GetRecord()};
}

Condition Copy(const ConditionNode& node)
{
    Condition condition;
    condition.id = node.GetId();
    condition.attribute = node.GetCFType();
    condition.isValueForm = node.IsEqual();
    condition.equalOperator = node.GetEqualOperator();
    condition.value = node.GetValue();
    condition.lowerOperator = node.GetRangeOperator1();
    condition.lowerBound = node.GetRange1();
    condition.upperOperator = node.GetRangeOperator2();
    condition.upperBound = node.GetRange2();
    return condition;
}

BillItem Copy(const QdNode& node)
{
    return {node.GetId(), node.GetRecord(), CopyAll(node.GetDe())};
}

Rule Copy(const ConfigNode& node)
{
    Rule rule;
    rule.id = node.GetId();
    rule.isDefault = node.IfDefault();
    rule.counters = {node.GetLastConditionId(), node.GetLastQdId(), node.GetLastDeId()};
    rule.conditions = CopyAll(node.GetCondition());
    rule.bills = CopyAll(node.GetQd());
    rule.quotas = CopyAll(node.GetDe());
    return rule;
}

std::shared_ptr<SmallCategory> Copy(const SMember& node, const CString& textAbove)
{
    auto category = std::make_shared<SmallCategory>();
    category->id = node.GetId();
    category->name = node.GetName();
    category->text = textAbove + u'\\' + category->name;
    category->rules = CopyAll(node.GetAllConfig());
    return category;
}

/// The rules that a small category has in the file, before reading adds one.
std::size_t CountRules(const IXMLDOMElement& category)
{
    std::size_t count = 0;
    const IXMLDOMNode container = category.SelectSingleNode(u"Config"_s);
    if (container.IsNull()) return 0;
    for (IXMLDOMNode child = container.FirstChild(); child; child = child.NextSibling())
        ++count;
    return count;
}

/// Calls `take` with every child element that has a name, of equal names with the first.
template <typename Take>
void ForEachNamed(const IXMLDOMNode& parent, Take take)
{
    std::set<CString> seen;
    for (IXMLDOMNode child = parent.FirstChild(); child; child = child.NextSibling()) {
        const IXMLDOMElement element = child.ToElement();
        const CString name = XmlVisitor::getNodeAttribute(element, u"name"_s);
        if (!name.isEmpty() && seen.insert(name).second)
            take(element, name, platform::_wtoi(XmlVisitor::getNodeAttribute(element, u"id"_s)));
    }
}

/// Which small categories are read, by their texts.
using IsWanted = std::function<bool(const CString&)>;

bool All(const CString&)
{
    return true;
}

BigCategory ReadBigCategory(const IXMLDOMElement& element, const CString& name, int id,
                            const CString& textAbove, const IsWanted& isWanted)
{
    BigCategory big{id, name, {}};
    const CString text = textAbove + u'\\' + name;
    ForEachNamed(element, [&](const IXMLDOMElement& child, const CString& smallName, int smallId) {
        if (!isWanted(text + u'\\' + smallName)) return;
        SMember node;
        node.SetId(smallId);
        const std::size_t count = CountRules(child);
        if (!node.ReadData(child)) return;
        auto category = Copy(node, text);
        category->isCompleted = category->rules.size() > count;
        big.smallCategories.push_back(std::move(category));
    });
    return big;
}

Specialty ReadSpecialty(const IXMLDOMElement& element, const CString& name, int id, const IsWanted& isWanted)
{
    Specialty specialty{id, name, {}};
    ForEachNamed(element, [&](const IXMLDOMElement& child, const CString& bigName, int bigId) {
        specialty.bigCategories.push_back(ReadBigCategory(child, bigName, bigId, name, isWanted));
    });
    return specialty;
}

} // namespace

ConfigurationPtr TakeSnapshot(const Spec& spec)
{
    Specialty specialty{spec.GetId(), spec.GetSpecName(), {}};
    for (const LMember* member : spec.GetAllLMember()) {
        BigCategory big{member->GetId(), member->GetName(), {}};
        for (const SMember* small : member->GetAllSMember())
            big.smallCategories.push_back(Copy(*small, specialty.name + u'\\' + big.name));
        specialty.bigCategories.push_back(std::move(big));
    }
    return std::make_shared<const Configuration>(std::vector{std::move(specialty)});
}

namespace {

/// The document element; null, with the reason in words, when it is another one.
IXMLDOMNode RootOf(const IXMLDOMDocument& document, CString& reason)
{
    IXMLDOMNode root = document.SelectSingleNode(store::RootName());
    if (root.IsNull()) reason = u"不是规则文件：根元素不是“%1”"_s.arg(store::RootName());
    return root;
}

ConfigurationPtr ReadDocument(const IXMLDOMDocument& document, CString& reason, FileStructure* structure)
{
    const IXMLDOMNode root = RootOf(document, reason);
    if (root.IsNull()) return nullptr;
    if (structure != nullptr) *structure = ReadStructure(root);
    std::vector<Specialty> specialties;
    ForEachNamed(root, [&](const IXMLDOMElement& element, const CString& name, int id) {
        specialties.push_back(ReadSpecialty(element, name, id, &All));
    });
    return std::make_shared<const Configuration>(std::move(specialties));
}

/// No message box where there is no engine: the caller gets the reason.
template <typename Load>
ConfigurationPtr ReadBy(Load load, CString& reason, FileStructure* structure)
{
    const IXMLDOMDocument document = xml::Document::Create();
    if (document.IsNull()) {
        reason = u"无法创建XML文档对象"_s;
        return nullptr;
    }
    if (load(document)) return ReadDocument(document, reason, structure);
    reason = document.Reason().ToString();
    return nullptr;
}

} // namespace

ConfigurationPtr ReadRuleFile(const CString& path, CString& reason, FileStructure* structure)
{
    return ReadBy([&](const IXMLDOMDocument& document) { return document.Load(path); }, reason, structure);
}

ConfigurationPtr ReadRules(const QByteArray& bytes, CString& reason, FileStructure* structure)
{
    return ReadBy([&](const IXMLDOMDocument& document) { return document.LoadBytes(bytes); }, reason,
                  structure);
}

ConfigurationPtr ReadCategory(const xml::Document& document, const CString& categoryText, CString& reason)
{
    const IXMLDOMNode root = RootOf(document, reason);
    if (root.IsNull()) return nullptr;
    const CString wanted = categoryText.section(u'\\', 0, 0);
    std::vector<Specialty> specialties;
    ForEachNamed(root, [&](const IXMLDOMElement& element, const CString& name, int id) {
        const auto isWanted = [&](const CString& text) { return text == categoryText; };
        specialties.push_back(name == wanted ? ReadSpecialty(element, name, id, isWanted)
                                             : Specialty{id, name, {}});
    });
    return std::make_shared<const Configuration>(std::move(specialties));
}

} // namespace rules
