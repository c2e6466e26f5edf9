#include "bench/RuleFileGenerator.h"

#include "host/NvKtDataMng.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// What one rule takes in the file, roughly; the number of rules follows from it.
constexpr qsizetype BytesPerRule = 1150;

void AppendRule(QByteArray& out, int id, bool isDefault)
{
    const QByteArray number = QByteArray::number(id);
    out += "\t\t\t\t\t<Config id=\"" + number + "\" LastQdId=\"1\" LastConditionId=\"3\" bDefault=\"" +
           (isDefault ? "1" : "0") + "\" LastDeId=\"0\">\n\t\t\t\t\t\t<Condition>\n";
    for (int i = 1; i <= 3; ++i)
        out += "\t\t\t\t\t\t\t<condition id=\"" + QByteArray::number(i) +
               "\" strCFType=\"公称直径\" bEqual=\"true\" strEqualoperator=\"＝\" strRangeoperator1=\"\" "
               "strRangeoperator2=\"\" strValue=\"DN" +
               number + "\" strRange1=\"\" strRange2=\"\"/>\n";
    out += "\t\t\t\t\t\t</Condition>\n\t\t\t\t\t\t<Qd>\n\t\t\t\t\t\t\t<qd id=\"1\" strQdId=\"031001001001\" "
           "strQdIdUser=\"\" "
           "strName=\"镀锌钢管安装\" strUnit=\"m\" strUnitCode=\"1\" strtypeid=\"\" strQdCode=\"QD\" "
           "strFormula=\"长度\" "
           "strAnnex=\"否\">\n\t\t\t\t\t\t\t\t<De>\n\t\t\t\t\t\t\t\t\t<De id=\"1\" strName=\"室内管道\" "
           "strUnit=\"10m\" "
           "strUnitCode=\"10\" strDeId=\"8-1\" strDeCode=\"DE\" strFormula=\"长度\" strAnnex=\"否\"/>\n"
           "\t\t\t\t\t\t\t\t</De>\n\t\t\t\t\t\t\t</qd>\n\t\t\t\t\t\t</Qd>\n\t\t\t\t\t\t<De/>\n\t\t\t\t\t</"
           "Config>\n";
}

void AppendSmallCategory(QByteArray& out, const CString& name, const CString& id, int rules)
{
    out += "\t\t\t<SMember id=\"" + id.toUtf8() + "\" name=\"" + name.toUtf8() + "\" LastConfigId=\"" +
           QByteArray::number(rules) + "\">\n\t\t\t\t<Config>\n";
    // The default rule has id 1 and stands last.
    for (int rule = 2; rule <= rules; ++rule)
        AppendRule(out, rule, false);
    AppendRule(out, 1, true);
    out += "\t\t\t\t</Config>\n\t\t\t</SMember>\n";
}

void AppendSpec(QByteArray& out, const CString& specName, int rules)
{
    const NvKtDataMng::CAtt att;
    SNvKtSpecId specId;
    NvKtDataMng::SpecNameToId(specName, specId);
    out += "\t<" + specName.toUtf8() + " id=\"" + specId.strSpecId.toUtf8() + "\" name=\"" +
           specName.toUtf8() + "\">\n";
    CArray<SNvKtBigCategoryId> bigIds;
    att.GetAllBigCategoryIdsBySpec(specId, bigIds);
    for (const SNvKtBigCategoryId& bigId : bigIds) {
        CString bigName;
        att.GetBigCategoryName(bigId, bigName);
        out += "\t\t<LMember id=\"" + bigId.strBigCategoryId.toUtf8() + "\" name=\"" + bigName.toUtf8() +
               "\">\n";
        CArray<SNvKtSmallCategoryId> smallIds;
        att.GetAllSmallCategoryIdsByBigCategory(bigId, smallIds);
        for (const SNvKtSmallCategoryId& smallId : smallIds) {
            CString smallName;
            att.GetSmallCategoryName(smallId, smallName);
            AppendSmallCategory(out, smallName, smallId.strSmallCategoryId, rules);
        }
        out += "\t\t</LMember>\n";
    }
    out += "\t</" + specName.toUtf8() + ">\n";
}

int CountSmallCategories(const CString& specName)
{
    const NvKtDataMng::CAtt att;
    qsizetype count = 0;
    SNvKtSpecId specId;
    NvKtDataMng::SpecNameToId(specName, specId);
    CArray<SNvKtBigCategoryId> bigIds;
    att.GetAllBigCategoryIdsBySpec(specId, bigIds);
    for (const SNvKtBigCategoryId& bigId : bigIds) {
        CArray<SNvKtSmallCategoryId> smallIds;
        att.GetAllSmallCategoryIdsByBigCategory(bigId, smallIds);
        count += smallIds.size();
    }
    return static_cast<int>(count);
}

} // namespace

QByteArray GenerateRuleFile(qsizetype bytes)
{
    CStringArray specNames;
    NvKtDataMng::CAtt().GetAllSpecNames(specNames);
    QByteArray out;
    out.reserve(bytes + bytes / 4);
    out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<自动套清单定额配置信息 Version=\"0.1.0\">\n";
    const qsizetype rulesPerSpec = bytes / BytesPerRule / specNames.size();
    for (const CString& specName : specNames)
        AppendSpec(out, specName, static_cast<int>(rulesPerSpec / CountSmallCategories(specName)));
    return out + "</自动套清单定额配置信息>\n";
}

} // namespace bench
