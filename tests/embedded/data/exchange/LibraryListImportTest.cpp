#include "embedded/ImportFixture.h"
#include "embedded/data/engine/Database.h"
#include "embedded/data/host/LibraryChoice.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::ImportReport;
using embedded::LibraryRole;
using embedded::TableKind;

namespace {

const CString LibraryHeader =
    u"role,code,file_name,local,year,code_length,suffix_length,items,bill_library\n"_s;

class LibraryListImport : public test::ImportFixture
{
protected:
    ImportReport ImportLibraries(const CString& rows, bool replace = false) const
    {
        return Import(TableKind::Libraries, LibraryHeader + rows, {.replace = replace});
    }
    /// The exported libraries without those whose line holds one of the texts.
    CString Without(const CStringArray& texts) const
    {
        CStringArray lines = Exported(TableKind::Libraries).split(u'\n');
        lines.removeIf([&](const CString& line) {
            return std::any_of(texts.begin(), texts.end(),
                               [&](const CString& text) { return line.contains(text); });
        });
        return lines.join(u'\n');
    }
    CString ExportedOf(TableKind kind, const CString& library) const
    {
        return embedded::ExportText(m_project.Folder(), kind, library);
    }
    CString InUse(LibraryRole role) const { return EmbeddedHost(m_project.Folder()).LibraryInUse(role); }
};

} // namespace

TEST_F(LibraryListImport, AddedLibraryTakesItemsAndCanBeUsed)
{
    const ImportReport report = ImportLibraries(u"清单库,企标-1,企业清单,本地,2024,10,2,,\n"_s);
    EXPECT_EQ(report.added, 1) << Refusals(report).toStdString();
    const ImportReport items =
        Import(TableKind::Bill, test::BillHeader + u"A000000001,自有,m,A,甲\n"_s, {.library = u"企标-1"_s});
    EXPECT_EQ(items.added, 1) << Refusals(items).toStdString();
    EXPECT_EQ(items.library.name, u"企业清单"_s);
    EmbeddedHost host(m_project.Folder());
    host.SetLibrary(LibraryRole::Bill, u"企标-1"_s);
    EXPECT_TRUE(host.Roles().libraries->IsInQdk(u"A000000001"_s));
    EXPECT_EQ(host.Contents().bills.size(), 1U);
}

TEST_F(LibraryListImport, RenamedLibraryKeepsItsPlaceAndItsItems)
{
    const CString before = Exported(TableKind::Bill);
    const ImportReport report = Import(TableKind::Libraries, u"用途,代码,名称\n清单库,GB50856-2013,改名\n"_s);
    EXPECT_EQ(report.changed, 1) << Refusals(report).toStdString();
    const auto libraries = EmbeddedHost(m_project.Folder()).LibrariesOf(LibraryRole::Bill);
    EXPECT_EQ(libraries[0].name, u"改名"_s);
    EXPECT_EQ(libraries[0].local, u"全国"_s);
    EXPECT_EQ(Exported(TableKind::Bill), before);
}

TEST_F(LibraryListImport, RowsThatDoNotFitAreRefusedWithTheirLines)
{
    const ImportReport report = ImportLibraries(u"书,A,名,,,,,,\n"
                                                ",B,名,,,,,,\n"
                                                "qd,,名,,,,,,\n"
                                                "qd,D,,,,,,,\n"
                                                "qd,E,名,,,九,,,\n"
                                                "qd,F,名,,,,,,\n"
                                                "qd,F,名,,,,,,\n"_s);
    const QList<int> lines{2, 3, 4, 5, 6, 8};
    ASSERT_EQ(report.refused.size(), lines.size()) << Refusals(report).toStdString();
    for (qsizetype row = 0; row < lines.size(); ++row)
        EXPECT_EQ(report.refused[row].line, lines[row]) << Refusals(report).toStdString();
}

TEST_F(LibraryListImport, GuidesNeedABillLibraryThatIsThere)
{
    const ImportReport report = ImportLibraries(u"de,A,名,,,,,,GB1\n"
                                                "qd,B,名,,,,,,GB50500-2008\n"_s);
    ASSERT_EQ(report.refused.size(), 2) << Refusals(report).toStdString();
    EXPECT_TRUE(report.refused[0].line == 2 && report.refused[0].reason.contains(u"GB1"_s));
    EXPECT_TRUE(report.refused[1].line == 3 && report.refused[1].reason.contains(u"是清单库"_s));
}

TEST_F(LibraryListImport, CodesThatDifferOnlyByLetterCaseAreRefused)
{
    const ImportReport report = ImportLibraries(u"de,A,名,,,,,,\nde,gb50500-2008,名,,,,,,\n"_s);
    ASSERT_EQ(report.refused.size(), 1) << Refusals(report).toStdString();
    EXPECT_TRUE(report.refused[0].line == 3 && report.refused[0].reason.contains(u"大小写"_s));
}

