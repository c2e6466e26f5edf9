#include "editor/files/RuleFileSteps.h"

#include "editor/files/FilesFixture.h"
#include "embedded/data/history/RuleFileLock.h"
#include "platform/Files.h"
#include "support/FaultyFileSystem.h"
#include "support/PrintText.h"

#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// What another program does before a file that has been written gets its name, once.
class BeforeNaming : public platform::FileSystemProxy
{
public:
    explicit BeforeNaming(std::function<void()> step)
        : FileSystemProxy(platform::Files()), m_step(std::move(step)), m_installed(*this)
    {
    }

    bool Rename(const CString& from, const CString& to) override
    {
        if (m_step) std::exchange(m_step, nullptr)();
        return Target().Rename(from, to);
    }

private:
    std::function<void()> m_step;
    platform::ScopedFileSystem m_installed;
};

class FileSteps : public test::ProjectWithFiles
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

    /// Lets each writing of a step fail in turn. Whenever the step fails, too, everything has to be as it
    /// was; some writings can be done without, or in another way.
    void FailEverywhere(const std::function<void()>& step) const
    {
        const CStringArray names = Names();
        const QList<QByteArray> contents = Contents();
        int failures = 0;
        for (const test::Fault fault : {test::Fault::RefuseOpen, test::Fault::NoRoom, test::Fault::Write}) {
            for (int point = 0, points = 1; point < points; ++point) {
                if (Goes(step, fault, point, points)) {
                    Reset(names, contents);
                    continue;
                }
                ++failures;
                const auto where = testing::Message() << static_cast<int>(fault) << " at " << point;
                EXPECT_EQ(Names(), names) << where;
                EXPECT_EQ(Contents(), contents) << where;
                EXPECT_EQ(Current(), u"甲"_s) << where;
                EXPECT_EQ(Remains(), CStringArray()) << where;
            }
        }
        EXPECT_GE(failures, 3);
    }

private:
    /// Whether a step goes well though a writing fails; `points` is how many writings it has.
    static bool Goes(const std::function<void()>& step, test::Fault fault, int point, int& points)
    {
        test::FaultyFileSystem files;
        files.Inject(fault);
        files.OnlyAt(point);
        bool goes = true;
        try {
            step();
        } catch (const std::exception&) {
            goes = false;
        }
        points = qMax(points, files.WritePoints());
        return goes;
    }
    void Reset(const CStringArray& names, const QList<QByteArray>& contents) const
    {
        for (const CString& name : Names())
            platform::Files().Remove(Project().RuleFolder() + u'\\' + name);
        for (qsizetype i = 0; i < names.size(); ++i)
            Write(names[i].chopped(4), contents[i]);
        Steps().MakeCurrent(Path(u"甲"_s));
    }
    QList<QByteArray> Contents() const
    {
        QList<QByteArray> contents;
        for (const CString& name : Names())
            contents.append(Content(name.chopped(4)));
        return contents;
    }
};

} // namespace

TEST_F(FileSteps, MakingCurrentStoresTheNameAndTouchesNoFile)
{
    Steps().MakeCurrent(Path(u"乙"_s));
    EXPECT_EQ(Current(), u"乙"_s);
    EXPECT_EQ(Content(u"甲"_s), Rules("a"));
    EXPECT_EQ(Content(u"乙"_s), Rules("b"));
}

TEST_F(FileSteps, OnlyAReadableRuleFileOfTheProjectBecomesCurrent)
{
    EXPECT_TRUE(Refusal([&] { Steps().MakeCurrent(Path(u"封装"_s)); }).contains(u"已写文件头"));
    EXPECT_TRUE(Refusal([&] { Steps().MakeCurrent(Path(u"没有"_s)); }).contains(u"还没有"));
    const CString outside = m_folder.WriteFile(u"外面.xml"_s, Rules("c"));
    EXPECT_TRUE(Refusal([&] { Steps().MakeCurrent(outside); }).contains(u"不在规则文件夹中"));
    EXPECT_EQ(Current(), u"甲"_s);
}

