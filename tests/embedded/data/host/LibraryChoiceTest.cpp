#include "embedded/data/host/LibraryChoice.h"
#include "embedded/TestProject.h"
#include "embedded/data/catalogue/Library.h"
#include "embedded/data/catalogue/ShippedLibraries.h"
#include "embedded/data/host/CreateProject.h"
#include "platform/Files.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::LibraryRole;
using test::ErrorOf;
using test::TestProject;

namespace {

const CString FirstLibrary = u"GB50856-2013"_s;
const CString Second = u"GB50500-2008"_s;
const CString QuotaOf2008 = u"DEMO-QDDE-2025"_s;

CStringArray Codes(const CArray<embedded::LibraryName>& names)
{
    CStringArray codes;
    for (const embedded::LibraryName& name : names)
        codes.append(name.code);
    return codes;
}

/// How many quota items of the host's contents name a bill item that they usually stand under.
std::ptrdiff_t GuidedQuotas(const EmbeddedHost& host)
{
    std::ptrdiff_t guided = 0;
    for (const embedded::QuotaSection& section : host.Contents().quotas) {
        guided += std::count_if(section.items.begin(), section.items.end(),
                                [](const embedded::QuotaItem& item) { return !item.bills.isEmpty(); });
    }
    return guided;
}

class LibraryChoice : public ::testing::Test
{
protected:
    LibraryChoice() { m_project.Put(); }
    void ExpectFirst(EmbeddedHost& host) const
    {
        EXPECT_EQ(host.LibraryInUse(LibraryRole::Bill), FirstLibrary);
        EXPECT_EQ(host.Contents().bills.front().indexPath, u"0301"_s);
        SQdInfo info;
        EXPECT_TRUE(host.Roles().libraries->GetQdInfo(u"031001001"_s, info));
    }
    void Store(const CString& setting, const CString& code) const
    {
        m_project.Sql(
            u"project.ktqd"_s,
            u"INSERT OR REPLACE INTO settings (name, value) VALUES ('%1', '%2')"_s.arg(setting, code));
    }

    TestProject m_project;
};

} // namespace

TEST_F(LibraryChoice, EveryRoleOffersItsLibrariesInTheirOrder)
{
    const EmbeddedHost host(m_project.Folder());
    EXPECT_EQ(Codes(host.LibrariesOf(LibraryRole::Bill)), (CStringArray{FirstLibrary, Second}));
    EXPECT_EQ(Codes(host.LibrariesOf(LibraryRole::QuotaOfBills)),
              (CStringArray{u"DEMO-QDDE-2024"_s, QuotaOf2008}));
    const auto quotas = host.LibrariesOf(LibraryRole::Quota);
    EXPECT_EQ(Codes(quotas), (CStringArray{u"DEMO-DE-2024"_s, u"DEMO-DE-2025"_s}));
    EXPECT_EQ(quotas[1].name, u"示例安装补充定额（定额模式）"_s);
    EXPECT_EQ(quotas[1].local, u"示例"_s);
    EXPECT_EQ(quotas[1].year, u"2025"_s);
}

TEST_F(LibraryChoice, NewProjectsCanChooseFromTheLibrariesOfANewCatalogue)
{
    const EmbeddedHost host(m_project.Folder());
    for (const LibraryRole role : embedded::AllLibraryRoles)
        EXPECT_EQ(Codes(embedded::ShippedLibraries(role)), Codes(host.LibrariesOf(role)));
}

