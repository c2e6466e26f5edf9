#include "dialogs/ModalUser.h"
#include "embedded/windows/PickerFixture.h"
#include "embedded/windows/WindowUser.h"
#include "host/HostWindows.h"
#include "support/FaultyFileSystem.h"

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeWidget>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace test;

namespace {

constexpr char RuleFile[] = "<自动套清单定额配置信息 Version=\"1.2.0\"/>";
constexpr char OtherRuleFile[] = "<自动套清单定额配置信息 Version=\"9\"/>";

/// A project with a cloud disk that holds the template 甲.
class CloudDisk : public EmbeddedWindowsTest
{
protected:
    CloudDisk()
    {
        m_cloud.WriteFile(u"甲.xml"_s, RuleFile);
        m_windows->SetCloudFolder(m_cloud.Native({}));
        m_project.Temp().MakeFolder(TestProject::Below(u"app\\自动套配置"_s));
    }

    /// Runs the cloud disk as the main dialog does.
    void Run(std::initializer_list<ModalStep> steps, bool flag = true)
    {
        InModalWindows(steps);
        KtNetService::CNetDiskFunc::GetInstance().ShowDialog(u"自动套模板"_s, flag);
    }
    CString WriteOwn(const CString& name, const QByteArray& bytes) const
    {
        return m_project.Temp().WriteFile(OwnFile(name), bytes);
    }
    QByteArray ReadOwn(const CString& name) const { return m_project.Temp().ReadFile(OwnFile(name)); }
    bool HasOwn(const CString& name) const { return m_project.Temp().Exists(OwnFile(name)); }
    QByteArray Ini() const { return m_project.Temp().ReadFile(TestProject::Below(u"SysRegedit.ini"_s)); }

    static QTreeWidget& Templates(const QWidget& window) { return Named<QTreeWidget>(window, u"云盘模板"_s); }
    static QTreeWidget& Own(const QWidget& window) { return Named<QTreeWidget>(window, u"本机配置"_s); }
    static CString Status(const QWidget& window) { return Told(window, u"结果"_s); }
    static void Close(QWidget& window) { ClickButton(window, u"关闭"_s); }
    static void Import(QWidget& window) { ClickButton(window, u"导入"_s); }

    TempFolder m_cloud;

private:
    static CString OwnFile(const CString& name) { return TestProject::Below(u"app\\自动套配置\\"_s + name); }
};

TEST_F(CloudDisk, ListsTemplatesWithVersionAndDate)
{
    m_cloud.WriteFile(u"坏.xml"_s, "<?");
    m_cloud.SetTime(u"甲.xml"_s, QDateTime(QDate(2024, 2, 29), QTime(12, 0)));
    Run({[](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), u"云盘 - 自动套模板"_s);
        const QTreeWidgetItem& item = *Templates(window).findItems(u"甲"_s, Qt::MatchExactly).first();
        EXPECT_EQ(item.text(1), u"1.2.0"_s);
        EXPECT_TRUE(item.text(2).startsWith(u"2024-02-29"_s)) << item.text(2).toStdString();
        EXPECT_EQ(Templates(window).findItems(u"坏"_s, Qt::MatchExactly).first()->text(1), u"不是规则文件"_s);
        Close(window);
    }});
}

TEST_F(CloudDisk, OwnFilesStartOnTheCurrentConfiguration)
{
    for (const CString& name : {u"B"_s, u"DefaultConfig"_s, u"Z"_s})
        WriteOwn(name + u".xml"_s, RuleFile);
    const auto expectCurrent = [this](const CString& name) {
        Run({[&](QWidget& window) {
            EXPECT_EQ(Own(window).currentItem()->text(0), name);
            const QList<QLabel*> labels = window.findChildren<QLabel*>();
            EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
                return label->text() == u"当前配置："_s + name;
            }));
            Close(window);
        }});
    };
    expectCurrent(u"DefaultConfig"_s);
    m_project.Temp().WriteFile(TestProject::Below(u"SysRegedit.ini"_s),
                               "[QdDeConfigInfo]\r\nConfigName=Z\r\n");
    expectCurrent(u"Z"_s);
}

TEST_F(CloudDisk, TellsAtOnceThatClosingReadsTheConfigurationAnew)
{
    Run({[](QWidget& window) {
        EXPECT_EQ(Status(window), u"关闭后配置对话框重新读取当前配置，未保存的修改会丢失"_s);
        Close(window);
    }});
}

TEST_F(CloudDisk, ImportPutsTheFileWhereTheDialogReadsItAndMakesItCurrent)
{
    Run({[](QWidget& window) {
        Import(window);
        EXPECT_EQ(Status(window), u"已导入“甲”"_s);
        EXPECT_EQ(Own(window).topLevelItem(0)->text(0), u"甲"_s);
        Close(window);
    }});
    EXPECT_EQ(ReadOwn(u"甲.xml"_s), RuleFile);
    EXPECT_TRUE(Ini().contains("ConfigName=甲"));
    EXPECT_EQ(m_messages.Texts(), CStringArray());
}