TEST_F(FileSteps, ANameIsTakenInAnyLetterCase)
{
    Write(u"Name"_s, Rules("n"));
    EXPECT_EQ(Steps().NameFault(u"nAME"_s), u"已经有叫“nAME”的规则文件"_s);
    EXPECT_EQ(Steps().NameFault(u"Name2"_s), CString());
    EXPECT_NE(Steps().NameFault(u"a/b"_s), CString());
    EXPECT_NE(Steps().NameFault(u" "_s), CString());
    EXPECT_EQ(Steps().NameFault(u"NAME"_s, Path(u"Name"_s)), CString()); // the file's own, in another case
    EXPECT_EQ(Steps().FreeName(u"name"_s), u"name (2)"_s);
}

TEST_F(FileSteps, ANewFileHoldsWhatTheTemplateHolds)
{
    m_folder.WriteFile(u"工程\\app\\QdDeConfig.def"_s, Rules("template"));
    EXPECT_EQ(Steps().Make(Steps().Template(), u"新的"_s), Path(u"新的"_s));
    EXPECT_EQ(Content(u"新的"_s), Rules("template"));
    EXPECT_EQ(Current(), u"甲"_s);
    EXPECT_EQ(Remains(), CStringArray());
}

TEST_F(FileSteps, NothingIsMadeOfWhatIsNoRuleFile)
{
    m_folder.WriteFile(u"工程\\app\\QdDeConfig.def"_s, "<other/>");
    EXPECT_TRUE(Refusal([&] { Steps().Make(Steps().Template(), u"新的"_s); }).contains(u"不是规则文件"));
    EXPECT_FALSE(Stands(u"新的"_s));
}

TEST_F(FileSteps, ATakenNameIsNotWrittenOver)
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

TEST_F(FileSteps, FilesThatAreMadeAtTheSameTimeHaveEachItsBytes)
{
    const BeforeNaming other([this] { Steps().Duplicate(Path(u"甲"_s), u"丁"_s); });
    Steps().Duplicate(Path(u"乙"_s), u"丙"_s);
    EXPECT_EQ(Content(u"丙"_s), Rules("b"));
    EXPECT_EQ(Content(u"丁"_s), Rules("a"));
    EXPECT_EQ(Remains(), CStringArray());
}

TEST_F(FileSteps, ADuplicateIsTheSameByteForByteEvenOfAWrappedFile)
{
    Steps().Duplicate(Path(u"封装"_s), u"封装 (2)"_s);
    EXPECT_EQ(Content(u"封装 (2)"_s), Content(u"封装"_s));
}

TEST_F(FileSteps, TheCurrentConfigurationStaysSoUnderItsNewName)
{
    EXPECT_EQ(Steps().Rename(Path(u"甲"_s), u"丙"_s), Path(u"丙"_s));
    EXPECT_EQ(Current(), u"丙"_s);
    EXPECT_FALSE(Stands(u"甲"_s));
    EXPECT_EQ(Content(u"丙"_s), Rules("a"));
    Steps().Rename(Path(u"乙"_s), u"丁"_s);
    EXPECT_EQ(Current(), u"丙"_s);
}

TEST_F(FileSteps, TheHistoryFollowsARenamedFile)
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

TEST_F(FileSteps, ADeletedFileIsInTheHistoryWhateverTheLimitOfCopies)
{
    History().SetLimit(0);
    Steps().Delete(Path(u"乙"_s));
    EXPECT_FALSE(Stands(u"乙"_s));
    EXPECT_EQ(Kept(u"乙"_s), QList<QByteArray>({Rules("b")}));
}

TEST_F(FileSteps, TheCurrentConfigurationIsDeletedOnlyForAnother)
{
    EXPECT_TRUE(Refusal([&] { Steps().Delete(Path(u"甲"_s)); }).contains(u"是当前配置"));
    EXPECT_TRUE(Refusal([&] { Steps().Delete(Path(u"甲"_s), Path(u"封装"_s)); }).contains(u"已写文件头"));
    EXPECT_TRUE(Stands(u"甲"_s));
    Steps().Delete(Path(u"甲"_s), Path(u"乙"_s));
    EXPECT_EQ(Current(), u"乙"_s);
    EXPECT_FALSE(Stands(u"甲"_s));
}

