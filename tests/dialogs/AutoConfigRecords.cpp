#include "dialogs/AutoConfigRecords.h"

using namespace Qt::StringLiterals;

namespace test::autoconfig {

namespace {

CStringArray Numbers(const std::vector<DeNode*>& quotas)
{
    CStringArray numbers;
    for (const DeNode* quota : quotas)
        numbers.append(quota->GetRecord().strDeId);
    return numbers;
}

} // namespace

CStringArray ValueCondition(const CString& attribute, const CString& value)
{
    return {attribute, u"1"_s, u"＝"_s, {}, {}, value, {}, {}};
}

QdStruct Bill(const CString& number)
{
    QdStruct record;
    record.strQdId = number;
    record.strName = u"清单"_s + number;
    record.strUnit = u"m"_s;
    record.strUnitCode = u"1"_s;
    record.strQdCode = u"QD2013"_s;
    record.strFormula = u"L"_s;
    record.strAnnex = u"是"_s;
    return record;
}

DeStruct Quota(const CString& number, SQdDeInfo::EQdDeMode mode)
{
    DeStruct record;
    record.strName = u"定额"_s + number;
    record.strUnit = u"10m"_s;
    record.strUnitCode = u"10"_s;
    record.strDeId = number;
    record.strDeCode = mode == SQdDeInfo::BillMode ? u"QDDE2018"_s : u"DE2018"_s;
    record.strFormula = u"L"_s;
    record.strAnnex = u"否"_s;
    return record;
}

CString Described(const ConfigNode& rule)
{
    CStringArray bills;
    for (const QdNode* bill : rule.GetQd()) {
        const CStringArray quotas = Numbers(bill->GetDe());
        bills.append(bill->GetRecord().strQdId +
                     (quotas.isEmpty() ? CString() : u'(' + quotas.join(u',') + u')'));
    }
    const CStringArray quotas = Numbers(rule.GetDe());
    CString text = CString::number(rule.GetId()) + u' ' + rule.GetConditionString();
    if (!bills.isEmpty()) text += u" ["_s + bills.join(u' ') + u']';
    if (!quotas.isEmpty()) text += u' ' + quotas.join(u' ');
    return text;
}

CString Texts(const QdStruct& record)
{
    CStringArray texts;
    for (const auto& [name, field] : QdFields)
        texts.append(record.*field);
    return texts.join(u'|');
}

CString Texts(const DeStruct& record)
{
    CStringArray texts;
    for (const auto& [name, field] : DeFields)
        texts.append(record.*field);
    return texts.join(u'|');
}

} // namespace test::autoconfig
