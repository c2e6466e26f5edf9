#include "rules/document/RuleWriter.h"

#include "platform/Numbers.h"
#include "rules/model/Snapshot.h"
#include "store/RuleFile.h"
#include "tree/ConfigNode.h"
#include "tree/XmlVisitor.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

std::unique_ptr<DeNode> NodeOf(const QuotaItem& item)
{
    auto node = std::make_unique<DeNode>();
    node->SetId(item.id);
    node->SetRecord(item.record);
    return node;
}

std::unique_ptr<QdNode> NodeOf(const BillItem& item)
{
    auto node = std::make_unique<QdNode>();
    node->SetId(item.id);
    node->SetRecord(item.record);
    for (const QuotaItem& quota : item.quotas)
        node->AddDe(NodeOf(quota).release());
    return node;
}

std::unique_ptr<ConditionNode> NodeOf(const Condition& condition)
{
    auto node = std::make_unique<ConditionNode>(
        condition.attribute, condition.isValueForm, condition.equalOperator, condition.lowerOperator,
        condition.upperOperator, condition.value, condition.lowerBound, condition.upperBound);
    node->SetId(condition.id);
    return node;
}

/// Writes a rule as the editor does, into a new element at the end of `container`.
void AppendRule(const IXMLDOMElement& container, const Rule& rule)
{
    ConfigNode node;
    node.SetId(rule.id);
    node.SetDefault(rule.isDefault);
    RuleCounters counters = rule.counters;
    for (const Condition& condition : rule.conditions) {
        node.AddCondition(NodeOf(condition).release());
        counters.condition = std::max(counters.condition, condition.id);
    }
    for (const BillItem& item : rule.bills) {
        node.AddQd(NodeOf(item).release());
        counters.bill = std::max(counters.bill, item.id);
    }
    for (const QuotaItem& item : rule.quotas) {
        node.AddDe(NodeOf(item).release());
        counters.quota = std::max(counters.quota, item.id);
    }
    node.SetLastConditionId(counters.condition);
    node.SetLastQdId(counters.bill);
    node.SetLastDeId(counters.quota);
    node.WriteData(XmlVisitor::addChild(container, u"Config"_s));
}

std::vector<IXMLDOMNode> ChildrenOf(const IXMLDOMNode& parent)
{
    std::vector<IXMLDOMNode> children;
    for (IXMLDOMNode child = parent.FirstChild(); child; child = child.NextSibling())
        children.push_back(child);
    return children;
}

/// The first child element of that name; null when there is none.
IXMLDOMElement FindNamed(const IXMLDOMElement& parent, const CString& name)
{
    for (IXMLDOMNode child = parent.FirstChild(); child; child = child.NextSibling()) {
        IXMLDOMElement element = child.ToElement();
        if (!element.IsNull() && XmlVisitor::getNodeAttribute(element, u"name"_s) == name) return element;
    }
    return {};
}

/// The same, made at the end when there is none.
IXMLDOMElement NamedElement(const IXMLDOMElement& parent, const CString& tag, const CString& name, int id)
{
    if (IXMLDOMElement found = FindNamed(parent, name)) return found;
    IXMLDOMElement made = XmlVisitor::addChild(parent, tag);
    XmlVisitor::addatt(made, u"id"_s, CString::number(id));
    XmlVisitor::addatt(made, u"name"_s, name);
    return made;
}

/// Brings the elements of a category from `present`, what they hold, to `wanted`.
void WriteCategory(const IXMLDOMElement& element, const std::vector<Rule>& present,
                   const std::vector<Rule>& wanted)
{
    IXMLDOMElement container = element.SelectSingleNode(u"Config"_s).ToElement();
    if (container.IsNull()) container = XmlVisitor::addChild(element, u"Config"_s);
    // One child a rule; a default rule that reading has made has none.
    const std::vector<IXMLDOMNode> children = ChildrenOf(container);
    std::multimap<int, std::size_t> byId;
    for (std::size_t i = 0; i < children.size() && i < present.size(); ++i)
        byId.emplace(present[i].id, i);
    int highest = platform::_wtoi(XmlVisitor::getNodeAttribute(element, u"LastConfigId"_s));
    std::set<std::size_t> kept;
    for (const Rule& rule : wanted) {
        highest = std::max(highest, rule.id);
        const auto [begin, end] = byId.equal_range(rule.id);
        const auto same = std::find_if(begin, end, [&](const auto& entry) {
            return !kept.contains(entry.second) && present[entry.second] == rule;
        });
        if (same == end) {
            AppendRule(container, rule);
        } else {
            kept.insert(same->second);
            container.AppendChild(children[same->second]); // moves it behind those before it
        }
    }
    for (std::size_t i = 0; i < children.size(); ++i)
        if (!kept.contains(i)) container.RemoveChild(children[i]);
    XmlVisitor::addatt(element, u"LastConfigId"_s, CString::number(highest));
}

