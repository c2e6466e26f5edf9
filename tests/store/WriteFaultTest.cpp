#include "store/CXmlAttrConfig.h"
#include "store/CXmlQdDeConfig.h"

#include "StoreTesting.h"

#include "platform/Paths.h"
#include "support/FaultyFileSystem.h"
#include "support/StrictXml.h"
#include "xml/Error.h"

using namespace Qt::StringLiterals;
using test::Fault;
using test::RulePath;

// Every place where the stores write, with every fault of the disk.

namespace {

struct FaultCase
{
    const char* name;
    Fault fault;
    qint64 bytes; ///< written before `Fault::Write` strikes
};

void PrintTo(const FaultCase& fault, std::ostream* out)
{
    *out << fault.name;
}

class WriteFault : public test::FileFixture, public ::testing::WithParamInterface<FaultCase>
{
protected:
    /// first.xml and a store on it whose edit makes the file longer.
    WriteFault()
        : m_store(Put(u"first.xml"_s,
                      test::RuleFile(u"<电气 name='电气'/>"_s + test::PlumbingRules(u"<c id='4'/>"_s))),
                  u"给排水"_s),
          m_before(Bytes(u"first.xml"_s))
    {
        EXPECT_TRUE(m_store.AddCondition(RulePath(4), test::Condition(u"edit"_s)));
    }

    void Break(int writePoint)
    {
        m_files.Inject(GetParam().fault);
        if (GetParam().fault == Fault::Write) m_files.FailAfter(GetParam().bytes);
        m_files.OnlyAt(m_files.WritePoints() + writePoint);
    }

    /// That `action` raises an error that names the file.
    template <typename Action>
    static void ExpectError(Action action, const CString& path)
    {
        try {
            action();
            ADD_FAILURE() << "nothing was raised";
        } catch (const xml::Error& error) {
            EXPECT_TRUE(error.Message().contains(platform::ToNative(path))) << error.what();
        }
    }

    void ExpectEditInTree()
    {
        EXPECT_EQ(m_store.GetFilePath(), File(u"first.xml"_s));
        EXPECT_EQ(m_store.GetConfig(RulePath(4))->GetConditionString(), u"A＝edit;"_s);
    }

