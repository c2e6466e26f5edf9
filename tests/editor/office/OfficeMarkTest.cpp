#include "editor/office/OfficeMark.h"

#include "editor/EditorFixture.h"
#include "editor/project/Project.h"
#include "embedded/OfficeDatabase.h"
#include "embedded/data/host/CreateProject.h"
#include "support/Patience.h"

#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QStatusBar>

using namespace Qt::StringLiterals;

namespace {

/// The main window over a project of an office.
class OfficeMarkTest : public test::EditorWindow
{
protected:
    OfficeMarkTest()
    {
        m_window.show();
        embedded::ProjectOptions options;
        options.office = test::TestOffice::Keeper();
        embedded::CreateProject(Folder(u"mine"_s), options);
        EXPECT_TRUE(m_window.OpenProject(Folder(u"mine"_s)));
    }

    editor::OfficeMark& Mark()
    {
        for (QLabel* label : m_window.statusBar()->findChildren<QLabel*>())
            if (auto* const mark = dynamic_cast<editor::OfficeMark*>(label)) return *mark;
        throw std::runtime_error("no mark");
    }
    embedded::ProjectOffice& Office() { return *m_window.OpenedProject()->Host().Office(); }
    /// The user comes back to the program.
    static void ComeBack() { emit qGuiApp->applicationStateChanged(Qt::ApplicationActive); }

    test::TestOffice m_office;
};

const CString Reached = u"办公室“keeper”"_s;
const CString News = u"办公室“keeper”有新数据，重新打开工程就用"_s;
const CString Gone = u"办公室“keeper”连不上，用上次的数据"_s;

} // namespace

TEST_F(OfficeMarkTest, FollowsWhateverAsksTheOffice)
{
    EXPECT_TRUE(Mark().isVisible());
    EXPECT_EQ(Mark().text(), Reached);
    test::SharedServer().Stop();
    EXPECT_FALSE(Office().Reach());
    EXPECT_EQ(Mark().text(), Gone);
    EXPECT_EQ(Mark().toolTip(), Office().InWords());
    test::SharedServer().StartAgain();
    EXPECT_TRUE(Office().Reach());
    EXPECT_EQ(Mark().text(), Reached);
}

TEST_F(OfficeMarkTest, LooksAgainWhenTheUserComesBackToTheProgram)
{
    test::SharedServer().Stop();
    EXPECT_EQ(Mark().text(), Reached) << "nobody has asked";
    ComeBack();
    test::WaitInLoopFor(u"the mark of a lost office"_s, [this] { return Mark().text() == Gone; });
    EXPECT_EQ(Office().Reached(), nullptr);
    ComeBack(); // this look still finds nobody, and its end is not heard before the next one
    test::SharedServer().StartAgain();
    ComeBack();
    test::WaitInLoopFor(u"the mark of the office"_s, [this] { return Mark().text() == Reached; });
    EXPECT_NE(Office().Reached(), nullptr);
}

TEST_F(OfficeMarkTest, TellsOfACatalogueThatIsNewerThanThatOfTheOpenProject)
{
    EXPECT_EQ(Mark().text(), Reached);
    m_office.Ask(u"UPDATE ktqdde.office_state SET revision = revision + 1"_s);
    ComeBack();
    test::WaitInLoopFor(u"the mark of news"_s, [this] { return Mark().text() == News; });
    EXPECT_EQ(Mark().toolTip(), Office().InWords());
    EXPECT_TRUE(m_window.OpenProject(Folder(u"mine"_s)));
    EXPECT_EQ(Mark().text(), Reached);
}

TEST_F(OfficeMarkTest, GoesWithTheProject)
{
    ComeBack();
    m_window.Commands().closeProject->trigger();
    EXPECT_FALSE(Mark().isVisible());
    ComeBack();
    EXPECT_FALSE(Mark().isVisible());
}

// What has not been heard of for a while is not waited for on the thread of the windows.
TEST_F(OfficeMarkTest, WindowsAreAliveWhileTheServerKeepsSilent)
{
    m_office.Services().ForgetPatience();
    EXPECT_TRUE(m_window.OpenProject(Folder(u"mine"_s)));
    test::SharedServer().StandStill();
    ComeBack();
    test::WaitInLoopFor(u"the mark of a lost office"_s, [this] { return Mark().text() == Gone; });
    int turns = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, &clock, [&] { ++turns; });
    clock.start(0);
    EXPECT_FALSE(Office().Reach());
    EXPECT_GT(turns, 0);
    test::SharedServer().GoOn();
    EXPECT_TRUE(Office().Reach());
}