TEST_F(LibraryChoice, EveryAnswerFollowsTheBillLibraryAtOnce)
{
    EmbeddedHost host(m_project.Folder());
    host::ILibraries& libraries = *host.Roles().libraries;
    const embedded::LibraryContents& contents = host.Contents();
    host.SetLibrary(LibraryRole::Bill, Second);
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Bill), Second);
    EXPECT_EQ(libraries.GetQdCode(), Second);
    EXPECT_EQ(libraries.GetQdFileName(), u"建设工程工程量清单计价规范2008"_s);
    EXPECT_EQ(libraries.GetQdLocal(), u"全国"_s);
    SQdInfo info;
    ASSERT_TRUE(libraries.GetQdInfo(u"030801001"_s, info));
    EXPECT_EQ(info.strName, u"镀锌钢管"_s);
    EXPECT_TRUE(libraries.IsInQdk(u"030212001"_s));
    EXPECT_FALSE(libraries.IsInQdk(u"031001001"_s));
    EXPECT_EQ(&contents, &host.Contents());
    EXPECT_EQ(contents.bills.front().indexPath, u"C1"_s);
    host.SetLibrary(LibraryRole::Bill, FirstLibrary);
    ExpectFirst(host);
}

TEST_F(LibraryChoice, CodingRuleIsThatOfTheLibraryInUse)
{
    m_project.Sql(
        u"app\\catalogue.db"_s,
        u"UPDATE libraries SET code_length = 12, suffix_length = 4 WHERE code = '%1'"_s.arg(Second));
    EmbeddedHost host(m_project.Folder());
    host.SetLibrary(LibraryRole::Bill, Second);
    int length = 0;
    int suffixLength = 0;
    host.Roles().libraries->GetEnCodeRule(length, suffixLength);
    EXPECT_EQ(length, 12);
    EXPECT_EQ(suffixLength, 4);
}

TEST_F(LibraryChoice, QuotaLibraryOfTheModeFillsTheContents)
{
    EmbeddedHost host(m_project.Folder());
    host.SetLibrary(LibraryRole::Quota, u"DEMO-DE-2025"_s);
    EXPECT_EQ(host.Contents().quotas.front().code, u"示1"_s) << "bill mode has a quota library of its own";
    host.SetMode(SQdDeInfo::QuotaMode);
    EXPECT_EQ(host.Contents().quotas.front().code, u"示补2"_s);
    EXPECT_EQ(host.Roles().libraries->GetDeFileName(), u"示例安装补充定额（定额模式）"_s);
    EXPECT_EQ(host.Roles().libraries->GetDeYear(), u"2025"_s);
    EXPECT_EQ(host.Roles().libraries->GetQdDeYear(), u"2024"_s);
    host.SetMode(SQdDeInfo::BillMode);
    EXPECT_EQ(host.Contents().quotas.front().code, u"示1"_s);
}

TEST_F(LibraryChoice, GuideCountsOnlyWithTheBillLibraryThatItSpeaksOf)
{
    EmbeddedHost host(m_project.Folder());
    EXPECT_GT(GuidedQuotas(host), 900);
    host.SetLibrary(LibraryRole::Bill, Second);
    EXPECT_EQ(GuidedQuotas(host), 0) << "its numbers mean other items there";
    host.SetLibrary(LibraryRole::QuotaOfBills, QuotaOf2008);
    EXPECT_GT(GuidedQuotas(host), 50);
    host.SetLibrary(LibraryRole::Bill, FirstLibrary);
    EXPECT_EQ(GuidedQuotas(host), 0);
}

TEST_F(LibraryChoice, CategoriesStandWhereTheBillLibraryInUseHasThem)
{
    EmbeddedHost host(m_project.Folder());
    const CString pipes = u"给排水\\管道\\给水管\\"_s;
    const CString cabling = u"弱电\\综合布线\\配线架\\"_s;
    EXPECT_EQ(host.Roles().categories->GetIndexPath(pipes), u"0310\\031001"_s);
    EXPECT_EQ(host.Roles().categories->GetIndexPath(cabling), u"0305\\030502"_s);
    host.SetLibrary(LibraryRole::Bill, Second);
    EXPECT_EQ(host.Roles().categories->GetIndexPath(pipes), u"C8\\030801"_s);
    EXPECT_EQ(host.Roles().categories->GetIndexPath(cabling), CString());
}