    test::FaultyFileSystem m_files;
    CXmlQdDeConfig m_store;
    QByteArray m_before;
};

const FaultCase cases[] = {
    {"RefusedOpen", Fault::RefuseOpen, 0},
    {"NoRoom", Fault::NoRoom, 0},
    {"WriteFailsAtOnce", Fault::Write, 0},
    {"WriteFailsAfterOneByte", Fault::Write, 1},
    {"WriteFailsAfter100Bytes", Fault::Write, 100},
    {"WriteFailsAfter200Bytes", Fault::Write, 200},
    {"Resize", Fault::Resize, 0},
    {"Sync", Fault::Sync, 0},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Disk, WriteFault, ::testing::ValuesIn(cases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(WriteFault, CreatingAMissingFileRaisesAndLeavesNone)
{
    Break(0);
    ExpectError([&] { CXmlQdDeConfig(File(u"new.xml"_s), u"给排水"_s); }, File(u"new.xml"_s));
    EXPECT_FALSE(Exists(u"new.xml"_s));
}

TEST_P(WriteFault, SaveRaisesKeepsTheTreeAndRecordsNoVersion)
{
    Break(0);
    test::VersionRecorder recorder(Host());
    ExpectError([&] { m_store.Save(); }, File(u"first.xml"_s));
    EXPECT_TRUE(recorder.Calls.empty());
    ExpectEditInTree();
    EXPECT_EQ(Bytes(u"first.xml"_s), m_before);
}

TEST_P(WriteFault, SaveAfterTheDiskHasRecoveredWritesTheEdit)
{
    Break(0);
    EXPECT_THROW(m_store.Save(), xml::Error);
    m_files.Heal();
    EXPECT_TRUE(m_store.Save());
    EXPECT_TRUE(test::IsStrictXml(Bytes(u"first.xml"_s)));
    EXPECT_TRUE(Bytes(u"first.xml"_s).contains("\"edit\""));
    EXPECT_EQ(Specialties(u"first.xml"_s).size(), 2) << "the neighbour must not be lost";
}

TEST_P(WriteFault, CopyOfSaveAsIsReportedAndNothingIsSaved)
{
    // Shorter than the file that is copied over it, so that the copy needs room.
    const CString target = Put(u"second.xml"_s, u"<自动套清单定额配置信息/>"_s);
    const QByteArray second = Bytes(u"second.xml"_s);
    Break(0);
    EXPECT_FALSE(m_store.SaveAs(target));
    EXPECT_EQ(Messages().Texts(), CStringArray{u"文件另存为出错,请稍候在试!"_s});
    EXPECT_EQ(Bytes(u"first.xml"_s), m_before);
    ExpectEditInTree();
    EXPECT_EQ(Bytes(u"second.xml"_s), second);
}

TEST_P(WriteFault, CopyOfSaveAsToANewFileLeavesNone)
{
    Break(0);
    EXPECT_FALSE(m_store.SaveAs(File(u"second.xml"_s)));
    EXPECT_EQ(Messages().Texts(), CStringArray{u"文件另存为出错,请稍候在试!"_s});
    EXPECT_FALSE(Exists(u"second.xml"_s));
    ExpectEditInTree();
}

TEST_P(WriteFault, SaveOfSaveAsRaisesAndRestoresTheBinding)
{
    Break(1);
    ExpectError([&] { m_store.SaveAs(File(u"second.xml"_s)); }, File(u"second.xml"_s));
    EXPECT_EQ(Bytes(u"first.xml"_s), m_before);
    ExpectEditInTree();
    EXPECT_EQ(Bytes(u"second.xml"_s), m_before) << "the copy";
}

TEST_P(WriteFault, SaveOfReLoadRaisesAndNothingIsLoaded)
{
    const CString other = Put(u"other.xml"_s, test::RuleFile(test::Plumbing()));
    Break(0);
    ExpectError([&] { m_store.ReLoad(other); }, File(u"first.xml"_s));
    ExpectEditInTree();
    EXPECT_EQ(Bytes(u"first.xml"_s), m_before);
}

TEST_P(WriteFault, CopyOfNewFileIsNotReportedAndWhatStandsThereIsLoaded)
{
    Put(u"app\\QdDeConfig.def"_s, test::RuleFile(test::PlumbingRules(u"<c id='8'/>"_s.repeated(9))));
    const CString other = Put(u"other.xml"_s, test::RuleFile(test::Plumbing()));
    const QByteArray before = Bytes(u"other.xml"_s);
    Break(0);
    EXPECT_TRUE(m_store.NewFile(other));
    EXPECT_TRUE(Messages().Messages().empty());
    EXPECT_TRUE(Bytes(u"first.xml"_s).contains("\"edit\""));
    EXPECT_EQ(m_store.GetFilePath(), other);
    EXPECT_EQ(Bytes(u"other.xml"_s), before);
}

TEST_P(WriteFault, CopyOfNewFileToANewFileLeavesNoneAndThatIsReported)
{
    Put(u"app\\QdDeConfig.def"_s, test::RuleFile(test::PlumbingRules(u"<c id='8'/>"_s.repeated(9))));
    Break(0);
    EXPECT_FALSE(m_store.NewFile(File(u"other.xml"_s)));
    EXPECT_EQ(Messages().Texts(), CStringArray{u"文件不存在，请重新选择调用文件!"_s});
    EXPECT_FALSE(Exists(u"other.xml"_s));
    EXPECT_EQ(m_store.GetFilePath(), File(u"first.xml"_s));
}

TEST_P(WriteFault, VersionThatCannotBeRecordedLeavesTheSavedFileWhole)
{
    EXPECT_TRUE(m_store.Save());
    const QByteArray saved = Bytes(u"first.xml"_s); // without the version to come
    Host().SetVersion(u"10.20.30"_s);
    Break(1);
    EXPECT_TRUE(m_store.Save());
    EXPECT_EQ(Bytes(u"first.xml"_s), saved);
    EXPECT_TRUE(test::IsStrictXml(Bytes(u"first.xml"_s)));
    EXPECT_TRUE(Bytes(u"first.xml"_s).contains("\"edit\""));
}

TEST_P(WriteFault, AttributeFileRaisesAndIsAsBefore)
{
    Put(u"app\\AttributeInformation.xml"_s, u"<属性参数信息/>"_s);
    Put(u"app\\AttrConfig.xml"_s, u"<属性类型配置信息/>"_s);
    const QByteArray before = Bytes(u"app\\AttrConfig.xml"_s);
    CXmlAttrConfig store;
    Break(0);
    ExpectError([&] { store.Save(); }, File(u"app\\AttrConfig.xml"_s));
    EXPECT_EQ(Bytes(u"app\\AttrConfig.xml"_s), before);
}

TEST_P(WriteFault, NewAttributeFileRaisesAndIsNotThere)
{
    Put(u"app\\AttributeInformation.xml"_s, u"<属性参数信息/>"_s);
    CXmlAttrConfig store;
    Break(0);
    ExpectError([&] { store.Save(); }, File(u"app\\AttrConfig.xml"_s));
    EXPECT_FALSE(Exists(u"app\\AttrConfig.xml"_s));
}

TEST_F(WriteFault, FullDiskDoesNotStopASaveThatShrinksTheFile)
{
    Put(u"first.xml"_s,
        test::RuleFile(u"<给排水 name='给排水'><!--"_s + u"x"_s.repeated(9000) + u"--></给排水>"_s));
    m_files.Inject(Fault::NoRoom);
    EXPECT_TRUE(m_store.Save());
    EXPECT_FALSE(Bytes(u"first.xml"_s).contains("xxx"));
}

TEST_F(WriteFault, ReadOnlyFileRaisesAndIsAsBefore)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everywhere";
    m_host.Folder().SetReadOnly(u"first.xml"_s, true);
    EXPECT_THROW(m_store.Save(), xml::Error);
    EXPECT_EQ(Bytes(u"first.xml"_s), m_before);
}
