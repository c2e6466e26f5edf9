#include "editor/dialogs/LibraryCombo.h"

#include "editor/EditorFixture.h"
#include "editor/dialogs/NewProjectDialog.h"
#include "editor/dialogs/TransferDialog.h"
#include "editor/window/ModuleSteps.h"
#include "embedded/data/catalogue/Library.h"
#include "embedded/data/catalogue/ShippedLibraries.h"
#include "embedded/data/engine/Database.h"

#include "support/WindowWaits.h"
#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStatusBar>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;
using embedded::LibraryRole;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

const CString Bill2013 = u"GB50856-2013"_s;
const CString Bill2008 = u"GB50500-2008"_s;

/// The field behind the label that begins with `text`.
QComboBox& Field(const QWidget& window, const QString& text)
{
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->text().startsWith(text)) return *qobject_cast<QComboBox*>(label->buddy());
    throw std::out_of_range("no field " + text.toStdString());
}

CStringArray Codes(const QComboBox& combo)
{
    CStringArray codes;
    for (int i = 0; i < combo.count(); ++i)
        codes.append(combo.itemData(i).toString());
    return codes;
}

CStringArray Codes(const CArray<embedded::LibraryName>& libraries)
{
    CStringArray codes;
    for (const embedded::LibraryName& library : libraries)
        codes.append(library.code);
    return codes;
}

CStringArray ShippedCodes(LibraryRole role)
{
    return Codes(embedded::ShippedLibraries(role));
}

/// The window on a project in bill mode.
class Libraries : public test::EditorWindow
{
protected:
    Libraries() { m_window.OpenProject(MakeProject(u"project"_s)); }

    editor::Project& Project() const { return *m_window.OpenedProject(); }
    QComboBox& Bills() const { return Field(m_window, u"清单库"_s); }
    QComboBox& Quotas() const { return Field(m_window, u"定额库"_s); }
    void ChooseMode(SQdDeInfo::EQdDeMode mode) const
    {
        QComboBox& combo = Field(m_window, u"模式"_s);
        combo.setCurrentIndex(combo.findData(mode));
    }
    static void Choose(QComboBox& combo, const CString& code) { combo.setCurrentIndex(combo.findData(code)); }
};

} // namespace

TEST(LibraryText, EditionsOfOneNameDiffer)
{
    EXPECT_EQ(editor::LibraryText({u"code"_s, u"name"_s, u"全国"_s, u"2013"_s}), u"name · 全国 2013"_s);
    EXPECT_EQ(editor::LibraryText({u"code"_s, u"name"_s, {}, u"2013"_s}), u"name · 2013"_s);
    EXPECT_EQ(editor::LibraryText({u"code"_s, u"name"_s, {}, {}}), u"name"_s);
}

TEST(LibraryCombo, LongNameMakesItNoWider)
{
    const std::unique_ptr<QComboBox> combo(editor::MakeLibraryCombo());
    const int width = combo->sizeHint().width();
    const int least = combo->minimumSizeHint().width();
    editor::FillLibraries(*combo, {{u"code"_s, CString(200, u'长'), u"全国"_s, u"2013"_s}}, u"code"_s);
    EXPECT_EQ(combo->sizeHint().width(), width);
    EXPECT_EQ(combo->minimumSizeHint().width(), least);
    EXPECT_THAT(combo->toolTip().toStdString(), HasSubstr("代码：code"));
}

TEST_F(Libraries, LongNameMakesTheWindowNoWider)
{
    const int least = m_window.minimumSizeHint().width();
    m_window.Commands().closeProject->trigger();
    embedded::Database(m_folder.Path(u"project\\app\\catalogue.db"_s))
        .Execute(u"UPDATE libraries SET file_name = ?"_s, {QString(200, u'长')});
    editor::MainWindow other(Recent());
    ASSERT_TRUE(other.OpenProject(Folder(u"project"_s)));
    other.show();
    ASSERT_TRUE(Field(other, u"清单库"_s).currentText().startsWith(u"长长"_s));
    EXPECT_EQ(other.minimumSizeHint().width(), least);
    const QComboBox& combo = Field(other, u"清单库"_s);
    EXPECT_LT(combo.geometry().right(), combo.parentWidget()->width());
}