TEST_F(LibraryChoice, ItemsWithWhichTheProjectStartedCountOnlyInTheLibraryFromWhichTheyCome)
{
    const auto history = [](EmbeddedHost& host) {
        CArray<SQdInfo> items;
        EXPECT_TRUE(host.Roles().libraries->GetQdInfoByQdNum(u"031001001"_s, items));
        return items.size();
    };
    EmbeddedHost host(m_project.Folder());
    EXPECT_EQ(history(host), 2);
    host.SetLibrary(LibraryRole::Bill, Second);
    EXPECT_EQ(history(host), 0) << "the number means something else there";
    m_project.Sql(u"project.ktqd"_s, u"DELETE FROM settings WHERE name = 'history_library'"_s);
    EXPECT_EQ(history(host), 0) << "a project of an older program";
    host.SetLibrary(LibraryRole::Bill, FirstLibrary);
    EXPECT_EQ(history(host), 2);
    Store(u"history_library"_s, Second);
    EXPECT_EQ(history(host), 0);
}

TEST_F(LibraryChoice, ReadOnlyProjectIsToldInWords)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    const CString file = TestProject::Below(u"project.ktqd"_s);
    m_project.Temp().SetReadOnly(file, true);
    const CString error = ErrorOf([&] { embedded::UseLibrary(m_project.Folder(), Second); });
    m_project.Temp().SetReadOnly(file, false);
    EXPECT_TRUE(error.contains(u"只读，不能写入"_s)) << error.toStdString();
}

TEST_F(LibraryChoice, ChoiceIsStored)
{
    EmbeddedHost(m_project.Folder()).SetLibrary(LibraryRole::Bill, Second);
    EmbeddedHost(m_project.Folder()).SetLibrary(LibraryRole::QuotaOfBills, QuotaOf2008);
    const EmbeddedHost host(m_project.Folder());
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Bill), Second);
    EXPECT_EQ(host.LibraryInUse(LibraryRole::QuotaOfBills), QuotaOf2008);
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Quota), u"DEMO-DE-2024"_s);
}

TEST_F(LibraryChoice, UnknownLibraryIsRefusedAndNothingChanges)
{
    EmbeddedHost host(m_project.Folder());
    const CString error = ErrorOf([&] { host.SetLibrary(LibraryRole::Bill, u"GB1"_s); });
    EXPECT_TRUE(error.contains(u"GB1"_s) && error.contains(Second)) << error.toStdString();
    EXPECT_NE(ErrorOf([&] { host.SetLibrary(LibraryRole::Bill, QuotaOf2008); }), u"no error"_s);
    ExpectFirst(host);
}

TEST_F(LibraryChoice, ChoiceThatCannotBeStoredChangesNothing)
{
    EmbeddedHost host(m_project.Folder());
    m_project.Sql(u"project.ktqd"_s, u"DROP TABLE settings"_s);
    EXPECT_NE(ErrorOf([&] { host.SetLibrary(LibraryRole::Bill, Second); }), u"no error"_s);
    ExpectFirst(host);
}

TEST_F(LibraryChoice, LibraryThatCannotBeReadChangesNothing)
{
    EmbeddedHost host(m_project.Folder());
    m_project.Sql(u"app\\catalogue.db"_s,
                  u"UPDATE bill_items SET index_path = 'C9' || number WHERE items = '%1'"_s.arg(Second));
    EXPECT_TRUE(ErrorOf([&] { host.SetLibrary(LibraryRole::Bill, Second); }).contains(u"已损坏"_s));
    ExpectFirst(host);
    ExpectFirst(*std::make_unique<EmbeddedHost>(m_project.Folder()));
}

TEST_F(LibraryChoice, ProjectWithoutStoredChoiceUsesTheFirstOfEachRole)
{
    m_project.Sql(u"project.ktqd"_s, u"DELETE FROM settings WHERE name LIKE 'library%'"_s);
    EmbeddedHost host(m_project.Folder());
    ExpectFirst(host);
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Quota), u"DEMO-DE-2024"_s);
}

