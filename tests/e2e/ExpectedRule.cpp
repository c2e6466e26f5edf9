#include "e2e/ExpectedRule.h"

#include "support/StrictXml.h"

#include <stdexcept>
#include <utility>

namespace test {

namespace {

constexpr char Conditions[] =
    R"(<Condition><condition id="1" strCFType="公称直径" bEqual="false" strEqualoperator="" strRangeoperator1="＞" )"
    R"(strRangeoperator2="＜" strValue="" strRange1="15" strRange2="50"/></Condition>)";

QByteArray Quota(const char* library)
{
    return QByteArray(R"(<De><De id="1" strName="室内镀锌钢管 螺纹连接 公称直径(mm以内)15" strUnit="10m" )"
                      R"(strUnitCode="10" strDeId="示10-1-1" strDeCode=")") +
           library + R"(" strFormula="管道长度" strAnnex="是"/></De>)";
}

qsizetype Find(const QByteArray& file, const QByteArray& what, qsizetype from)
{
    const qsizetype place = file.indexOf(what, from);
    if (place < 0) throw std::runtime_error("the rule file holds no " + what.toStdString());
    return place;
}

/// Leaves what differs.
void DropWhatIsEqual(CStringArray& one, CStringArray& other)
{
    while (!one.isEmpty() && !other.isEmpty() && one.first() == other.first()) {
        one.removeFirst();
        other.removeFirst();
    }
    while (!one.isEmpty() && !other.isEmpty() && one.last() == other.last()) {
        one.removeLast();
        other.removeLast();
    }
}

} // namespace

QByteArray BareRule()
{
    return QByteArray(R"(<Config id="2" LastQdId="0" LastConditionId="1" bDefault="0" LastDeId="0">)") +
           Conditions + "<Qd/><De/></Config>";
}

QByteArray BillRule()
{
    return QByteArray(R"(<Config id="2" LastQdId="1" LastConditionId="1" bDefault="0" LastDeId="0">)") +
           Conditions +
           R"(<Qd><qd id="1" strQdId="031001001003" strQdIdUser="" strName="镀锌钢管" strUnit="m" strUnitCode="1" )"
           R"(strtypeid="" strQdCode="GB50856-2013" strFormula="管道长度" strAnnex="是">)" +
           Quota("DEMO-QDDE-2024") + "</qd></Qd><De/></Config>";
}

QByteArray QuotaRule()
{
    return QByteArray(R"(<Config id="2" LastQdId="0" LastConditionId="1" bDefault="0" LastDeId="1">)") +
           Conditions + "<Qd/>" + Quota("DEMO-DE-2024") + "</Config>";
}

QByteArray WithNote(QByteArray file, const QByteArray& note)
{
    return file.insert(Find(file, "<给排水", 0), "<!--" + note + "-->");
}

QByteArray WithRule(QByteArray file, const QByteArray& rule)
{
    return WithRules(std::move(file), rule, 2);
}

QByteArray WithRules(QByteArray file, const QByteArray& rules, int lastRuleId)
{
    const QByteArray lastId = R"(LastConfigId="1")";
    const QByteArray firstRule = "<Config>";
    const qsizetype category = Find(file, R"(<SMember id="10101")", 0);
    file.insert(Find(file, firstRule, category) + firstRule.size(), rules);
    return file.replace(Find(file, lastId, category), lastId.size(),
                        "LastConfigId=\"" + QByteArray::number(lastRuleId) + '"');
}

void ExpectSameXml(const QByteArray& found, const QByteArray& expected)
{
    CStringArray foundLines = CanonicalXml(found).split(u'\n');
    CStringArray expectedLines = CanonicalXml(expected).split(u'\n');
    DropWhatIsEqual(foundLines, expectedLines);
    EXPECT_EQ(foundLines, expectedLines);
}

} // namespace test