/// Removes the named children of a kind that are not wanted any more; others are none of ours. All of a name
/// go: what stands behind the first one, and is not read, would be read then.
template <typename List, typename NameOf>
void RemoveUnwanted(const IXMLDOMElement& parent, const List& present, const List& wanted, NameOf nameOf)
{
    std::set<CString> names;
    for (const auto& part : wanted)
        names.insert(nameOf(part));
    for (const auto& part : present)
        if (!names.contains(nameOf(part)))
            while (const IXMLDOMElement element = FindNamed(parent, nameOf(part)))
                parent.RemoveChild(element);
}

CString NameOf(const Specialty& part)
{
    return part.name;
}
CString NameOf(const BigCategory& part)
{
    return part.name;
}
CString NameOf(const SmallCategoryPtr& part)
{
    return part->name;
}

class Writer
{
public:
    Writer(const IXMLDOMElement& root, const Configuration& present, const Configuration& wanted)
        : m_root(root), m_present(present), m_wanted(wanted)
    {
    }

    void Run() const
    {
        const auto name = [](const auto& part) { return NameOf(part); };
        RemoveUnwanted(m_root, m_present.Specialties(), m_wanted.Specialties(), name);
        for (const Specialty& specialty : m_wanted.Specialties()) {
            const Specialty* former = Former(m_present.Specialties(), specialty.name);
            if (former != nullptr && IsAsItWas(*former, specialty)) continue;
            const IXMLDOMElement element = NamedElement(m_root, specialty.name, specialty.name, specialty.id);
            if (former != nullptr)
                RemoveUnwanted(element, former->bigCategories, specialty.bigCategories, name);
            for (const BigCategory& big : specialty.bigCategories)
                WriteBig(element, former == nullptr ? nullptr : Former(former->bigCategories, big.name), big);
        }
    }

private:
    template <typename Part>
    static const Part* Former(const std::vector<Part>& parts, const CString& name)
    {
        const auto found =
            std::find_if(parts.begin(), parts.end(), [&](const Part& part) { return NameOf(part) == name; });
        return found == parts.end() ? nullptr : &*found;
    }

    static bool IsAsItWas(const SmallCategoryPtr& former, const SmallCategoryPtr& wanted)
    {
        return former->rules == wanted->rules;
    }
    static bool IsAsItWas(const BigCategory& former, const BigCategory& wanted)
    {
        return AllAsTheyWere(former.smallCategories, wanted.smallCategories);
    }
    static bool IsAsItWas(const Specialty& former, const Specialty& wanted)
    {
        return AllAsTheyWere(former.bigCategories, wanted.bigCategories);
    }
    /// Whatever their order.
    template <typename Part>
    static bool AllAsTheyWere(const std::vector<Part>& former, const std::vector<Part>& wanted)
    {
        return former.size() == wanted.size() &&
               std::all_of(wanted.begin(), wanted.end(), [&](const Part& part) {
                   const Part* same = Former(former, NameOf(part));
                   return same != nullptr && IsAsItWas(*same, part);
               });
    }

    static void WriteBig(const IXMLDOMElement& specialty, const BigCategory* former, const BigCategory& big)
    {
        if (former != nullptr && IsAsItWas(*former, big)) return;
        const IXMLDOMElement element = NamedElement(specialty, u"LMember"_s, big.name, big.id);
        if (former != nullptr)
            RemoveUnwanted(element, former->smallCategories, big.smallCategories,
                           [](const auto& part) { return NameOf(part); });
        for (const SmallCategoryPtr& small : big.smallCategories) {
            const SmallCategoryPtr* present =
                former == nullptr ? nullptr : Former(former->smallCategories, small->name);
            if (present != nullptr && IsAsItWas(*present, small)) continue;
            WriteCategory(NamedElement(element, u"SMember"_s, small->name, small->id),
                          present == nullptr ? std::vector<Rule>() : (*present)->rules, small->rules);
        }
    }

    IXMLDOMElement m_root;
    const Configuration& m_present;
    const Configuration& m_wanted;
};

} // namespace

QByteArray WriteRules(const QByteArray& file, const Configuration& wanted)
{
    // Read apart from the document that is written: reading completes what it reads.
    CString reason;
    const ConfigurationPtr present = ReadRules(file, reason);
    if (!present) throw xml::Error(reason);
    const IXMLDOMDocument document = xml::Document::Create();
    if (document.IsNull() || !document.LoadBytes(file)) throw xml::Error(u"无法创建XML文档对象"_s);
    Writer(document.SelectSingleNode(store::RootName()).ToElement(), *present, wanted).Run();
    return document.ToBytes();
}

} // namespace rules
