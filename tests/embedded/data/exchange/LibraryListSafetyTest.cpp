#include "embedded/ImportFixture.h"
#include "embedded/data/host/LibraryChoice.h"

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::ImportReport;
using embedded::LibraryRole;
using embedded::TableKind;

namespace {

/// What a file of libraries must not do to the items of the catalogue.
class LibraryListSafety : public test::ImportFixture
{
protected:
    ImportReport ImportLibraries(const CString& text, bool replace = false) const
    {
        return Import(TableKind::Libraries, text, {.replace = replace});
    }
    CString Bills(const CString& library) const
    {
        return embedded::ExportText(m_project.Folder(), TableKind::Bill, library);
    }
    /// Whether a file is refused for a reason that holds all the words, and leaves all libraries as they are.
    void ExpectRefused(const CString& text, bool replace, const CStringArray& words) const
    {
        const CString before = Exported(TableKind::Libraries);
        const CString refusals = Refusals(ImportLibraries(text, replace));
        for (const CString& word : words)
            EXPECT_TRUE(refusals.contains(word)) << word.toStdString() << " in " << refusals.toStdString();
        EXPECT_EQ(Exported(TableKind::Libraries), before);
    }
};

} // namespace

TEST_F(LibraryListSafety, LibraryDoesNotLoseItsItemsByAnotherItemSet)
{
    const CString before = Exported(TableKind::Bill);
    const CString row = u"用途,代码,名称,项目集\n清单库,GB50856-2013,名,TYPO\n"_s;
    ExpectRefused(row, false, {u"2:"_s, u"“GB50856-2013”的 524 项将不再属于任何库"_s});
    CString all = Exported(TableKind::Libraries);
    all.replace(u"9,3,,"_s, u"9,3,TYPO,"_s);
    ExpectRefused(all, true, {u"2:"_s, u"3:"_s, u"524 项"_s, u"144 项"_s});
    EXPECT_EQ(Exported(TableKind::Bill), before);
}

TEST_F(LibraryListSafety, LibraryDoesNotLoseItsItemsByAnotherRole)
{
    ASSERT_TRUE(ImportLibraries(u"用途,代码,名称\n清单库,A,名\n"_s).stored);
    ASSERT_TRUE(Import(TableKind::Bill, u"编号,名称,单位,章节,章节名称\n990101001,自有,m,甲,甲章\n"_s,
                       {.library = u"A"_s})
                    .stored);
    ExpectRefused(u"用途,代码,名称,编号位数,后缀位数\nde,A,名,,\n"_s, false, {u"2:"_s, u"“A”的 1 项"_s});
}

TEST_F(LibraryListSafety, AnotherItemSetIsTakenWhenTheItemsStayWithAnotherLibrary)
{
    const ImportReport report = ImportLibraries(
        u"用途,代码,名称,项目集,指引的清单库\nde,DEMO-DE-2024,名,DEMO-QDDE-2025,GB50500-2008\n"_s);
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_TRUE(report.notes.isEmpty());
}

TEST_F(LibraryListSafety, LibraryUnderAnotherCodeKeepsItsItemsOnlyByItsItemSet)
{
    const CString items = Bills(u"GB50500-2008"_s);
    CString all = Exported(TableKind::Libraries).replace(u"GB50500-2008"_s, u"GB-NEW"_s);
    ExpectRefused(all, true, {u"3:"_s, u"144 项"_s, u"在它的项目集中写“GB50500-2008”"_s});
    all.replace(u"2008,9,3,,"_s, u"2008,9,3,GB50500-2008,"_s);
    const ImportReport report = ImportLibraries(all, true);
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_TRUE(report.notes.isEmpty()) << report.notes.join(u'\n').toStdString();
    EXPECT_EQ(Bills(u"GB-NEW"_s), items);
}

TEST_F(LibraryListSafety, BillLibrariesTakeOnlyTheKnownRulesOfNumbers)
{
    const CString header = u"用途,代码,名称,编号位数,后缀位数\n"_s;
    for (const CString& rule : {u"8,3"_s, u"-1,-1"_s, u"9,1"_s, u"12,2"_s, u"10,"_s})
        ExpectRefused(header + u"清单库,A,名,%1\n"_s.arg(rule), false,
                      {u"2:"_s, u"9 和 3、12 和 3、12 和 1、10 和 2"_s});
    const CString known =
        u"清单库,A,名,9,3\n清单库,B,名,12,3\n清单库,C,名,12,1\n清单库,D,名,10,2\n清单库,E,名,,\n"_s;
    EXPECT_EQ(ImportLibraries(header + known).added, 5);
}

TEST_F(LibraryListSafety, NewBillLibraryHasNineAndThreeDigits)
{
    ASSERT_TRUE(ImportLibraries(u"用途,代码,名称\n清单库,A,名\n定额模式的定额库,B,名\n"_s).stored);
    const CString exported = Exported(TableKind::Libraries);
    EXPECT_TRUE(exported.contains(u"清单库,A,名,,,9,3,,"_s)) << exported.toStdString();
    EXPECT_TRUE(exported.contains(u"定额库,B,名,,,-1,-1,,"_s)) << exported.toStdString();
}

TEST_F(LibraryListSafety, RuleThatALibraryHasAlreadyStays)
{
    CatalogueSql(u"UPDATE libraries SET code_length = -1, suffix_length = -1 WHERE role = 'qd'"_s);
    const ImportReport report = ImportLibraries(Exported(TableKind::Libraries), true);
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_EQ(report.changed, 0);
}

TEST_F(LibraryListSafety, NumberOfDigitsMustBeThatOfTheItems)
{
    const CString row = u"用途,代码,名称,编号位数,后缀位数\n清单库,GB50500-2008,名,12,3\n"_s;
    ExpectRefused(row, false, {u"2:"_s, u"的项目“030"_s, u"有 9 位"_s});
}

TEST_F(LibraryListSafety, LibraryWithoutItemsIsRemarkedOn)
{
    const ImportReport report = ImportLibraries(u"用途,代码,名称\n清单库,A,名\n"_s);
    EXPECT_EQ(report.notes, CStringArray{u"“A”还没有项目，要另外导入"_s});
}

TEST_F(LibraryListSafety, NobodyChangesToALibraryWhileItIsBeingRemoved)
{
    CStringArray lines = Exported(TableKind::Libraries).split(u'\n');
    lines.removeIf([](const CString& line) { return line.contains(u"DEMO-DE-2025"_s); });
    CString error;
    EmbeddedHost host(m_project.Folder());
    const ImportReport report =
        Import(TableKind::Libraries, lines.join(u'\n'), {.replace = true}, [&](int percent) {
            if (percent == 95) {
                error = test::ErrorOf([&] { embedded::UseLibrary(m_project.Folder(), u"DEMO-DE-2025"_s); });
            }
            return true;
        });
    EXPECT_TRUE(error.contains(u"占用"_s)) << error.toStdString();
    EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_NO_THROW(EmbeddedHost(m_project.Folder()));
    EXPECT_NE(test::ErrorOf([&] { host.SetLibrary(LibraryRole::Quota, u"DEMO-DE-2025"_s); }), u"no error"_s);
}
