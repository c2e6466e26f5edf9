#include "editor/files/RuleFileSteps.h"

#include "editor/files/FilesFixture.h"
#include "embedded/data/history/RuleFileLock.h"
#include "platform/Files.h"
#include "support/FaultyFileSystem.h"
#include "support/PrintText.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

class RuleFileSteps : public test::ProjectWithFiles
{
protected:
    editor::RuleFileSteps Steps() const { return editor::RuleFileSteps(Project()); }

    /// Runs a step that has to be refused; what it says.
    static CString Refusal(const std::function<void()>& step)
    {
        try {
            step();
        } catch (const std::exception& error) {
            return CString::fromUtf8(error.what());
        }
        ADD_FAILURE() << "not refused";
        return {};
    }

    /// Lets each writing of a step fail in turn and looks each time whether everything is as it was.
    void FailEverywhere(const std::function<void()>& step) const
    {
        const CStringArray names = Names();
        const QList<QByteArray> contents = Contents();
        for (const test::Fault fault : {test::Fault::RefuseOpen, test::Fault::NoRoom, test::Fault::Write}) {
            bool hasFailed = true;
            for (int point = 0; hasFailed; ++point) {
                test::FaultyFileSystem files;
                files.Inject(fault);
                files.OnlyAt(point);
                hasFailed = false;
                try {
                    step();
                } catch (const std::exception&) {
                    hasFailed = true;
                }
                if (!hasFailed) return Undone(files.WritePoints(), point);
                EXPECT_EQ(Names(), names) << static_cast<int>(fault) << ' ' << point;
                EXPECT_EQ(Contents(), contents) << static_cast<int>(fault) << ' ' << point;
                EXPECT_EQ(Current(), u"甲"_s) << static_cast<int>(fault) << ' ' << point;
                EXPECT_EQ(Remains(), CStringArray()) << static_cast<int>(fault) << ' ' << point;
            }
        }
    }

private:
    QList<QByteArray> Contents() const
    {
        QList<QByteArray> contents;
        for (const CString& name : Names())
            contents.append(Content(name.chopped(4)));
        return contents;
    }
    /// A step that goes well with a fault has no writing left at which to fail.
    static void Undone(int points, int point) { EXPECT_LE(points, point); }
};

} // namespace

TEST_F(RuleFileSteps, MakingCurrentStoresTheNameAndTouchesNoFile)
{
    Steps().MakeCurrent(Path(u"乙"_s));
    EXPECT_EQ(Current(), u"乙"_s);
    EXPECT_EQ(Content(u"甲"_s), Rules("a"));
    EXPECT_EQ(Content(u"乙"_s), Rules("b"));
}

TEST_F(RuleFileSteps, OnlyAReadableRuleFileOfTheProjectBecomesCurrent)
{
    EXPECT_TRUE(Refusal([&] { Steps().MakeCurrent(Path(u"封装"_s)); }).contains(u"已写文件头"));
    EXPECT_TRUE(Refusal([&] { Steps().MakeCurrent(Path(u"没有"_s)); }).contains(u"还没有"));
    const CString outside = m_folder.WriteFile(u"外面.xml"_s, Rules("c"));
    EXPECT_TRUE(Refusal([&] { Steps().MakeCurrent(outside); }).contains(u"不在规则文件夹中"));
    EXPECT_EQ(Current(), u"甲"_s);
}

TEST_F(RuleFileSteps, ANameIsTakenInAnyLetterCase)
{
    Write(u"Name"_s, Rules("n"));
    EXPECT_EQ(Steps().NameFault(u"nAME"_s), u"已经有叫“nAME”的规则文件"_s);
    EXPECT_EQ(Steps().NameFault(u"Name2"_s), CString());
    EXPECT_NE(Steps().NameFault(u"a/b"_s), CString());
    EXPECT_NE(Steps().NameFault(u" "_s), CString());
    EXPECT_EQ(Steps().NameFault(u"NAME"_s, Path(u"Name"_s)), CString()); // the file's own, in another case
    EXPECT_EQ(Steps().FreeName(u"name"_s), u"name (2)"_s);
}