TEST_F(Libraries, HintIsShownWhileTheGuideIsOfAnotherBillLibrary)
{
    m_window.show();
    const auto hints = [this] {
        CStringArray texts;
        for (const QLabel* label : m_window.findChildren<QLabel*>()) {
            if (label->isVisible() && label->text().startsWith(u"提示："_s)) texts.append(label->text());
        }
        return texts;
    };
    EXPECT_EQ(hints(), CStringArray());
    Choose(Bills(), Bill2008);
    ASSERT_EQ(hints().size(), 1);
    EXPECT_THAT(hints().first().toStdString(), HasSubstr("DEMO-QDDE-2024 的指引是清单库 GB50856-2013 的"));
    Choose(Quotas(), u"DEMO-QDDE-2025"_s);
    EXPECT_EQ(hints(), CStringArray());
}

TEST_F(Libraries, ListsAreThoseOfTheMode)
{
    EXPECT_EQ(Codes(Bills()), ShippedCodes(LibraryRole::Bill));
    EXPECT_EQ(Codes(Quotas()), ShippedCodes(LibraryRole::QuotaOfBills));
    ChooseMode(SQdDeInfo::QuotaMode);
    EXPECT_EQ(Codes(Bills()), ShippedCodes(LibraryRole::Bill));
    EXPECT_EQ(Codes(Quotas()), ShippedCodes(LibraryRole::Quota));
}

TEST_F(Libraries, ChoiceByKeyboardIsStoredInTheProject)
{
    ASSERT_EQ(editor::ChosenLibrary(Bills()), Bill2013);
    QTest::keyClick(&Bills(), Qt::Key_Down);
    QTest::keyClick(&Quotas(), Qt::Key_Down);
    const CString quota = ShippedCodes(LibraryRole::QuotaOfBills)[1];
    editor::Project reopened(Folder(u"project"_s));
    EXPECT_EQ(reopened.LibraryInUse(LibraryRole::Bill), Bill2008);
    EXPECT_EQ(reopened.LibraryInUse(LibraryRole::QuotaOfBills), quota);
    m_window.Commands().closeProject->trigger();
    ASSERT_TRUE(m_window.OpenProject(Folder(u"project"_s)));
    EXPECT_EQ(editor::ChosenLibrary(Bills()), Bill2008);
    EXPECT_EQ(editor::ChosenLibrary(Quotas()), quota);
}

TEST_F(Libraries, EachModeKeepsItsOwnQuotaLibrary)
{
    const CString ofBills = ShippedCodes(LibraryRole::QuotaOfBills)[1];
    Choose(Quotas(), ofBills);
    ChooseMode(SQdDeInfo::QuotaMode);
    EXPECT_EQ(editor::ChosenLibrary(Quotas()), ShippedCodes(LibraryRole::Quota)[0]);
    const CString ofQuotas = ShippedCodes(LibraryRole::Quota)[1];
    Choose(Quotas(), ofQuotas);
    ChooseMode(SQdDeInfo::BillMode);
    EXPECT_EQ(editor::ChosenLibrary(Quotas()), ofBills);
    ChooseMode(SQdDeInfo::QuotaMode);
    EXPECT_EQ(editor::ChosenLibrary(Quotas()), ofQuotas);
}

TEST_F(Libraries, ChangeTellsThatOtherItemsStayInTheFiles)
{
    Choose(Bills(), Bill2008);
    EXPECT_THAT(m_window.statusBar()->currentMessage().toStdString(),
                HasSubstr("不再显示，但仍留在规则文件里"));
    EXPECT_THAT(Bills().toolTip().toStdString(), HasSubstr("GB50500-2008"));
}

TEST_F(Libraries, RefusedChangeIsShownAndThePanelGoesBack)
{
    embedded::Database(m_folder.Path(u"project\\project.ktqd"_s)).Execute(u"DROP TABLE settings"_s);
    Choose(Bills(), Bill2008);
    EXPECT_EQ(m_messages.Texts().size(), 1);
    EXPECT_EQ(editor::ChosenLibrary(Bills()), Bill2013);
    EXPECT_EQ(Project().LibraryInUse(LibraryRole::Bill), Bill2013);
    EXPECT_THAT(m_window.statusBar()->currentMessage().toStdString(), Not(HasSubstr("不再显示")));
}

