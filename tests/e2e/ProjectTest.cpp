#include "e2e/EditorUser.h"
#include "support/StrictXml.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace test;

using EditorProject = EditorTest;

TEST_F(EditorProject, IsMadeFromTheWelcomePageAndSetToQuotaMode)
{
    Start({});
    m_desktop.Focus(MainTitle);
    m_desktop.Press({u"ctrl+n"_s});
    m_desktop.Focus(u"新建工程"_s);
    m_desktop.Press({u"ctrl+a"_s});
    m_desktop.Type(ProjectFolder());
    m_desktop.Press({u"alt+m"_s, u"Down"_s, u"Return"_s});
    m_desktop.WaitUntilGone(u"新建工程"_s);
    Command(u"F2"_s, u"定额模式: DefaultConfig"_s);
    CloseConfig();
    Quit();
    EXPECT_TRUE(IsStrictXml(RuleFile()));
}

TEST_F(EditorProject, OfTheSampleIsMadeAtTheFirstStart)
{
    Start({u"--sample"_s, ProjectFolder()});
    m_desktop.Focus(ProjectTitle);
    Quit();
    EXPECT_THAT(RuleFile().toStdString(), ::testing::HasSubstr("镀锌钢管 DN15"));
}