TEST_F(RuleFileSteps, ANewFileHoldsWhatTheTemplateHolds)
{
    m_folder.WriteFile(u"工程\\app\\QdDeConfig.def"_s, Rules("template"));
    EXPECT_EQ(Steps().Make(Steps().Template(), u"新的"_s), Path(u"新的"_s));
    EXPECT_EQ(Content(u"新的"_s), Rules("template"));
    EXPECT_EQ(Current(), u"甲"_s);
    EXPECT_EQ(Remains(), CStringArray());
}

TEST_F(RuleFileSteps, NothingIsMadeOfWhatIsNoRuleFile)
{
    m_folder.WriteFile(u"工程\\app\\QdDeConfig.def"_s, "<other/>");
    EXPECT_TRUE(Refusal([&] { Steps().Make(Steps().Template(), u"新的"_s); }).contains(u"不是规则文件"));
    EXPECT_FALSE(Stands(u"新的"_s));
}

TEST_F(RuleFileSteps, ATakenNameIsNotWrittenOver)
{
    for (const auto& step : std::initializer_list<std::function<void()>>{
             [&] { Steps().Make(Path(u"甲"_s), u"乙"_s); },
             [&] { Steps().Duplicate(Path(u"甲"_s), u"乙"_s); },
             [&] { Steps().Rename(Path(u"甲"_s), u"乙"_s); },
             [&] { Steps().TakeIn(m_folder.WriteFile(u"x.xml"_s, Rules("x")), u"乙"_s); }})
        EXPECT_EQ(Refusal(step), u"已经有叫“乙”的规则文件"_s);
    EXPECT_EQ(Content(u"甲"_s), Rules("a"));
    EXPECT_EQ(Content(u"乙"_s), Rules("b"));
}

TEST_F(RuleFileSteps, ADuplicateIsTheSameByteForByteEvenOfAWrappedFile)
{
    Steps().Duplicate(Path(u"封装"_s), u"封装 (2)"_s);
    EXPECT_EQ(Content(u"封装 (2)"_s), Content(u"封装"_s));
}

TEST_F(RuleFileSteps, TheCurrentConfigurationStaysSoUnderItsNewName)
{
    EXPECT_EQ(Steps().Rename(Path(u"甲"_s), u"丙"_s), Path(u"丙"_s));
    EXPECT_EQ(Current(), u"丙"_s);
    EXPECT_FALSE(Stands(u"甲"_s));
    EXPECT_EQ(Content(u"丙"_s), Rules("a"));
    Steps().Rename(Path(u"乙"_s), u"丁"_s);
    EXPECT_EQ(Current(), u"丙"_s);
}

TEST_F(RuleFileSteps, TheHistoryFollowsARenamedFile)
{
    History().Keep(Path(u"甲"_s));
    Write(u"甲"_s, Rules("a2"));
    Steps().Rename(Path(u"甲"_s), u"丙"_s);
    EXPECT_EQ(Kept(u"丙"_s), QList<QByteArray>({Rules("a2"), Rules("a")}));
    const auto copies = History().List(Path(u"丙"_s));
    History().Restore(copies.last());
    EXPECT_EQ(Content(u"丙"_s), Rules("a"));
    EXPECT_FALSE(Stands(u"甲"_s));
}

TEST_F(RuleFileSteps, ADeletedFileIsInTheHistoryWhateverTheLimitOfCopies)
{
    History().SetLimit(0);
    Steps().Delete(Path(u"乙"_s));
    EXPECT_FALSE(Stands(u"乙"_s));
    EXPECT_EQ(Kept(u"乙"_s), QList<QByteArray>({Rules("b")}));
}

TEST_F(RuleFileSteps, TheCurrentConfigurationIsDeletedOnlyForAnother)
{
    EXPECT_TRUE(Refusal([&] { Steps().Delete(Path(u"甲"_s)); }).contains(u"是当前配置"));
    EXPECT_TRUE(Refusal([&] { Steps().Delete(Path(u"甲"_s), Path(u"封装"_s)); }).contains(u"已写文件头"));
    EXPECT_TRUE(Stands(u"甲"_s));
    Steps().Delete(Path(u"甲"_s), Path(u"乙"_s));
    EXPECT_EQ(Current(), u"乙"_s);
    EXPECT_FALSE(Stands(u"甲"_s));
}

