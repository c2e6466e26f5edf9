#pragma once

#include "tree/QdDeConfigNode.h"

/// One attribute test of a rule: the attribute equals (or differs from) a value, or lies in a range. All
/// texts are kept as the editor produced them; nothing in the tree evaluates them. All eight fields are kept
/// and written whatever the form, so leftovers of the other form survive.
class KTQDDE_EXPORT ConditionNode final : public QdDeConfigNode
{
public:
    /// Value form, all texts empty.
    ConditionNode();
    ConditionNode(const CString& strCFType, bool bEqual, const CString& strEqualoperator,
                  const CString& strRangeoperator1, const CString& strRangeoperator2, const CString& strValue,
                  const CString& strRange1, const CString& strRange2);
    /// Copies the eight fields; id is 0 and parent null, so that a copy cannot be addressed before its new
    /// owner numbers it. On purpose different from the base class's copy and from the assignment.
    ConditionNode(const ConditionNode& other);
    /// Copies id and parent, too.
    ConditionNode& operator=(const ConditionNode& other);

    /// A copy by the copy constructor: id 0, no parent. The caller owns it.
    ConditionNode* Clone() const;
    /// Takes the other's eight fields; id and parent stay.
    void Reset(const ConditionNode& other);

    /// The attribute that the condition tests, by name.
    CString GetCFType() const { return strCFType; }
    /// True: value form. False: range form.
    bool IsEqual() const noexcept { return bEqual; }
    /// Value form: "＝" or "≠".
    CString GetEqualOperator() const { return strEqualoperator; }
    /// First bound: "＞" or "≥".
    CString GetRangeOperator1() const { return strRangeoperator1; }
    /// Second bound: "＜" or "≤".
    CString GetRangeOperator2() const { return strRangeoperator2; }
    CString GetValue() const { return strValue; }
    /// The bounds, empty when there is none.
    CString GetRange1() const { return strRange1; }
    CString GetRange2() const { return strRange2; }

    /// The condition as people read it, without blanks: A＝DN50, 10＜A≤20, A≥10. A range without bounds is
    /// the attribute alone.
    CString GetConditionString() const;
    /// Appends that to `text`.
    void AppendConditionString(CString& text) const;

    bool ReadData(IXMLDOMNode node) override;
    bool WriteData(IXMLDOMNode node) override;

private:
    CString strCFType;
    bool bEqual = true;
    CString strEqualoperator;
    CString strRangeoperator1;
    CString strRangeoperator2;
    CString strValue;
    CString strRange1;
    CString strRange2;
};