TEST_F(LibraryListImport, LibrariesThatShareItemsMustAgree)
{
    const ImportReport report = ImportLibraries(u"de,A,名,,,,,DEMO-QDDE-2024,GB50500-2008\n"
                                                "qd,B,名,,,12,3,GB50856-2013,\n"
                                                "qd,C,名,,,9,3,GB50856-2013,\n"_s);
    ASSERT_EQ(report.refused.size(), 2) << Refusals(report).toStdString();
    EXPECT_TRUE(report.refused[0].line == 2 && report.refused[0].reason.contains(u"DEMO-QDDE-2024"_s));
    EXPECT_TRUE(report.refused[0].reason.contains(u"指引的清单库必须相同"_s));
    EXPECT_TRUE(report.refused[1].line == 3 && report.refused[1].reason.contains(u"，编号位数必须相同"_s));
}

TEST_F(LibraryListImport, LibraryInUseIsNeitherRemovedNorGivenAnotherRole)
{
    const CString before = Exported(TableKind::Libraries);
    embedded::UseLibrary(m_project.Folder(), u"DEMO-DE-2025"_s);
    const ImportReport removed =
        Import(TableKind::Libraries, Without({u"DEMO-DE-2025"_s}), {.replace = true});
    EXPECT_FALSE(removed.stored);
    EXPECT_TRUE(Refusals(removed).contains(u"正在使用"_s)) << Refusals(removed).toStdString();
    const ImportReport moved = ImportLibraries(u"qd_de,DEMO-DE-2025,名,,,,,,\n"_s);
    EXPECT_TRUE(Refusals(moved).contains(u"正在使用"_s)) << Refusals(moved).toStdString();
    EXPECT_EQ(Exported(TableKind::Libraries), before);
}

TEST_F(LibraryListImport, EveryRoleKeepsALibrary)
{
    const ImportReport report =
        Import(TableKind::Libraries, Without({u",DEMO-DE-2024,"_s, u",DEMO-DE-2025,"_s}), {.replace = true});
    EXPECT_TRUE(Refusals(report).contains(u"没有一个库作定额模式的定额库"_s))
        << Refusals(report).toStdString();
}

TEST_F(LibraryListImport, ItemsGoWithTheLastLibraryThatOffersThem)
{
    const CString first = Without({u",DEMO-DE-2025,"_s});
    const ImportReport shared = Import(TableKind::Libraries, first, {.replace = true});
    EXPECT_EQ(shared.removed, 1) << Refusals(shared).toStdString();
    EXPECT_TRUE(shared.notes.isEmpty()) << "the other library of these items is still there";
    const auto quotas = ExportedOf(TableKind::Quota, u"DEMO-QDDE-2025"_s).count(u'\n') - 1;
    const ImportReport last =
        Import(TableKind::Libraries, Without({u",DEMO-QDDE-2025,"_s}), {.replace = true});
    EXPECT_EQ(last.notes, CStringArray{u"随库去掉的清单和定额：%1 项"_s.arg(quotas)});
    ASSERT_TRUE(ImportLibraries(u"qd_de,DEMO-QDDE-2025,名,,,,,,GB50500-2008\n"_s).stored);
    EXPECT_EQ(ExportedOf(TableKind::Quota, u"DEMO-QDDE-2025"_s).count(u'\n'), 1);
    EXPECT_GT(Exported(TableKind::Quota).count(u'\n'), 1000);
}

TEST_F(LibraryListImport, GuideThatSpeaksOfAnotherBillLibraryLosesWhatThatLacks)
{
    const CString columns = u"role,code,file_name,bill_library\n"_s;
    const CString rows = u"qd_de,DEMO-QDDE-2025,名,%1\nde,DEMO-DE-2025,名,%1\n"_s;
    const ImportReport report = Import(TableKind::Libraries, columns + rows.arg(u"GB50856-2013"_s));
    ASSERT_TRUE(report.stored) << Refusals(report).toStdString();
    ASSERT_EQ(report.notes.size(), 1);
    const CString guide = ExportedOf(TableKind::Guide, u"DEMO-QDDE-2025"_s);
    EXPECT_TRUE(guide.contains(u"030701001,"_s)) << "both libraries have that number";
    EXPECT_FALSE(guide.contains(u"030801001,"_s));
    EXPECT_EQ(Import(TableKind::Guide, guide, {.replace = true, .library = u"DEMO-QDDE-2025"_s}).removed, 0);
    ASSERT_TRUE(Import(TableKind::Libraries, columns + rows.arg(CString())).stored);
    EXPECT_EQ(ExportedOf(TableKind::Guide, u"DEMO-QDDE-2025"_s).count(u'\n'), 1);
    const ImportReport none = Import(TableKind::Guide, guide, {.library = u"DEMO-QDDE-2025"_s});
    EXPECT_TRUE(Refusals(none).contains(u"没有写明"_s)) << Refusals(none).toStdString();
}