TEST_F(Libraries, WizardIsProposedTheLibrariesInUse)
{
    Choose(Bills(), Bill2008);
    ChooseMode(SQdDeInfo::QuotaMode);
    Choose(Quotas(), ShippedCodes(LibraryRole::Quota)[1]);
    const auto start = editor::ModuleSteps(&m_window, Project()).ProposedStart({});
    EXPECT_EQ(start.billFile, embedded::ShippedLibraries(LibraryRole::Bill)[1].name);
    EXPECT_EQ(start.quotaFile, embedded::ShippedLibraries(LibraryRole::Quota)[1].name);
}

TEST_F(Libraries, NewProjectUsesTheChosenOnesHoweverLongItTakes)
{
    const test::SlowFiles files;
    const test::NextWindows user(
        {[&](QDialog& window) {
             window.findChild<QLineEdit*>()->setText(Folder(u"mine"_s));
             QComboBox& mode = Field(window, u"模式"_s);
             EXPECT_EQ(Codes(Field(window, u"定额库"_s)), ShippedCodes(LibraryRole::QuotaOfBills));
             mode.setCurrentIndex(mode.findData(SQdDeInfo::QuotaMode));
             EXPECT_EQ(Codes(Field(window, u"定额库"_s)), ShippedCodes(LibraryRole::Quota));
             QTest::keyClick(&Field(window, u"清单库"_s), Qt::Key_Down);
             QTest::keyClick(&Field(window, u"定额库"_s), Qt::Key_Down);
             test::PressButton(window, u"新建"_s);
         },
         [](QDialog& refused) { refused.reject(); }});
    m_window.Commands().newProject->trigger();
    EXPECT_FALSE(user.Done()) << "nothing was refused";
    EXPECT_EQ(files.Windows(), 1);
    ASSERT_EQ(Project().Folder(), Folder(u"mine"_s));
    EXPECT_EQ(Project().LibraryInUse(LibraryRole::Bill), Bill2008);
    EXPECT_EQ(Project().LibraryInUse(LibraryRole::Quota), ShippedCodes(LibraryRole::Quota)[1]);
    EXPECT_EQ(Project().LibraryInUse(LibraryRole::QuotaOfBills),
              embedded::QuotaLibraryBeside(embedded::ShippedLibraries(LibraryRole::QuotaOfBills), Bill2008));
}

TEST_F(Libraries, TransferAsksForALibraryWhereATableHasOne)
{
    Choose(Bills(), Bill2008);
    const editor::TransferDialog dialog(nullptr, editor::TransferDialog::Direction::Export, Project());
    EXPECT_EQ(test::ButtonsWithoutTip(dialog), QStringList());
    QComboBox& kinds = Field(dialog, u"表"_s);
    const QComboBox& library = Field(dialog, u"库"_s);
    const auto choose = [&](embedded::TableKind kind) {
        kinds.setCurrentIndex(kinds.findData(static_cast<int>(kind)));
    };
    choose(embedded::TableKind::Catalogue);
    EXPECT_FALSE(library.isEnabled());
    EXPECT_EQ(dialog.Options().library, CString());
    choose(embedded::TableKind::Bill);
    EXPECT_EQ(Codes(library), ShippedCodes(LibraryRole::Bill));
    EXPECT_EQ(dialog.Options().library, Bill2008);
    choose(embedded::TableKind::Guide);
    EXPECT_EQ(Codes(library), ShippedCodes(LibraryRole::QuotaOfBills) + ShippedCodes(LibraryRole::Quota));
    EXPECT_EQ(dialog.Options().library, ShippedCodes(LibraryRole::QuotaOfBills)[0]);
    choose(embedded::TableKind::Libraries);
    EXPECT_FALSE(library.isEnabled());
}

TEST_F(Libraries, LibraryThatIsNotInUseCanBeExported)
{
    const test::NextWindows user({[&](QDialog& window) {
        QComboBox& kinds = Field(window, u"表"_s);
        kinds.setCurrentIndex(kinds.findData(static_cast<int>(embedded::TableKind::Bill)));
        Choose(Field(window, u"库"_s), Bill2008);
        window.findChild<QLineEdit*>()->setText(Folder(u"out.csv"_s));
        test::PressButton(window, u"导出"_s);
    }});
    m_window.Commands().exportData->trigger();
    ASSERT_TRUE(user.Done());
    EXPECT_THAT(m_folder.ReadFile(u"out.csv"_s).toStdString(), HasSubstr("030801001,镀锌钢管"));
}
