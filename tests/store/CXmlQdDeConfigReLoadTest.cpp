#include "store/CXmlQdDeConfig.h"

#include "StoreTesting.h"

#include "store/WrappedFile.h"
#include "support/FaultyFileSystem.h"
#include "support/StandardCatalogue.h"
#include "xml/Error.h"

#include <QtCore/QFile>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;
using test::RulePath;

// Binding a store to another file.

namespace {

class StoreReLoad : public test::FileFixture
{
protected:
    StoreReLoad() : m_path(Put(u"first.xml"_s, test::RuleFile(test::PlumbingRules(u"<c id='4'/>"_s)))) {}

    /// A store on first.xml with a condition that no file has yet.
    std::unique_ptr<CXmlQdDeConfig> Edited() const
    {
        auto store = std::make_unique<CXmlQdDeConfig>(m_path, u"给排水"_s);
        EXPECT_TRUE(store->AddCondition(RulePath(4), test::Condition(u"edit"_s)));
        return store;
    }

    /// Whether the edit has reached first.xml.
    bool Saved() const { return Bytes(u"first.xml"_s).contains("\"edit\""); }

    /// That the store is as `Edited` made it.
    void ExpectAsBefore(CXmlQdDeConfig& store) const
    {
        EXPECT_EQ(store.GetFilePath(), m_path);
        ASSERT_NE(store.GetConfig(RulePath(4)), nullptr);
        EXPECT_EQ(store.GetConfig(RulePath(4))->GetConditionString(), u"A＝edit;"_s);
    }

    CString PutOther(const CString& name, int ruleId = 6) const
    {
        return Put(name, test::RuleFile(test::PlumbingRules(u"<c id='%1'/>"_s.arg(ruleId))));
    }

    CString m_path;
};

/// A host that raises at the last category of the specialty, when a tree is nearly read.
class RaisingAtTheEnd : public test::MemoryHost
{
public:
    RaisingAtTheEnd() { test::FillStandardCatalogue(*this); }
    bool GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name) override
    {
        if (id.strSmallCategoryId == u"121"_s) throw std::runtime_error("lost");
        return MemoryHost::GetSmallCategoryName(id, name);
    }
};

CString MissingText()
{
    return u"文件不存在，请重新选择调用文件!"_s;
}

} // namespace