TEST_F(LibraryChoice, StoredLibraryThatTheCatalogueLacksIsToldWithTheWayOutAndAnotherCanBeUsed)
{
    Store(u"library_qd"_s, u"GB1"_s);
    const CString error = ErrorOf([&] { const EmbeddedHost host(m_project.Folder()); });
    EXPECT_TRUE(error.contains(u"“GB1”"_s) && error.contains(u"ktqdde library use"_s)) << error.toStdString();
    const auto listed = embedded::ListLibraries(m_project.Folder());
    ASSERT_EQ(listed.size(), 6);
    EXPECT_FALSE(listed[0].isInUse || listed[1].isInUse);
    EXPECT_EQ(embedded::UseLibrary(m_project.Folder(), Second).role, LibraryRole::Bill);
    EXPECT_EQ(EmbeddedHost(m_project.Folder()).LibraryInUse(LibraryRole::Bill), Second);
}

TEST(NewProject, UsesTheLibrariesOfItsOptions)
{
    const TestProject project;
    project.Create({.mode = SQdDeInfo::QuotaMode, .billLibrary = Second, .quotaLibrary = u"DEMO-DE-2025"_s});
    const EmbeddedHost host(project.Folder());
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Bill), Second);
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Quota), u"DEMO-DE-2025"_s);
}

TEST(NewProject, GetsTheQuotaLibrariesWhoseGuidesSpeakOfItsBillLibrary)
{
    const TestProject project;
    project.Create({.billLibrary = Second});
    const EmbeddedHost host(project.Folder());
    EXPECT_EQ(host.LibraryInUse(LibraryRole::QuotaOfBills), QuotaOf2008);
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Quota), u"DEMO-DE-2025"_s);
    EXPECT_GT(GuidedQuotas(host), 50);
}

TEST(NewProject, QuotaLibraryBesideABillLibraryWithoutAGuideIsTheFirst)
{
    const CArray<embedded::LibraryName> quotas = embedded::ShippedLibraries(LibraryRole::Quota);
    EXPECT_EQ(quotas.first().billLibrary, FirstLibrary);
    EXPECT_EQ(embedded::QuotaLibraryBeside(quotas, Second), u"DEMO-DE-2025"_s);
    EXPECT_EQ(embedded::QuotaLibraryBeside(quotas, u"GB1"_s), u"DEMO-DE-2024"_s);
    EXPECT_EQ(embedded::QuotaLibraryBeside({}, Second), CString());
}

TEST(NewProject, OnACatalogueThatWasLeftBehindChoosesFromThatOne)
{
    const TestProject project;
    project.Create();
    project.Sql(u"app\\catalogue.db"_s,
                u"UPDATE libraries SET code = 'MINE', items = '%1' WHERE code = '%1'"_s.arg(FirstLibrary));
    ASSERT_TRUE(platform::RealFileSystem().Remove(project.Path(u"project.ktqd"_s)));
    for (const embedded::ProjectOptions& options : {embedded::ProjectOptions{.billLibrary = FirstLibrary},
                                                    embedded::ProjectOptions{.spec = u"园林"_s}}) {
        EXPECT_TRUE(ErrorOf([&] { project.Create(options); }).contains(u"可用的"_s));
        EXPECT_FALSE(project.Temp().Exists(TestProject::Below(u"project.ktqd"_s)));
    }
    project.Create();
    const EmbeddedHost host(project.Folder());
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Bill), u"MINE"_s);
    EXPECT_EQ(host.LibrariesOf(LibraryRole::Bill).size(), 2);
}

TEST(NewProject, UnknownLibrariesAreRefusedBeforeAnythingIsMade)
{
    const TestProject project;
    for (const embedded::ProjectOptions& options :
         {embedded::ProjectOptions{.billLibrary = u"GB1"_s},
          embedded::ProjectOptions{.mode = SQdDeInfo::QuotaMode, .quotaLibrary = QuotaOf2008}}) {
        EXPECT_TRUE(ErrorOf([&] { project.Create(options); }).contains(u"可用的有"_s));
        EXPECT_FALSE(project.Temp().Exists(TestProject::Name()));
    }
}