TEST_F(LibraryListImport, NewOrderChangesNoProjectThatHasStoredNoChoice)
{
    m_project.Sql(u"project.ktqd"_s, u"DELETE FROM settings WHERE name LIKE 'library%'"_s);
    CStringArray lines = Exported(TableKind::Libraries).split(u'\n');
    lines.swapItemsAt(1, 2);
    ASSERT_TRUE(Import(TableKind::Libraries, lines.join(u'\n'), {.replace = true}).stored);
    const EmbeddedHost host(m_project.Folder());
    EXPECT_EQ(host.LibrariesOf(LibraryRole::Bill).first().code, u"GB50500-2008"_s);
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Bill), u"GB50856-2013"_s);
}

TEST_F(LibraryListImport, RefusedFileStoresNoChoiceInTheProject)
{
    m_project.Sql(u"project.ktqd"_s, u"DELETE FROM settings WHERE name LIKE 'library%'"_s);
    CStringArray lines = Without({u",DEMO-DE-2024,"_s}).split(u'\n');
    lines.swapItemsAt(1, 2);
    ASSERT_FALSE(Import(TableKind::Libraries, lines.join(u'\n'), {.replace = true}).stored);
    embedded::Database project(m_project.Path(u"project.ktqd"_s));
    project.ForEach(u"SELECT name FROM settings WHERE name LIKE 'library%'"_s, {},
                    [](const QSqlQuery& row) { ADD_FAILURE() << row.value(0).toString().toStdString(); });
}

TEST_F(LibraryListImport, TablesOfOneLibraryLeaveTheOthersAlone)
{
    const CString used = Exported(TableKind::Bill);
    const CString guide = Exported(TableKind::Guide);
    const ImportReport report =
        Import(TableKind::Bill, test::BillHeader + u"030801001,自有,m,C8\\030801,\n"_s,
               {.replace = true, .library = u"GB50500-2008"_s});
    EXPECT_EQ(report.removed, 143) << Refusals(report).toStdString();
    EXPECT_EQ(report.notes.size(), 1) << "the guide of the other quota library";
    EXPECT_EQ(ExportedOf(TableKind::Bill, u"GB50500-2008"_s).count(u'\n'), 2);
    for (const CString& line : ExportedOf(TableKind::Guide, u"DEMO-QDDE-2025"_s).split(u'\n').mid(1))
        EXPECT_TRUE(line.isEmpty() || line.startsWith(u"030801001,"_s)) << line.toStdString();
    EXPECT_EQ(Exported(TableKind::Bill), used);
    EXPECT_EQ(Exported(TableKind::Guide), guide);
}

TEST_F(LibraryListImport, QuotaTablesAreThoseOfTheProjectsMode)
{
    EmbeddedHost(m_project.Folder()).SetLibrary(LibraryRole::Quota, u"DEMO-DE-2025"_s);
    EXPECT_TRUE(Exported(TableKind::Quota).contains(u"示10-1-1,"_s));
    EmbeddedHost(m_project.Folder()).SetMode(SQdDeInfo::QuotaMode);
    EXPECT_FALSE(Exported(TableKind::Quota).contains(u"示10-1-1,"_s));
    EXPECT_TRUE(Exported(TableKind::Quota).contains(u"示补8-1-1,"_s));
}

TEST_F(LibraryListImport, TablesOfNoLibraryAndUnknownLibrariesAreErrors)
{
    const auto error = [&](TableKind kind, const CString& library) {
        return test::ErrorOf([&] { ExportedOf(kind, library); });
    };
    EXPECT_TRUE(error(TableKind::Calc, u"GB50500-2008"_s).contains(u"不属于"_s));
    EXPECT_TRUE(error(TableKind::Bill, u"GB1"_s).contains(u"GB50500-2008"_s));
    EXPECT_TRUE(error(TableKind::Guide, u"GB50500-2008"_s).contains(u"定额库"_s));
    EXPECT_EQ(error(TableKind::Guide, u"DEMO-DE-2025"_s), u"no error"_s);
}

TEST_F(LibraryListImport, MissingLibraryOfTheProjectCanBePutBack)
{
    m_project.Sql(u"project.ktqd"_s, u"UPDATE settings SET value = 'GB1' WHERE name = 'library_qd'"_s);
    EXPECT_TRUE(test::ErrorOf([&] { Exported(TableKind::Bill); }).contains(u"GB1"_s));
    const ImportReport report = ImportLibraries(u"qd,GB1,自有,,,9,3,GB50856-2013,\n"_s);
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_EQ(InUse(LibraryRole::Bill), u"GB1"_s);
}
