#include "editor/dialogs/LibraryRepair.h"

#include "editor/EditorFixture.h"
#include "editor/dialogs/LibraryCombo.h"
#include "editor/project/Project.h"
#include "embedded/data/catalogue/ShippedLibraries.h"
#include "embedded/data/engine/Database.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>

using namespace Qt::StringLiterals;
using embedded::LibraryRole;
using ::testing::HasSubstr;

namespace {

/// The code of the shipped library of that number.
CString Shipped(LibraryRole role, qsizetype number)
{
    return embedded::ShippedLibraries(role)[number].code;
}

/// A project whose data have been replaced by some that lack libraries.
class ProjectWithoutLibrary : public test::EditorWindow
{
protected:
    ProjectWithoutLibrary() { MakeProject(u"project"_s); }

    void Remove(const CString& condition) const
    {
        embedded::Database(m_folder.Path(u"project\\app\\catalogue.db"_s))
            .Execute(u"DELETE FROM libraries WHERE "_s + condition);
    }
    void RemoveLibrary(LibraryRole role, qsizetype number) const
    {
        Remove(u"code = '%1'"_s.arg(Shipped(role, number)));
    }
    bool Open() { return m_window.OpenProject(Folder(u"project"_s)); }
    CString InUse(LibraryRole role) const { return m_window.OpenedProject()->LibraryInUse(role); }
};

} // namespace

TEST_F(ProjectWithoutLibrary, UsesTheOneThatTheUserChoosesAndRemembersIt)
{
    RemoveLibrary(LibraryRole::Bill, 0);
    const test::NextWindows user({[](QDialog& window) {
        EXPECT_EQ(window.windowTitle(), u"改用别的库"_s);
        auto* library = window.findChild<QComboBox*>();
        EXPECT_EQ(editor::ChosenLibrary(*library), Shipped(LibraryRole::Bill, 1));
        QTest::keyClick(library, Qt::Key_Return);
    }});
    ASSERT_TRUE(Open());
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(InUse(LibraryRole::Bill), Shipped(LibraryRole::Bill, 1));
    EXPECT_EQ(m_messages.Texts(), QStringList());
    EXPECT_TRUE(Open());
}

TEST_F(ProjectWithoutLibrary, AllThatIsMissingIsAskedForAtOnce)
{
    RemoveLibrary(LibraryRole::Bill, 0);
    RemoveLibrary(LibraryRole::Quota, 0);
    const test::NextWindows user({[](QDialog& window) {
        EXPECT_EQ(window.findChildren<QComboBox*>().size(), 2);
        test::PressButton(window, u"改用并打开"_s);
    }});
    ASSERT_TRUE(Open());
    EXPECT_EQ(InUse(LibraryRole::Bill), Shipped(LibraryRole::Bill, 1));
    EXPECT_EQ(InUse(LibraryRole::QuotaOfBills), Shipped(LibraryRole::QuotaOfBills, 0));
    EXPECT_EQ(InUse(LibraryRole::Quota), Shipped(LibraryRole::Quota, 1));
}

TEST_F(ProjectWithoutLibrary, StaysAsItIsWhenTheUserCancelsAndSoDoesTheFormerProject)
{
    ASSERT_TRUE(m_window.OpenProject(MakeProject(u"other"_s)));
    RemoveLibrary(LibraryRole::Bill, 0);
    const auto cancel = [](QDialog& window) { QTest::keyClick(&window, Qt::Key_Escape); };
    const test::NextWindows user({cancel, cancel});
    EXPECT_FALSE(Open());
    EXPECT_EQ(m_window.OpenedProject()->Folder(), Folder(u"other"_s));
    EXPECT_EQ(m_messages.Texts(), QStringList());
    EXPECT_FALSE(Open());
    EXPECT_TRUE(user.Done());
}

TEST_F(ProjectWithoutLibrary, WithoutAnyOfTheRoleIsReported)
{
    Remove(u"role = 'qd'"_s);
    EXPECT_FALSE(Open());
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_THAT(m_messages.Texts()[0].toStdString(), HasSubstr("工程的数据中没有它使用的清单库"));
}
