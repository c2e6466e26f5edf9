#include "rules/bill/Remark.h"

#include "rules/match/CellText.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// Whether a text is a number in plain ASCII, the usual case, which has nothing to be told.
bool IsPlainDigits(QStringView text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.' || c == u'-'; });
}

} // namespace

void AddRemark(std::vector<Remark>& remarks, Remark remark)
{
    if (std::find(remarks.begin(), remarks.end(), remark) == remarks.end())
        remarks.push_back(std::move(remark));
}

void RemarkOnCell(const CString& attribute, QStringView cell, const CStringArray& valueList,
                  bool listsNumbers, std::vector<Remark>& remarks)
{
    const QStringView text = WithoutBlanks(cell);
    if (text.isEmpty()) return;
    if (text.size() != cell.size()) AddRemark(remarks, {RemarkKind::Blanks, attribute, cell.toString()});
    if (listsNumbers && !IsPlainDigits(text) && !valueList.contains(text))
        AddRemark(remarks, {RemarkKind::NotInValueList, attribute, cell.toString()});
}

CString Describe(const Remark& remark)
{
    switch (remark.kind) {
    case RemarkKind::NotInValueList:
        return u"%1 的值“%2”不在值列表中"_s.arg(remark.column, remark.cell);
    case RemarkKind::Blanks:
        return u"%1 的值“%2”前后有空格，按去掉空格后的值计"_s.arg(remark.column, remark.cell);
    case RemarkKind::Negative:
        return u"%1 的值 %2 是负数，按原值计"_s.arg(remark.column, remark.cell);
    case RemarkKind::InPlaceOfRule:
        return u"%1 的值 %2 代替它的计算规则"_s.arg(remark.column, remark.cell);
    }
    return {};
}

} // namespace rules
