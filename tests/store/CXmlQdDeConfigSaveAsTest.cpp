#include "store/CXmlQdDeConfig.h"

#include "StoreTesting.h"

#include "support/FaultyFileSystem.h"
#include "xml/Error.h"

#include <QtCore/QFile>

using namespace Qt::StringLiterals;
using test::RulePath;

// Writing the tree to a second file.

namespace {

class StoreSaveAs : public test::FileFixture
{
protected:
    StoreSaveAs()
        : m_store(Put(u"first.xml"_s, test::RuleFile(u"<电气 name='电气'><!--他人--></电气>"_s +
                                                     test::PlumbingRules(u"<c id='4'/>"_s))),
                  u"给排水"_s),
          m_before(Bytes(u"first.xml"_s))
    {
        EXPECT_TRUE(m_store.AddCondition(RulePath(4), test::Condition(u"edit"_s)));
    }

    bool HasEdit(const CString& name) const { return Bytes(name).contains("\"edit\""); }
    void ExpectWarning()
    {
        ASSERT_EQ(Messages().Messages().size(), 1U);
        const platform::Message& message = Messages().Messages().front();
        EXPECT_EQ(message.text, u"文件另存为出错,请稍候在试!"_s);
        EXPECT_EQ(message.kind, platform::MessageKind::Warning);
        EXPECT_EQ(message.caption, u"Norvasoft"_s);
        EXPECT_TRUE(message.owned);
    }

    CXmlQdDeConfig m_store;
    QByteArray m_before;
};

} // namespace

TEST_F(StoreSaveAs, NewFileIsTheOldOneWithThisSpecialtyReplaced)
{
    EXPECT_TRUE(m_store.SaveAs(File(u"second.xml"_s)));
    EXPECT_TRUE(HasEdit(u"second.xml"_s));
    EXPECT_TRUE(Bytes(u"second.xml"_s).contains(u"<电气 name='电气'><!--他人--></电气>"_s.toUtf8()));
    EXPECT_EQ(Specialties(u"second.xml"_s), CStringArray({u"电气/电气"_s, u"给排水/给排水"_s}));
    EXPECT_EQ(Bytes(u"first.xml"_s), m_before);
}

TEST_F(StoreSaveAs, StoreStaysBoundToTheOldFile)
{
    EXPECT_TRUE(m_store.SaveAs(File(u"second.xml"_s)));
    EXPECT_EQ(m_store.GetFilePath(), File(u"first.xml"_s));
    const QByteArray second = Bytes(u"second.xml"_s);
    EXPECT_TRUE(m_store.AddCondition(RulePath(4), test::Condition(u"later"_s)));
    EXPECT_TRUE(m_store.Save());
    EXPECT_TRUE(Bytes(u"first.xml"_s).contains("\"later\""));
    EXPECT_EQ(Bytes(u"second.xml"_s), second);
}

TEST_F(StoreSaveAs, BoundPathIsSavedWithoutACopy)
{
    const test::FaultyFileSystem files;
    test::VersionRecorder recorder(Host()); // writes nothing itself
    EXPECT_TRUE(m_store.SaveAs(File(u"first.xml"_s)));
    EXPECT_EQ(files.WritePoints(), 1);
    EXPECT_TRUE(HasEdit(u"first.xml"_s));
}

TEST_F(StoreSaveAs, BoundPathInAnotherCaseIsCopiedTo)
{
    Put(u"FIRST.xml"_s, test::RuleFile(u"<建筑 name='建筑'/>"_s));
    const test::FaultyFileSystem files;
    test::VersionRecorder recorder(Host());
    EXPECT_TRUE(m_store.SaveAs(File(u"FIRST.xml"_s)));
    EXPECT_EQ(files.WritePoints(), 2);
    EXPECT_EQ(Specialties(u"FIRST.xml"_s), CStringArray({u"电气/电气"_s, u"给排水/给排水"_s}));
}

TEST_F(StoreSaveAs, LongerTargetIsOverwrittenWhole)
{
    Put(u"second.xml"_s, test::RuleFile(u"<!--"_s + u"x"_s.repeated(9000) + u"-->"_s));
    EXPECT_TRUE(m_store.SaveAs(File(u"second.xml"_s)));
    EXPECT_FALSE(Bytes(u"second.xml"_s).contains("xxx"));
}

TEST_F(StoreSaveAs, VersionIsRecordedInTheNewFile)
{
    test::VersionRecorder recorder(Host());
    EXPECT_TRUE(m_store.SaveAs(File(u"second.xml"_s)));
    ASSERT_EQ(recorder.Calls.size(), 1U);
    EXPECT_EQ(recorder.Calls.front().file, File(u"second.xml"_s));
}

TEST_F(StoreSaveAs, TargetThatCannotBeWrittenIsReportedAndNothingIsSaved)
{
    EXPECT_FALSE(m_store.SaveAs(File(u"nowhere\\second.xml"_s)));
    ExpectWarning();
    EXPECT_EQ(Bytes(u"first.xml"_s), m_before);
    EXPECT_EQ(m_store.GetFilePath(), File(u"first.xml"_s));
    EXPECT_EQ(m_store.GetConfig(RulePath(4))->GetConditionString(), u"A＝edit;"_s);
}

TEST_F(StoreSaveAs, VanishedSourceIsReportedAndTheTargetIsLeftAlone)
{
    Put(u"second.xml"_s, test::RuleFile({}));
    const QByteArray second = Bytes(u"second.xml"_s);
    ASSERT_TRUE(QFile::remove(m_host.Folder().Native(u"first.xml"_s)));
    EXPECT_FALSE(m_store.SaveAs(File(u"second.xml"_s)));
    ExpectWarning();
    EXPECT_EQ(Bytes(u"second.xml"_s), second);
    EXPECT_FALSE(Exists(u"first.xml"_s));
}

TEST_F(StoreSaveAs, BindingIsRestoredWhenTheSavingRaises)
{
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    files.OnlyAt(1); // the copy succeeds, the save does not
    EXPECT_THROW(m_store.SaveAs(File(u"second.xml"_s)), xml::Error);
    EXPECT_EQ(m_store.GetFilePath(), File(u"first.xml"_s));
    EXPECT_EQ(Bytes(u"second.xml"_s), m_before);
    files.Heal();
    EXPECT_TRUE(m_store.Save());
    EXPECT_TRUE(HasEdit(u"first.xml"_s));
    EXPECT_FALSE(HasEdit(u"second.xml"_s));
}

TEST_F(StoreSaveAs, ResultIsThatOfTheSaving)
{
    const test::NoEngine noEngine;
    EXPECT_FALSE(m_store.SaveAs(File(u"second.xml"_s)));
    EXPECT_EQ(Messages().Texts(), CStringArray{test::NoEngineText()});
    EXPECT_EQ(m_store.GetFilePath(), File(u"first.xml"_s));
    EXPECT_EQ(Bytes(u"second.xml"_s), m_before); // the copy has been made
}
