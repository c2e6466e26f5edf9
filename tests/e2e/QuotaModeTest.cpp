#include "e2e/EditorUser.h"
#include "e2e/ExpectedRule.h"

using namespace Qt::StringLiterals;
using namespace test;

namespace {

class QuotaModeJourney : public EditorTest
{
protected:
    QuotaModeJourney() { MakeProject(SQdDeInfo::QuotaMode); }
};

} // namespace

TEST_F(QuotaModeJourney, RuleWithRangeAndQuotaReachesTheFile)
{
    StartOnProject();
    OpenConfig();
    SelectWaterPipes(ConfigTitle);
    AddRangeRule(ConfigTitle);
    PickQuota(ConfigTitle, u"10-1-1"_s);
    CloseConfig();
    Quit();
    ExpectRuleInFile(QuotaRule());
}
