#include "tree/Spec.h"

#include "host/NvKtDataMng.h"
#include "platform/Numbers.h"
#include "tree/Categories.h"
#include "tree/Children.h"

#include <memory>

using namespace Qt::StringLiterals;

CString tree::SpecNameOf(const QdDeConfigNode* spec)
{
    return spec == nullptr ? CString() : static_cast<const Spec*>(spec)->GetSpecName();
}

Spec& Spec::operator=(const Spec& other)
{
    if (this == &other) return *this;
    DeleteAllLMember();
    QdDeConfigNode::operator=(other);
    m_name = other.m_name;
    m_members = other.m_members;
    return *this;
}

Spec::~Spec()
{
    DeleteAllLMember();
}

void Spec::Swap(Spec& other) noexcept
{
    const int id = GetId();
    SetId(other.GetId());
    other.SetId(id);
    m_name.swap(other.m_name);
    m_members.swap(other.m_members);
    AdoptMembers();
    other.AdoptMembers();
}

void Spec::AdoptMembers() noexcept
{
    for (LMember* member : m_members)
        member->SetParent(this);
}

void Spec::DeleteAllLMember()
{
    tree::DeleteAll(m_members);
}

bool Spec::ReadData(IXMLDOMNode node)
{
    QdDeConfigNode::ReadData(node);
    const std::map<CString, IXMLDOMNode> children = tree::ChildrenByName(node);
    const NvKtDataMng::CAtt att;
    SNvKtSpecId specId;
    NvKtDataMng::SpecNameToId(m_name, specId);
    CArray<SNvKtBigCategoryId> ids;
    if (!att.GetAllBigCategoryIdsBySpec(specId, ids)) return false;

    for (const SNvKtBigCategoryId& id : ids) {
        CString name;
        att.GetBigCategoryName(id, name);
        const auto found = children.find(name);
        IXMLDOMNode child;
        if (found != children.end()) {
            child = found->second;
        } else {
            const IXMLDOMElement made = XmlVisitor::addChild(node.ToElement(), u"LMember"_s);
            XmlVisitor::addatt(made, u"id"_s, CString::number(GetLMemberId(name)));
            XmlVisitor::addatt(made, u"name"_s, name);
            child = made;
        }
        auto member = std::make_unique<LMember>();
        member->SetId(GetLMemberId(name));
        member->SetName(name);
        member->SetParent(this);
        if (member->ReadData(child)) m_members.push_back(member.release());
    }
    return true;
}

bool Spec::WriteData(IXMLDOMNode node)
{
    QdDeConfigNode::WriteData(node);
    const IXMLDOMElement element = node.ToElement();
    XmlVisitor::addatt(element, u"name"_s, m_name);
    for (LMember* member : m_members)
        member->WriteData(XmlVisitor::addChild(element, u"LMember"_s));
    return true;
}

/// The host's id of a big category; 0 for a name that it does not know, since nobody looks at the result.
int Spec::GetLMemberId(const CString& name) const
{
    SNvKtBigCategoryId id;
    NvKtDataMng::BigCategoryNameToId(m_name + u'\\' + name, id);
    return platform::_wtoi(id.strBigCategoryId);
}