TEST_F(CloudDisk, ImportLeavesTheCurrentConfigurationWhenToldSo)
{
    const QByteArray ini = Ini();
    Run({[](QWidget& window) {
        QTest::keyClick(&Button(window, u"导入后使用此配置"_s), Qt::Key_Space);
        Import(window);
        Close(window);
    }});
    EXPECT_TRUE(HasOwn(u"甲.xml"_s));
    EXPECT_EQ(Ini(), ini);
}

TEST_F(CloudDisk, DoubleClickImports)
{
    Run({[](QWidget& window) {
        DoubleClickRow(Templates(window), 0);
        Close(window);
    }});
    EXPECT_TRUE(HasOwn(u"甲.xml"_s));
}

TEST_F(CloudDisk, MakesTheRuleFolderWhenItIsMissing)
{
    QDir(m_project.Native(u"app\\自动套配置"_s)).removeRecursively();
    Run({[](QWidget& window) {
        Import(window);
        Close(window);
    }});
    EXPECT_TRUE(HasOwn(u"甲.xml"_s));
}

TEST_F(CloudDisk, OverwritesOnlyWhenToldSoAndTellsTheBackup)
{
    WriteOwn(u"甲.xml"_s, OtherRuleFile);
    Run({Import,
         [](QWidget& question) {
             EXPECT_EQ(question.windowTitle(), u"名称已存在"_s);
             ClickButton(question, u"覆盖"_s);
         },
         [](QWidget& window) {
             EXPECT_TRUE(Status(window).startsWith(u"已导入“甲”；原文件备份为 甲.xml."_s));
             Close(window);
         }});
    EXPECT_EQ(ReadOwn(u"甲.xml"_s), RuleFile);
    const QStringList backups =
        QDir(m_project.Native(u"app\\自动套配置"_s)).entryList({u"甲.xml.*.bak"_s}, QDir::Files);
    ASSERT_EQ(backups.size(), 1);
    EXPECT_EQ(ReadOwn(backups.first()), OtherRuleFile);
}

TEST_F(CloudDisk, TakesAnotherName)
{
    WriteOwn(u"甲.xml"_s, OtherRuleFile);
    Run({Import,
         [](QWidget& question) {
             auto& name = Named<QLineEdit>(question, u"新名称"_s);
             EXPECT_EQ(name.text(), u"甲 (2)"_s);
             name.selectAll();
             TypeText(name, u"甲"_s);
             EXPECT_FALSE(Button(question, u"改名"_s).isEnabled());
             EXPECT_EQ(Told(question, u"名称检查结果"_s), u"此名称已存在"_s);
             TypeText(name, u"*"_s);
             EXPECT_FALSE(Button(question, u"改名"_s).isEnabled());
             QTest::keyClick(&name, Qt::Key_Backspace);
             TypeText(name, u"新"_s);
             QTest::keyClick(&name, Qt::Key_Return);
         },
         Close});
    EXPECT_EQ(ReadOwn(u"甲.xml"_s), OtherRuleFile);
    EXPECT_EQ(ReadOwn(u"甲新.xml"_s), RuleFile);
    EXPECT_TRUE(Ini().contains("ConfigName=甲新"));
}

TEST_F(CloudDisk, CancelChangesNothing)
{
    WriteOwn(u"甲.xml"_s, OtherRuleFile);
    const QByteArray ini = Ini();
    for (const bool byButton : {true, false}) {
        Run({Import,
             [byButton](QWidget& question) {
                 if (byButton)
                     ClickButton(question, u"取消"_s);
                 else
                     QTest::keyClick(&question, Qt::Key_Escape);
             },
             [](QWidget& window) {
                 EXPECT_EQ(Status(window), CString());
                 Close(window);
             }});
    }
    EXPECT_EQ(ReadOwn(u"甲.xml"_s), OtherRuleFile);
    EXPECT_EQ(Ini(), ini);
    EXPECT_EQ(m_messages.Texts(), CStringArray());
}

TEST_F(CloudDisk, FileThatIsNoRuleFileCannotBeImported)
{
    m_cloud.WriteFile(u"甲.xml"_s, "<other/>");
    Run({[](QWidget& window) {
        EXPECT_FALSE(Button(window, u"导入"_s).isEnabled());
        DoubleClickRow(Templates(window), 0);
        Close(window);
    }});
    EXPECT_FALSE(HasOwn(u"甲.xml"_s));
}

