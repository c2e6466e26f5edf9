#include "tree/ConfigNode.h"

#include "platform/Apart.h"
#include "platform/Numbers.h"
#include "tree/Children.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

int ReadNumber(const IXMLDOMElement& element, const CString& name)
{
    return platform::_wtoi(XmlVisitor::getNodeAttribute(element, name));
}

} // namespace

ConfigNode::~ConfigNode()
{
    DeleteAllCondition();
    DeleteAllQd();
    DeleteAllDe();
}

bool ConfigNode::AddCondition(const ConditionNode& condition)
{
    std::unique_ptr<ConditionNode> node(condition.Clone());
    node->SetId(tree::NextId(LastConditionId));
    AddCondition(node.release());
    return true;
}

bool ConfigNode::AddQd(const QdStruct& record)
{
    auto node = std::make_unique<QdNode>();
    node->SetParent(this);
    node->SetRecord(record);
    node->SetId(tree::NextId(LastQdId));
    AddQd(node.release());
    return true;
}

bool ConfigNode::AddDe(const DeStruct& record)
{
    auto node = std::make_unique<DeNode>();
    node->SetParent(this);
    node->SetId(tree::NextId(LastDeId));
    node->SetRecord(record);
    AddDe(node.release());
    return true;
}

void ConfigNode::AddCondition(ConditionNode* condition)
{
    m_conditions.push_back(condition);
}
void ConfigNode::AddQd(QdNode* node)
{
    m_qd.push_back(node);
}
void ConfigNode::AddDe(DeNode* node)
{
    m_de.push_back(node);
}

QdNode* ConfigNode::GetQd(int id) const
{
    return tree::FindById(m_qd, id);
}
DeNode* ConfigNode::GetDe(int id) const
{
    return tree::FindById(m_de, id);
}

bool ConfigNode::ResetCondition(int id, const ConditionNode& condition)
{
    ConditionNode* node = tree::FindById(m_conditions, id);
    if (node == nullptr) return false;
    node->Reset(condition);
    return true;
}

bool ConfigNode::ResetQd(int id, const QdStruct& record)
{
    QdNode* node = GetQd(id);
    if (node == nullptr) return false;
    node->SetRecord(record);
    return true;
}

bool ConfigNode::ResetDe(int id, const DeStruct& record)
{
    DeNode* node = GetDe(id);
    if (node == nullptr) return false;
    node->SetRecord(record);
    return true;
}

bool ConfigNode::DelCondition(int id)
{
    const auto found = std::find_if(m_conditions.begin(), m_conditions.end(),
                                    [id](const ConditionNode* node) { return node->GetId() == id; });
    if (found == m_conditions.end()) return false;
    delete *found;
    m_conditions.erase(found);
    return true;
}

bool ConfigNode::DelQd(const std::set<int>& ids)
{
    tree::DeleteIf(m_qd, [&ids](const QdNode& node) { return ids.contains(node.GetId()); });
    return true;
}

bool ConfigNode::DelDe(const std::set<int>& ids)
{
    tree::DeleteIf(m_de, [&ids](const DeNode& node) { return ids.contains(node.GetId()); });
    return true;
}

void ConfigNode::DeleteAllCondition()
{
    tree::DeleteAll(m_conditions);
}
void ConfigNode::DeleteAllQd()
{
    tree::DeleteAll(m_qd);
}
void ConfigNode::DeleteAllDe()
{
    tree::DeleteAll(m_de);
}

CString ConfigNode::GetConditionString() const
{
    if (bDefault) return u"其它"_s;
    constexpr qsizetype UsualLength = 24; // of a condition
    CString text;
    text.reserve(UsualLength * static_cast<qsizetype>(m_conditions.size()));
    for (const ConditionNode* condition : m_conditions) {
        condition->AppendConditionString(text);
        text += u';';
    }
    return text;
}

bool ConfigNode::GetExistQdIndex(std::vector<CString>& numbers) const
{
    for (const QdNode* node : m_qd)
        numbers.push_back(node->GetRecord().strQdId);
    return true;
}

ConfigNode* ConfigNode::Clone() const
{
    auto clone = std::make_unique<ConfigNode>();
    clone->SetId(GetId());
    clone->SetParent(GetParent());
    clone->LastConditionId = LastConditionId;
    clone->LastQdId = LastQdId;
    clone->LastDeId = LastDeId;
    clone->bDefault = bDefault;
    for (const QdNode* node : m_qd) {
        QdNode* child = node->Clone();
        child->SetParent(clone.get());
        clone->AddQd(child);
    }
    for (const DeNode* node : m_de) {
        DeNode* child = node->Clone();
        child->SetParent(clone.get());
        clone->AddDe(child);
    }
    for (const ConditionNode* node : m_conditions) {
        ConditionNode* child = node->Clone(); // id 0, and it stays 0: see the header
        child->SetParent(clone.get());
        clone->AddCondition(child);
    }
    return clone.release();
}

bool ConfigNode::ReadData(IXMLDOMNode node)
{
    platform::GiveTurn(); // a file may hold many thousand rules
    QdDeConfigNode::ReadData(node);
    const IXMLDOMElement element = node.ToElement();
    LastQdId = ReadNumber(element, u"LastQdId"_s);
    LastConditionId = ReadNumber(element, u"LastConditionId"_s);
    bDefault = ReadNumber(element, u"bDefault"_s) != 0;
    LastDeId = ReadNumber(element, u"LastDeId"_s);
    if (element.IsNull()) return true;

    // A counter that the file gives too low is raised by the ids found; one that is too high is kept.
    tree::ReadChildren<ConditionNode>(element.SelectSingleNode(u"Condition"_s), this,
                                      [this](ConditionNode* child) {
                                          AddCondition(child);
                                          LastConditionId = std::max(LastConditionId, child->GetId());
                                      });
    tree::ReadChildren<QdNode>(element.SelectSingleNode(u"Qd"_s), this, [this](QdNode* child) {
        AddQd(child);
        LastQdId = std::max(LastQdId, child->GetId());
    });
    tree::ReadChildren<DeNode>(element.SelectSingleNode(u"De"_s), this, [this](DeNode* child) {
        AddDe(child);
        LastDeId = std::max(LastDeId, child->GetId());
    });
    return true;
}

bool ConfigNode::WriteData(IXMLDOMNode node)
{
    platform::GiveTurn();
    QdDeConfigNode::WriteData(node);
    const IXMLDOMElement element = node.ToElement();
    XmlVisitor::addatt(element, u"LastQdId"_s, CString::number(LastQdId));
    XmlVisitor::addatt(element, u"LastConditionId"_s, CString::number(LastConditionId));
    XmlVisitor::addatt(element, u"bDefault"_s, bDefault ? u"1"_s : u"0"_s);
    XmlVisitor::addatt(element, u"LastDeId"_s, CString::number(LastDeId));
    // Containers and children differ in case for conditions and bill items and are the same for quota items.
    tree::WriteChildren(element, u"Condition"_s, u"condition"_s, m_conditions);
    tree::WriteChildren(element, u"Qd"_s, u"qd"_s, m_qd);
    tree::WriteChildren(element, u"De"_s, u"De"_s, m_de);
    return true;
}
