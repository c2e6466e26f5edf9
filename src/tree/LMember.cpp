#include "tree/LMember.h"

#include "host/NvKtDataMng.h"
#include "platform/Numbers.h"
#include "tree/Categories.h"
#include "tree/Children.h"

#include <memory>

using namespace Qt::StringLiterals;

LMember::~LMember()
{
    DeleteAllSMember();
}

void LMember::DeleteAllSMember()
{
    tree::DeleteAll(m_members);
}

bool LMember::ReadData(IXMLDOMNode node)
{
    // The id is the host's and set before; one in the file is not looked at.
    const std::map<CString, IXMLDOMNode> children = tree::ChildrenByName(node);
    const NvKtDataMng::CAtt att;
    SNvKtBigCategoryId bigId;
    NvKtDataMng::BigCategoryNameToId(FullName(), bigId);
    CArray<SNvKtSmallCategoryId> ids;
    if (!att.GetAllSmallCategoryIdsByBigCategory(bigId, ids)) return false;

    for (const SNvKtSmallCategoryId& id : ids) {
        CString name;
        att.GetSmallCategoryName(id, name);
        const auto found = children.find(name);
        IXMLDOMNode child;
        if (found != children.end()) {
            child = found->second;
        } else {
            const IXMLDOMElement made = XmlVisitor::addChild(node.ToElement(), u"SMember"_s);
            XmlVisitor::addatt(made, u"name"_s, name);
            child = made;
        }
        auto member = std::make_unique<SMember>();
        member->SetParent(this);
        member->SetName(name);
        member->SetId(GetSMemberId(name));
        if (member->ReadData(child)) m_members.push_back(member.release());
    }
    return true;
}

bool LMember::WriteData(IXMLDOMNode node)
{
    QdDeConfigNode::WriteData(node);
    const IXMLDOMElement element = node.ToElement();
    XmlVisitor::addatt(element, u"name"_s, m_name);
    for (SMember* member : m_members)
        member->WriteData(XmlVisitor::addChild(element, u"SMember"_s));
    return true;
}

CString LMember::FullName() const
{
    return tree::SpecNameOf(GetParent()) + u'\\' + m_name;
}

/// The host's id of a small category; 0 for a name that it does not know, since nobody looks at the result.
int LMember::GetSMemberId(const CString& name) const
{
    SNvKtSmallCategoryId id;
    NvKtDataMng::SmallCategoryNameToId(FullName() + u'\\' + name, id);
    return platform::_wtoi(id.strSmallCategoryId);
}