TEST_F(CloudDisk, UploadCopiesAnOwnFileAndAsksTheSameWay)
{
    WriteOwn(u"乙.xml"_s, OtherRuleFile);
    WriteOwn(u"甲.xml"_s, OtherRuleFile);
    Run({[](QWidget& window) {
             Own(window).setCurrentItem(Own(window).findItems(u"乙"_s, Qt::MatchExactly).first());
             ClickButton(window, u"<< 上传"_s);
             EXPECT_EQ(Status(window), u"已上传“乙”"_s);
             Own(window).setCurrentItem(Own(window).findItems(u"甲"_s, Qt::MatchExactly).first());
             ClickButton(window, u"<< 上传"_s);
         },
         [](QWidget& question) { ClickButton(question, u"覆盖"_s); }, Close});
    EXPECT_EQ(m_cloud.ReadFile(u"乙.xml"_s), OtherRuleFile);
    EXPECT_EQ(m_cloud.ReadFile(u"甲.xml"_s), OtherRuleFile);
    EXPECT_EQ(QDir(m_cloud.Native({})).entryList({u"甲.xml.*.bak"_s}).size(), 1);
}

TEST_F(CloudDisk, OffersNoUploadWithoutTheFlag)
{
    WriteOwn(u"乙.xml"_s, OtherRuleFile);
    Run({[](QWidget& window) {
            EXPECT_FALSE(Button(window, u"<< 上传"_s).isVisible());
            DoubleClickRow(Own(window), 0);
            Close(window);
        }},
        false);
    EXPECT_FALSE(m_cloud.Exists(u"乙.xml"_s));
}

TEST_F(CloudDisk, FailingImportWarnsAndKeepsTheCurrentConfiguration)
{
    const QByteArray ini = Ini();
    FaultyFileSystem files;
    files.Inject(Fault::NoRoom);
    Run({[](QWidget& window) {
        Import(window);
        Close(window);
    }});
    EXPECT_EQ(m_messages.Texts().size(), 1);
    EXPECT_FALSE(HasOwn(u"甲.xml"_s));
    EXPECT_EQ(Ini(), ini);
}

TEST_F(CloudDisk, WarnsWhenTheProfileCannotBeWritten)
{
    FaultyFileSystem files;
    files.Inject(Fault::RefuseOpen);
    files.OnlyAt(1);
    Run({[](QWidget& window) {
        Import(window);
        Close(window);
    }});
    EXPECT_EQ(m_messages.Texts(), CStringArray{u"工程文件 SysRegedit.ini 不能写入，仍然使用原来的配置!"_s});
    EXPECT_TRUE(HasOwn(u"甲.xml"_s));
}

TEST_F(CloudDisk, MissingFolderIsToldAndAnotherCanBeChosenForTheProject)
{
    const TempFolder chosen;
    chosen.WriteFile(u"丁.xml"_s, RuleFile);
    m_windows->SetCloudFolder(m_cloud.Native(u"没有"_s));
    Run({[](QWidget& window) {
             const auto labels = window.findChildren<QLabel*>();
             EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
                 return label->isVisible() && label->text() == u"云盘文件夹不存在，请选择文件夹。"_s;
             }));
             EXPECT_FALSE(Button(window, u"导入"_s).isEnabled());
             ClickButton(window, u"选择文件夹"_s);
         },
         [&](QWidget& chooser) {
             auto& dialog = dynamic_cast<QFileDialog&>(chooser);
             dialog.setDirectory(chosen.Native({}));
             dialog.findChild<QLineEdit*>()->setText(chosen.Native({}));
             dialog.findChild<QLineEdit*>()->setFocus();
             QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Return);
         },
         [](QWidget& window) {
             EXPECT_EQ(ColumnTexts(Templates(window), 0), CStringArray{u"丁"_s});
             Close(window);
         }});
    // Kept by the project, for this program and the next.
    for (int program = 0; program < 2; ++program) {
        Run({[](QWidget& window) {
            EXPECT_EQ(ColumnTexts(Templates(window), 0), CStringArray{u"丁"_s});
            Close(window);
        }});
        m_installed.reset();
        m_windows = std::make_unique<embedded::EmbeddedWindows>(*m_host);
        host::Roles roles = m_host->Roles();
        roles.windows = m_windows.get();
        m_installed = std::make_unique<host::Installation>(host::Install(roles));
    }
}

TEST_F(CloudDisk, RefreshShowsWhatHasCome)
{
    Run({[this](QWidget& window) {
        m_cloud.WriteFile(u"乙.xml"_s, RuleFile);
        ClickButton(window, u"刷新"_s);
        EXPECT_EQ(Templates(window).topLevelItemCount(), 2);
        EXPECT_EQ(SelectedText(Templates(window)), u"甲"_s);
        Close(window);
    }});
}

} // namespace
