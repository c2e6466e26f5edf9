#include "tree/ConditionNode.h"

#include "tree/XmlVisitor.h"

using namespace Qt::StringLiterals;

ConditionNode::ConditionNode() = default;

ConditionNode::ConditionNode(const CString& cfType, bool equal, const CString& equalOperator,
                             const CString& rangeOperator1, const CString& rangeOperator2,
                             const CString& value, const CString& range1, const CString& range2)
    : strCFType(cfType), bEqual(equal), strEqualoperator(equalOperator), strRangeoperator1(rangeOperator1),
      strRangeoperator2(rangeOperator2), strValue(value), strRange1(range1), strRange2(range2)
{
}

ConditionNode::ConditionNode(const ConditionNode& other) : QdDeConfigNode()
{
    Reset(other);
}

ConditionNode& ConditionNode::operator=(const ConditionNode& other)
{
    QdDeConfigNode::operator=(other);
    Reset(other);
    return *this;
}

ConditionNode* ConditionNode::Clone() const
{
    return new ConditionNode(*this);
}

void ConditionNode::Reset(const ConditionNode& other)
{
    strCFType = other.strCFType;
    bEqual = other.bEqual;
    strEqualoperator = other.strEqualoperator;
    strRangeoperator1 = other.strRangeoperator1;
    strRangeoperator2 = other.strRangeoperator2;
    strValue = other.strValue;
    strRange1 = other.strRange1;
    strRange2 = other.strRange2;
}

CString ConditionNode::GetConditionString() const
{
    CString text;
    AppendConditionString(text);
    return text;
}

void ConditionNode::AppendConditionString(CString& text) const
{
    if (bEqual) {
        text.append(strCFType).append(strEqualoperator).append(strValue);
    } else if (!strRange1.isEmpty() && !strRange2.isEmpty()) {
        // The attribute stands in the middle, so the first operator is seen from the other side. Anything but
        // the strict one, unknown text included, reads as "≤".
        text.append(strRange1).append(strRangeoperator1 == u"＞"_s ? u'＜' : u'≤');
        text.append(strCFType).append(strRangeoperator2).append(strRange2);
    } else {
        text.append(strCFType);
        if (!strRange1.isEmpty())
            text.append(strRangeoperator1).append(strRange1);
        else if (!strRange2.isEmpty())
            text.append(strRangeoperator2).append(strRange2);
    }
}

bool ConditionNode::ReadData(IXMLDOMNode node)
{
    QdDeConfigNode::ReadData(node);
    const IXMLDOMElement element = node.ToElement();
    strCFType = XmlVisitor::getNodeAttribute(element, u"strCFType"_s);
    // Exactly "true" and nothing else: a missing flag reads as range form, although a new condition is in
    // value form.
    bEqual = XmlVisitor::getNodeAttribute(element, u"bEqual"_s) == u"true"_s;
    strEqualoperator = XmlVisitor::getNodeAttribute(element, u"strEqualoperator"_s);
    strRangeoperator1 = XmlVisitor::getNodeAttribute(element, u"strRangeoperator1"_s);
    strRangeoperator2 = XmlVisitor::getNodeAttribute(element, u"strRangeoperator2"_s);
    strValue = XmlVisitor::getNodeAttribute(element, u"strValue"_s);
    strRange1 = XmlVisitor::getNodeAttribute(element, u"strRange1"_s);
    strRange2 = XmlVisitor::getNodeAttribute(element, u"strRange2"_s);
    return true;
}

bool ConditionNode::WriteData(IXMLDOMNode node)
{
    QdDeConfigNode::WriteData(node);
    const IXMLDOMElement element = node.ToElement();
    XmlVisitor::addatt(element, u"strCFType"_s, strCFType);
    // In words here, unlike the numeric flag of a rule.
    XmlVisitor::addatt(element, u"bEqual"_s, bEqual ? u"true"_s : u"false"_s);
    XmlVisitor::addatt(element, u"strEqualoperator"_s, strEqualoperator);
    XmlVisitor::addatt(element, u"strRangeoperator1"_s, strRangeoperator1);
    XmlVisitor::addatt(element, u"strRangeoperator2"_s, strRangeoperator2);
    XmlVisitor::addatt(element, u"strValue"_s, strValue);
    XmlVisitor::addatt(element, u"strRange1"_s, strRange1);
    XmlVisitor::addatt(element, u"strRange2"_s, strRange2);
    return true;
}