TEST_F(RuleFileSteps, AFileThatCannotBeRemovedStaysCurrent)
{
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseRemove);
    EXPECT_TRUE(Refusal([&] { Steps().Delete(Path(u"甲"_s), Path(u"乙"_s)); }).contains(u"删除不了"));
    EXPECT_EQ(Current(), u"甲"_s);
    EXPECT_EQ(Content(u"甲"_s), Rules("a"));
}

TEST_F(RuleFileSteps, UnwrappingGivesTheRuleFileAndKeepsTheWrappedOne)
{
    const QByteArray wrapped = Content(u"封装"_s);
    Steps().Unwrap(Path(u"封装"_s));
    EXPECT_EQ(Content(u"封装"_s), Rules("a"));
    EXPECT_EQ(Kept(u"封装"_s), QList<QByteArray>({wrapped}));
}

TEST_F(RuleFileSteps, OnlyAWholeWrappedRuleFileIsUnwrapped)
{
    EXPECT_TRUE(Refusal([&] { Steps().Unwrap(Path(u"乙"_s)); }).contains(u"不是完整的封装文件"));
    Write(u"封装"_s, Wrapped("<other/>"));
    EXPECT_TRUE(Refusal([&] { Steps().Unwrap(Path(u"封装"_s)); }).contains(u"不是规则文件"));
    EXPECT_EQ(Content(u"封装"_s), Wrapped("<other/>"));
}

TEST_F(RuleFileSteps, AFileFromElsewhereIsTakenInAsItIs)
{
    const CString outside = m_folder.WriteFile(u"外面.xml"_s, Rules("c"));
    EXPECT_EQ(Steps().TakeIn(outside, u"外面"_s), Path(u"外面"_s));
    EXPECT_EQ(Content(u"外面"_s), Rules("c"));
    EXPECT_TRUE(m_folder.Exists(u"外面.xml"_s));
    const CString table = m_folder.WriteFile(u"表.xml"_s, "<table/>");
    EXPECT_TRUE(Refusal([&] { Steps().TakeIn(table, u"表"_s); }).contains(u"不是规则文件"));
    EXPECT_TRUE(Refusal([&] { Steps().TakeIn(Path(u"乙"_s), u"丙"_s); }).contains(u"已经在这个工程中"));
}

TEST_F(RuleFileSteps, AFailingDiskLeavesEverythingAsItWas)
{
    const CString outside = m_folder.WriteFile(u"外面.xml"_s, Rules("c"));
    FailEverywhere([&] { Steps().Duplicate(Path(u"乙"_s), u"丙"_s); });
    FailEverywhere([&] { Steps().TakeIn(outside, u"丁"_s); });
}

TEST_F(RuleFileSteps, ARenamingThatFailsMidwayIsTakenBack)
{
    FailEverywhere([&] { Steps().Rename(Path(u"甲"_s), u"丙"_s); });
}

TEST_F(RuleFileSteps, ADeletingThatFailsMidwayIsTakenBack)
{
    FailEverywhere([&] { Steps().Delete(Path(u"甲"_s), Path(u"乙"_s)); });
}

TEST_F(RuleFileSteps, AnUnwrappingThatFailsMidwayIsTakenBack)
{
    FailEverywhere([&] { Steps().Unwrap(Path(u"封装"_s)); });
}

TEST_F(RuleFileSteps, AWaitForAnotherProgramThatTheUserEndsChangesNothing)
{
    const test::ProjectHolder other(Project(), Path(u"乙"_s));
    editor::RuleFileSteps steps(
        Project(), [] { return embedded::RuleFileLock::GoOn([](const CString&, auto) { return false; }); });
    EXPECT_THROW(steps.Delete(Path(u"乙"_s)), embedded::WaitEnded);
    EXPECT_THROW(steps.Rename(Path(u"乙"_s), u"丙"_s), embedded::WaitEnded);
    EXPECT_EQ(Names(), CStringArray({u"乙.xml"_s, u"封装.xml"_s, u"甲.xml"_s}));
}