TEST_F(StoreReLoad, AnotherFileIsBoundAfterTheOldOneWasSaved)
{
    const auto store = Edited();
    const CString other = PutOther(u"other.xml"_s);
    EXPECT_TRUE(store->ReLoad(other));
    EXPECT_TRUE(Saved());
    EXPECT_EQ(store->GetFilePath(), other);
    EXPECT_EQ(store->GetConfig(RulePath(4)), nullptr);
    EXPECT_NE(store->GetConfig(RulePath(6)), nullptr);
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(StoreReLoad, BoundFileIsReadAgainWithoutBeingSaved)
{
    const auto store = Edited();
    const test::FaultyFileSystem files;
    EXPECT_TRUE(store->ReLoad(m_path));
    EXPECT_FALSE(Saved());
    EXPECT_EQ(files.WritePoints(), 0);
    EXPECT_TRUE(store->GetConfig(RulePath(4))->GetCondition().empty());
}

TEST_F(StoreReLoad, BoundPathInAnotherCaseDoesNotSaveFirst)
{
    const auto store = Edited();
    PutOther(u"FIRST.xml"_s);
    EXPECT_TRUE(store->ReLoad(File(u"FIRST.xml"_s)));
    EXPECT_FALSE(Saved());
    EXPECT_EQ(store->GetFilePath(), File(u"FIRST.xml"_s));
}

TEST_F(StoreReLoad, MissingFileIsReportedAfterTheOldOneWasSaved)
{
    const auto store = Edited();
    EXPECT_FALSE(store->ReLoad(File(u"nowhere.xml"_s)));
    ASSERT_EQ(Messages().Messages().size(), 1U);
    const platform::Message& message = Messages().Messages().front();
    EXPECT_EQ(message.text, MissingText());
    EXPECT_EQ(message.kind, platform::MessageKind::Warning);
    EXPECT_EQ(message.caption, u"Norvasoft"_s);
    EXPECT_TRUE(message.owned);
    EXPECT_TRUE(Saved());
    ExpectAsBefore(*store);
    EXPECT_FALSE(Exists(u"nowhere.xml"_s));
}

TEST_F(StoreReLoad, VanishedBoundFileIsReportedAndNotMadeAnew)
{
    const auto store = Edited();
    ASSERT_TRUE(QFile::remove(m_host.Folder().Native(u"first.xml"_s)));
    EXPECT_FALSE(store->ReLoad(m_path));
    EXPECT_EQ(Messages().Texts(), CStringArray{MissingText()});
    ExpectAsBefore(*store);
    EXPECT_FALSE(Exists(u"first.xml"_s));
}

TEST_F(StoreReLoad, FileThatDoesNotParseIsRefusedWithoutAWord)
{
    const QByteArray good = test::RuleFile(test::Plumbing()).toUtf8();
    for (const QByteArray& bytes :
         {QByteArray(), good.chopped(9), "<!DOCTYPE a>" + good, QByteArray("\xff\xfe\x00", 3)}) {
        const auto store = Edited();
        EXPECT_FALSE(store->ReLoad(PutBroken(u"broken.xml"_s, bytes)));
        EXPECT_TRUE(Saved());
        EXPECT_EQ(Bytes(u"broken.xml"_s), bytes);
        ExpectAsBefore(*store);
        EXPECT_TRUE(store->DelConfig(RulePath(4)));
        EXPECT_TRUE(store->Save());
        PutOther(u"first.xml"_s, 4);
    }
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(StoreReLoad, FileWithAnotherDocumentElementIsRefusedWithoutAWord)
{
    const auto store = Edited();
    EXPECT_FALSE(store->ReLoad(Put(u"other.xml"_s, u"<其它><给排水 name='给排水'/></其它>"_s)));
    EXPECT_TRUE(Saved());
    EXPECT_TRUE(Messages().Messages().empty());
    ExpectAsBefore(*store);
}

TEST_F(StoreReLoad, WrappedFileIsRefusedWithoutAWord)
{
    store::WrappedFile wrapped;
    wrapped.content = test::RuleFile(test::Plumbing()).toUtf8();
    QByteArray bytes;
    for (const QByteArray& field : store::ComposeFields(wrapped))
        bytes += field;
    const auto store = Edited();
    EXPECT_FALSE(store->ReLoad(PutBroken(u"wrapped.xml"_s, bytes)));
    EXPECT_EQ(Bytes(u"wrapped.xml"_s), bytes);
    EXPECT_TRUE(Messages().Messages().empty());
    ExpectAsBefore(*store);
}

TEST_F(StoreReLoad, FileWithoutTheSpecialtyGivesDefaultsAndStaysUntilTheNextSave)
{
    const auto store = Edited();
    const CString other = Put(u"other.xml"_s, test::RuleFile(u"<电气 name='电气'/>"_s));
    const QByteArray before = Bytes(u"other.xml"_s);
    EXPECT_TRUE(store->ReLoad(other));
    std::vector<ConfigNode*> rules;
    EXPECT_TRUE(store->GetConfig(RulePath(0), rules));
    EXPECT_EQ(test::Ids(rules), std::vector<int>{1});
    EXPECT_EQ(Bytes(u"other.xml"_s), before);
    EXPECT_TRUE(store->Save());
    EXPECT_EQ(Specialties(u"other.xml"_s), CStringArray({u"电气/电气"_s, u"给排水/给排水"_s}));
}

TEST_F(StoreReLoad, OldFileThatRefusesToBeSavedDoesNotStopTheLoading)
{
    const auto store = Edited();
    Put(u"first.xml"_s, u"<其它/>"_s);
    const CString other = PutOther(u"other.xml"_s);
    EXPECT_TRUE(store->ReLoad(other));
    EXPECT_EQ(store->GetFilePath(), other);
    EXPECT_EQ(Bytes(u"first.xml"_s), u"<其它/>"_s.toUtf8());
}

TEST_F(StoreReLoad, OldFileThatCannotBeWrittenRaisesAndNothingIsLoaded)
{
    const auto store = Edited();
    const CString other = PutOther(u"other.xml"_s);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    EXPECT_THROW(store->ReLoad(other), xml::Error);
    ExpectAsBefore(*store);
    EXPECT_FALSE(Saved());
}

TEST_F(StoreReLoad, WithoutAnEngineTheBoundFileRaisesThePointerError)
{
    const auto store = Edited();
    const test::NoEngine noEngine;
    EXPECT_THROW(store->ReLoad(m_path), xml::PointerError);
    EXPECT_EQ(Messages().Texts(), CStringArray{test::NoEngineText()});
    ExpectAsBefore(*store);
}

TEST_F(StoreReLoad, IdOfTheSpecialtyIsReadAnew)
{
    const auto store = Edited();
    EXPECT_TRUE(store->ReLoad(Put(u"other.xml"_s, test::RuleFile(u"<x id='50' name='给排水'/>"_s))));
    EXPECT_EQ(store->GetConfig(RulePath(1)), nullptr);
    EXPECT_NE(store->GetConfig(CPath{50, 11, 111, 1, 0, 0, 0, 0}), nullptr);
}

TEST_F(StoreReLoad, HostWithoutListsLeavesAnEmptyTreeAndStillBinds)
{
    const auto store = Edited();
    const CString other = PutOther(u"other.xml"_s);
    Host().Fail(test::Operation::GetAllBigCategoryIdsBySpec);
    EXPECT_TRUE(store->ReLoad(other));
    EXPECT_EQ(store->GetFilePath(), other);
    EXPECT_EQ(store->GetConfig(RulePath(6)), nullptr);
}

TEST_F(StoreReLoad, HostThatRaisesWhileAnotherFileIsReadLeavesTreeAndBinding)
{
    const auto store = Edited();
    const CString other = PutOther(u"other.xml"_s);
    {
        RaisingAtTheEnd host;
        host::Roles roles = Host().Roles();
        roles.categories = &host;
        const host::Installation raising = host::Install(roles);
        EXPECT_THROW(store->ReLoad(other), std::runtime_error);
    }
    ExpectAsBefore(*store);
    EXPECT_TRUE(store->Save());
    EXPECT_EQ(Specialties(u"first.xml"_s), CStringArray{u"给排水/给排水"_s});
    EXPECT_TRUE(Saved());
    EXPECT_FALSE(Bytes(u"other.xml"_s).contains("\"edit\""));
}

TEST_F(StoreReLoad, HostThatRaisesWhileTheBoundFileIsReadLeavesTheTreeAndTheFile)
{
    const auto store = Edited();
    const QByteArray before = Bytes(u"first.xml"_s);
    {
        host::Roles roles = Host().Roles();
        roles.categories = nullptr;
        const host::Installation lacking = host::Install(roles);
        EXPECT_THROW(store->ReLoad(m_path), host::NoHostError);
    }
    ExpectAsBefore(*store);
    EXPECT_EQ(Bytes(u"first.xml"_s), before);
    EXPECT_TRUE(store->Save());
    EXPECT_TRUE(Saved());
}

TEST_F(StoreReLoad, RulesOfTheLoadedTreeStandAtOtherAddressesThanTheFormerOnes)
{
    const auto store = Edited();
    std::vector<ConfigNode*> former;
    std::vector<ConfigNode*> loaded;
    store->GetConfig(RulePath(0), former);
    EXPECT_TRUE(store->ReLoad(m_path));
    store->GetConfig(RulePath(0), loaded);
    EXPECT_EQ(former.size(), loaded.size());
    for (const ConfigNode* rule : loaded)
        EXPECT_EQ(std::count(former.begin(), former.end(), rule), 0);
}

TEST_F(StoreReLoad, StoreWithAnEmptyTreeCanBindToAnotherFile)
{
    CXmlQdDeConfig store(Put(u"wrong.xml"_s, u"<其它/>"_s), u"给排水"_s);
    EXPECT_TRUE(store.ReLoad(m_path));
    EXPECT_NE(store.GetConfig(RulePath(4)), nullptr);
}

TEST_F(StoreReLoad, NewFileCopiesTheTemplateSavesTheOldFileAndLoads)
{
    const CString text = test::RuleFile(test::PlumbingRules(u"<c id='8'/>"_s) + u"<电气 name='电气'/>"_s);
    Put(u"app\\QdDeConfig.def"_s, text);
    const auto store = Edited();
    EXPECT_TRUE(store->NewFile(File(u"made.xml"_s)));
    EXPECT_EQ(store->GetFilePath(), File(u"made.xml"_s));
    EXPECT_NE(store->GetConfig(RulePath(8)), nullptr);
    EXPECT_EQ(Bytes(u"made.xml"_s), text.toUtf8());
    EXPECT_EQ(Bytes(u"app\\QdDeConfig.def"_s), text.toUtf8());
    EXPECT_TRUE(Saved());
}

TEST_F(StoreReLoad, NewFileOnTheBoundPathLosesTheTreeInMemory)
{
    const CString text = test::RuleFile(test::PlumbingRules(u"<c id='8'/>"_s));
    Put(u"app\\QdDeConfig.def"_s, text);
    const auto store = Edited();
    EXPECT_TRUE(store->NewFile(m_path));
    EXPECT_EQ(Bytes(u"first.xml"_s), text.toUtf8());
    EXPECT_EQ(store->GetConfig(RulePath(4)), nullptr);
    EXPECT_NE(store->GetConfig(RulePath(8)), nullptr);
}

TEST_F(StoreReLoad, NewFileOverALongerFileLeavesNothingOfIt)
{
    const CString text = test::RuleFile(test::Plumbing());
    Put(u"app\\QdDeConfig.def"_s, text);
    Put(u"long.xml"_s, test::RuleFile(u"<!--"_s + u"x"_s.repeated(5000) + u"-->"_s));
    EXPECT_TRUE(Edited()->NewFile(File(u"long.xml"_s)));
    EXPECT_EQ(Bytes(u"long.xml"_s), text.toUtf8());
}

TEST_F(StoreReLoad, NewFileWithoutTemplateLoadsWhatStandsThere)
{
    const auto store = Edited();
    const CString other = PutOther(u"other.xml"_s);
    EXPECT_TRUE(store->NewFile(other));
    EXPECT_NE(store->GetConfig(RulePath(6)), nullptr);
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(StoreReLoad, NewFileWithoutTemplateAndWithoutFileReportsTheMissingFile)
{
    const auto store = Edited();
    EXPECT_FALSE(store->NewFile(File(u"nowhere.xml"_s)));
    EXPECT_EQ(Messages().Texts(), CStringArray{MissingText()});
    EXPECT_TRUE(Saved());
    ExpectAsBefore(*store);
}

TEST_F(StoreReLoad, NewFileFromABrokenTemplateIsRefused)
{
    m_host.Folder().WriteFile(u"app\\QdDeConfig.def"_s, "broken");
    const auto store = Edited();
    MayBeBroken(u"made.xml"_s);
    EXPECT_FALSE(store->NewFile(File(u"made.xml"_s)));
    ExpectAsBefore(*store);
}
