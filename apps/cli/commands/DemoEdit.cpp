#include "cli/commands/DemoEdit.h"

#include "cli/printing/TextTable.h"
#include "cli/reading/Failure.h"
#include "host/NvKtDataMng.h"
#include "host/NvQdInfo.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// A condition in the order in which the presenter takes it, and what its form is called.
struct DemoCondition
{
    CString form;
    CStringArray array;
};

CArray<DemoCondition> DemoConditions()
{
    const CString none;
    return {{u"等于一个值"_s, {u"材质"_s, u"1"_s, u"＝"_s, none, none, u"薄壁不锈钢管"_s, none, none}},
            {u"不等于一个值"_s, {u"敷设方式"_s, u"1"_s, u"≠"_s, none, none, u"埋地"_s, none, none}},
            {u"两端都有的范围"_s, {u"公称直径"_s, u"0"_s, none, u"＞"_s, u"≤"_s, none, u"15"_s, u"20"_s}},
            {u"只有一端的范围"_s, {u"公称压力"_s, u"0"_s, none, u"≥"_s, none, none, u"1.0"_s, none}}};
}

void Expect(bool done, const CString& step)
{
    if (!done) throw Refusal(step + u"没有做成"_s);
}

QdStruct DemoBillItem()
{
    SQdInfo info;
    Expect(NvQdInfo::IBillLib::GetQdInfo(u"031001003"_s, info), u"在清单库中查 031001003"_s);
    QdStruct qd;
    qd.strQdId = info.strNumber + u"001"_s;
    qd.strName = info.strName + u" 薄壁不锈钢 DN20 卡压连接"_s;
    qd.strUnit = info.strUnit;
    qd.strUnitCode = CString::number(info.nUnitCode);
    qd.strQdCode = NvKtDataMng::CAtt().GetQdCode();
    qd.strFormula = u"管道长度"_s;
    qd.strAnnex = info.nWithAnnex != 0 ? u"是"_s : u"否"_s;
    return qd;
}

DeStruct DemoQuotaItem()
{
    DeStruct de;
    de.strName = u"室内薄壁不锈钢管 卡压连接 公称直径(mm以内)20"_s;
    de.strUnit = u"10m"_s;
    de.strUnitCode = u"10"_s;
    de.strDeId = u"示10-1-31"_s;
    de.strDeCode = NvKtDataMng::CAtt().GetQdDeCode();
    de.strFormula = u"管道长度"_s;
    de.strAnnex = u"是"_s;
    return de;
}

void AddConditions(CQdDeConfigPresenter& presenter, const CPath& path, TextTable& steps)
{
    for (const DemoCondition& condition : DemoConditions()) {
        Expect(presenter.AddCondition(path, condition.array), u"加条件"_s);
        const ConditionNode* added = presenter.GetConfig(path)->GetCondition().back();
        steps.AddRow({u"加条件"_s, added->GetConditionString(), condition.form});
    }
}

void AddItems(CQdDeConfigPresenter& presenter, CPath path, TextTable& steps)
{
    std::vector<ConfigNode*> rules;
    const QdStruct qd = DemoBillItem();
    Expect(presenter.AddQd(qd, path, rules), u"挂清单"_s);
    steps.AddRow({u"挂清单"_s, qd.strQdId, qd.strName});
    path.qdId = presenter.GetConfig(path)->GetLastQdId();
    const DeStruct de = DemoQuotaItem();
    Expect(presenter.AddDe2QdNode(de, path, rules), u"挂定额"_s);
    steps.AddRow({u"挂定额"_s, de.strDeId, de.strName});
}

} // namespace

CString DemoCategory()
{
    return u"给排水\\管道\\给水管"_s;
}

CString AddDemoRule(CQdDeConfigPresenter& presenter, CPath path)
{
    TextTable steps;
    Expect(presenter.AddConfig(path, path.configId), u"加规则"_s);
    steps.AddRow({u"加规则"_s, u"编号 %1"_s.arg(path.configId), u"新规则排在默认规则“其它”之前"_s});
    AddConditions(presenter, path, steps);
    AddItems(presenter, path, steps);
    return steps.ToText(2);
}

} // namespace cli