TEST_F(FileSteps, AFileThatCannotBeRemovedStaysCurrent)
{
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseRemove);
    EXPECT_TRUE(Refusal([&] { Steps().Delete(Path(u"甲"_s), Path(u"乙"_s)); }).contains(u"删除不了"));
    EXPECT_EQ(Current(), u"甲"_s);
    EXPECT_EQ(Content(u"甲"_s), Rules("a"));
}

TEST_F(FileSteps, UnwrappingGivesTheRuleFileAndKeepsTheWrappedOne)
{
    const QByteArray wrapped = Content(u"封装"_s);
    Steps().Unwrap(Path(u"封装"_s));
    EXPECT_EQ(Content(u"封装"_s), Rules("a"));
    EXPECT_EQ(Kept(u"封装"_s), QList<QByteArray>({wrapped}));
}

TEST_F(FileSteps, OnlyAWholeWrappedRuleFileIsUnwrapped)
{
    EXPECT_TRUE(Refusal([&] { Steps().Unwrap(Path(u"乙"_s)); }).contains(u"不是完整的封装文件"));
    Write(u"封装"_s, Wrapped("<other/>"));
    EXPECT_TRUE(Refusal([&] { Steps().Unwrap(Path(u"封装"_s)); }).contains(u"不是规则文件"));
    EXPECT_EQ(Content(u"封装"_s), Wrapped("<other/>"));
}

TEST_F(FileSteps, AFileFromElsewhereIsTakenInAsItIs)
{
    const CString outside = m_folder.WriteFile(u"外面.xml"_s, Rules("c"));
    EXPECT_EQ(Steps().TakeIn(outside, u"外面"_s), Path(u"外面"_s));
    EXPECT_EQ(Content(u"外面"_s), Rules("c"));
    EXPECT_TRUE(m_folder.Exists(u"外面.xml"_s));
    const CString table = m_folder.WriteFile(u"表.xml"_s, "<table/>");
    EXPECT_TRUE(Refusal([&] { Steps().TakeIn(table, u"表"_s); }).contains(u"不是规则文件"));
    EXPECT_TRUE(Refusal([&] { Steps().TakeIn(Path(u"乙"_s), u"丙"_s); }).contains(u"已经在这个工程中"));
}

TEST_F(FileSteps, AFailingDiskLeavesEverythingAsItWas)
{
    const CString outside = m_folder.WriteFile(u"外面.xml"_s, Rules("c"));
    FailEverywhere([&] { Steps().Duplicate(Path(u"乙"_s), u"丙"_s); });
    FailEverywhere([&] { Steps().TakeIn(outside, u"丁"_s); });
}

TEST_F(FileSteps, ARenamingThatFailsMidwayIsTakenBack)
{
    FailEverywhere([&] { Steps().Rename(Path(u"甲"_s), u"丙"_s); });
}

TEST_F(FileSteps, ADeletingThatFailsMidwayIsTakenBack)
{
    FailEverywhere([&] { Steps().Delete(Path(u"甲"_s), Path(u"乙"_s)); });
}

TEST_F(FileSteps, AnUnwrappingThatFailsMidwayIsTakenBack)
{
    FailEverywhere([&] { Steps().Unwrap(Path(u"封装"_s)); });
}

TEST_F(FileSteps, AWaitForAnotherProgramThatTheUserEndsChangesNothing)
{
    const test::ProjectHolder other(Project(), Path(u"乙"_s));
    editor::RuleFileSteps steps(
        Project(), [] { return embedded::RuleFileLock::GoOn([](const CString&, auto) { return false; }); });
    EXPECT_THROW(steps.Delete(Path(u"乙"_s)), embedded::WaitEnded);
    EXPECT_THROW(steps.Rename(Path(u"乙"_s), u"丙"_s), embedded::WaitEnded);
    EXPECT_EQ(Names(), CStringArray({u"乙.xml"_s, u"封装.xml"_s, u"甲.xml"_s}));
}
