#include "editor/office/OfficeWindow.h"

#include "editor/EditorFixture.h"
#include "editor/office/JoinedDialog.h"
#include "editor/project/Project.h"
#include "editor/workbench/ConflictDialog.h"
#include "embedded/OfficeDatabase.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "host/HostWindows.h"
#include "platform/Files.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeWidget>

using namespace Qt::StringLiterals;

namespace {

const CString House = u"住宅"_s;

QByteArray Rules(const CString& name)
{
    QFile file(test::InSourceTree(u"samples/"_s + name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

/// The published file with one word changed, as a colleague would have changed it.
QByteArray Changed(const QByteArray& bytes, const char* from, const char* to)
{
    QByteArray changed = bytes;
    const qsizetype at = changed.indexOf(from);
    EXPECT_GE(at, 0);
    return changed.replace(at, static_cast<qsizetype>(qstrlen(from)), to);
}

/// The main window over a project of the office, and a colleague who publishes.
class OfficeWindowTest : public test::EditorWindow
{
protected:
    OfficeWindowTest()
    {
        m_window.show();
        embedded::ProjectOptions options;
        options.office = test::TestOffice::Keeper();
        embedded::CreateProject(Folder(u"mine"_s), options);
    }

    int Publish(const QByteArray& content, int base, const CString& note)
    {
        embedded::Office office(test::TestOffice::Keeper());
        embedded::PublishedConfigurations published(office);
        embedded::VersionMark mark;
        if (base > 0) mark = {base, embedded::DigestOf(published.Content(House, base).value())};
        const auto outcome = published.Publish({House, mark, content, note, u"colleague"_s, {}, {}});
        EXPECT_EQ(outcome.end, embedded::PublishOutcome::Published);
        return outcome.version;
    }
    void Open() { ASSERT_TRUE(m_window.OpenProject(Folder(u"mine"_s))); }
    /// Opens the window of the office and does something in it.
    void InOffice(const std::function<void(editor::OfficeWindow&)>& step)
    {
        const test::NextWindows user({[&](QDialog& window) {
            auto& office = dynamic_cast<editor::OfficeWindow&>(window);
            step(office);
            office.reject();
        }});
        m_window.Commands().office->trigger();
        EXPECT_TRUE(user.Done());
    }
    CString FilePath() { return m_window.OpenedProject()->RuleFolder() + u'\\' + House + u".xml"_s; }
    QByteArray File() { return platform::Files().Read(FilePath()).value_or("none"); }
    void WriteFile(const QByteArray& bytes)
    {
        platform::Files().CreateFolder(m_window.OpenedProject()->RuleFolder());
        platform::Files().WriteInPlace(FilePath(), bytes);
    }

    static QTreeWidget& List(QDialog& window, int index)
    {
        for (QTreeWidget* list : window.findChildren<QTreeWidget*>())
            if (list->accessibleName() == (index == 0 ? u"配置"_s : u"版本"_s)) return *list;
        throw std::runtime_error("no such list");
    }
    static void Choose(QDialog& window, const CString& configuration)
    {
        const auto found = List(window, 0).findItems(configuration, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1);
        List(window, 0).setCurrentItem(found.first());
    }
    static CString Cell(QDialog& window, int list, const CString& key, int column)
    {
        const auto found = List(window, list).findItems(key, Qt::MatchExactly);
        return found.isEmpty() ? u"none"_s : found.first()->text(column);
    }
    static QPushButton& Button(QDialog& window, const QString& text)
    {
        for (QPushButton* button : window.findChildren<QPushButton*>())
            if (button->text().remove(u'&').startsWith(text)) return *button;
        throw std::runtime_error("no such button");
    }
    /// Presses 发布 and gives the note that is asked for then.
    static void PublishWith(QDialog& window, const QString& note)
    {
        QTimer user;
        bool isTyped = false;
        QObject::connect(&user, &QTimer::timeout, &window, [&] {
            auto* question = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            if (question == nullptr || isTyped) return;
            isTyped = true;
            question->setTextValue(note);
            question->accept();
        });
        user.start(10);
        Button(window, u"发布"_s).click();
        EXPECT_TRUE(isTyped);
    }
    /// The same, and does something in the dialog of that class which comes up next.
    template <typename Dialog>
    static void PublishAndAnswer(QDialog& window, const std::function<void(QDialog&)>& step)
    {
        QTimer user;
        bool isAnswered = false;
        QObject::connect(&user, &QTimer::timeout, &window, [&] {
            auto* dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || isAnswered) return;
            isAnswered = true;
            step(*dialog);
        });
        user.start(10);
        PublishWith(window, {});
        EXPECT_TRUE(isAnswered);
    }
    /// The project has the first version with an edit, and a colleague has published another edit.
    void EditWithAColleague()
    {
        const QByteArray first = Rules(u"PlumbingRules.xml"_s);
        Publish(first, 0, {});
        Open();
        InOffice([&](editor::OfficeWindow& window) {
            Choose(window, House);
            Button(window, u"取到本机"_s).click();
        });
        Publish(Changed(first, "DN15", "DN15A"), 1, {});
    }
    /// Another edit of the project's file than the colleague's.
    void EditMyself()
    {
        QByteArray mine = File();
        WriteFile(mine.replace(mine.lastIndexOf("DN"), 2, "dn"));
    }
    /// What the dialog begins with.
    static CString Lead(QDialog& dialog)
    {
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            if (label->wordWrap()) return label->text();
        return {};
    }
    QByteArray LastPublished()
    {
        embedded::Office office(test::TestOffice::Keeper());
        embedded::PublishedConfigurations published(office);
        return published.Content(House, published.Last(House)->number).value();
    }

    test::TestOffice m_office;
};

} // namespace

TEST_F(OfficeWindowTest, FetchedConfigurationIsOnTheWorkbenchAsThePublishedBytes)
{
    const QByteArray first = Rules(u"PlumbingRules.xml"_s);
    Publish(first, 0, u"第一版"_s);
    Open();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_EQ(Cell(window, 0, House, 1), u"没有取来");
        EXPECT_EQ(Cell(window, 1, u"1"_s, 3), u"第一版");
        for (QCheckBox* box : window.findChildren<QCheckBox*>())
            box->setChecked(box->text().startsWith(u"取来后"_s));
        Button(window, u"取到本机"_s).click();
        EXPECT_EQ(Cell(window, 0, House, 1), u"相同");
        EXPECT_TRUE(window.HasChangedFiles());
    });
    EXPECT_EQ(File(), first);
    EXPECT_EQ(embedded::CurrentConfiguration(m_window.OpenedProject()->Host().ProjectPath()).Name(), House);
    EXPECT_EQ(m_window.Session().File().Name(), House);
}

TEST_F(OfficeWindowTest, PublishedFileIsTheNextVersionWithItsNote)
{
    Open();
    const QByteArray mine = Rules(u"PlumbingRules.xml"_s);
    WriteFile(mine);
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        PublishWith(window, u" 水管 "_s);
        EXPECT_EQ(Cell(window, 1, u"1"_s, 3), u"水管");
        EXPECT_EQ(Cell(window, 0, House, 1), u"相同");
    });
    embedded::Office office(test::TestOffice::Keeper());
    EXPECT_EQ(embedded::PublishedConfigurations(office).Content(House, 1), mine);
}

TEST_F(OfficeWindowTest, WhatWasMergedIsShownAndPublishedByTheButton)
{
    EditWithAColleague();
    QByteArray mine = File();
    const qsizetype last = mine.lastIndexOf("DN");
    ASSERT_GT(last, mine.indexOf("DN15"));
    mine.replace(last, 2, "dn");
    WriteFile(mine);
    const QByteArray theirs = LastPublished();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_EQ(Cell(window, 0, House, 1), u"已修改，有新版");
        PublishAndAnswer<editor::JoinedDialog>(window, [&](QDialog& dialog) {
            const auto& views = *dialog.findChild<QSplitter*>();
            ASSERT_EQ(views.count(), 2);
            const auto text = [&](int side) {
                return views.widget(side)->findChild<QPlainTextEdit*>()->toPlainText();
            };
            EXPECT_TRUE(text(0).contains(u"DN15A"_s)) << text(0).toStdString();
            EXPECT_TRUE(text(1).contains(u"dn"_s)) << text(1).toStdString();
            test::PressButton(dialog, u"不发布"_s);
        });
        EXPECT_EQ(File(), mine);
        EXPECT_EQ(LastPublished(), theirs);
        PublishAndAnswer<editor::JoinedDialog>(window,
                                               [](QDialog& dialog) { test::PressButton(dialog, u"发布"_s); });
        EXPECT_EQ(List(window, 1).topLevelItem(0)->text(0), u"3");
    });
    EXPECT_TRUE(File().contains("DN15A"));
    EXPECT_EQ(File().count("dn"), mine.count("dn"));
    EXPECT_EQ(LastPublished(), File());
}

TEST_F(OfficeWindowTest, SecondMergeOfAPublicationTellsWhatTheFileHoldsByNow)
{
    EditWithAColleague();
    EditMyself();
    CStringArray leads;
    QByteArray afterFirst;
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, &window, [&] {
            auto* dialog = dynamic_cast<editor::JoinedDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || leads.contains(Lead(*dialog))) return;
            leads.append(Lead(*dialog));
            const bool isFirst = leads.size() == 1;
            if (isFirst)
                Publish(Changed(LastPublished(), "DN100", "DN100A"), 2, {});
            else
                afterFirst = File();
            test::PressButton(*dialog, isFirst ? u"发布"_s : u"不发布"_s);
        });
        user.start(10);
        PublishWith(window, {});
    });
    ASSERT_EQ(leads.size(), 2);
    EXPECT_TRUE(leads[0].contains(u"第 2 版"_s) && leads[0].contains(u"什么也不改"_s))
        << leads[0].toStdString();
    EXPECT_TRUE(leads[1].contains(u"又有人发布了"_s) && leads[1].contains(u"第 3 版"_s) &&
                leads[1].contains(u"第 2 版"_s) && !leads[1].contains(u"什么也不改"_s))
        << leads[1].toStdString();
    EXPECT_TRUE(afterFirst.contains("DN15A") && !afterFirst.contains("DN100A"));
    EXPECT_EQ(File(), afterFirst);
    EXPECT_TRUE(m_messages.Texts().last().contains(u"本地文件已与别人发布的第 2 版合并"_s));
}

TEST_F(OfficeWindowTest, WhatWasMergedIsToldThoughThePublicationIsNotAnswered)
{
    EditWithAColleague();
    EditMyself();
    const test::AnswerLost lost(m_office);
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        PublishAndAnswer<editor::JoinedDialog>(window,
                                               [](QDialog& dialog) { test::PressButton(dialog, u"发布"_s); });
        EXPECT_TRUE(window.HasChangedFiles());
    });
    EXPECT_TRUE(File().contains("DN15A"));
    const CString told = m_messages.Texts().last();
    for (const CString& part : {u"本地文件已与别人发布的第 2 版合并"_s, u"可能已经发布"_s, u"DN15A"_s})
        EXPECT_TRUE(told.contains(part)) << told.toStdString();
}

TEST_F(OfficeWindowTest, ConflictIsAskedInTheWordsOfTheOffice)
{
    EditWithAColleague();
    const QByteArray mine = Changed(File(), "DN15", "DN15B");
    WriteFile(mine);
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        PublishAndAnswer<editor::ConflictDialog>(window, [&](QDialog& dialog) {
            const auto words = editor::ConflictDialog::WordsForOffice(House);
            bool isLed = false;
            for (const QLabel* label : dialog.findChildren<QLabel*>())
                isLed = isLed || label->text() == words.lead;
            EXPECT_TRUE(isLed && words.lead.contains(House));
            test::PressButton(dialog, words.allTheirs);
            dialog.accept();
        });
        EXPECT_EQ(Cell(window, 0, House, 1), u"相同");
    });
    EXPECT_TRUE(File().contains("DN15A"));
}

TEST_F(OfficeWindowTest, WhatWaitsIsWithdrawnByTheButton)
{
    Open();
    const QByteArray mine = Rules(u"PlumbingRules.xml"_s);
    WriteFile(mine);
    test::SharedServer().Stop();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_FALSE(Button(window, u"撤回等待的"_s).isEnabled());
        PublishWith(window, {});
        EXPECT_TRUE(Button(window, u"撤回等待的"_s).isEnabled());
        Button(window, u"撤回等待的"_s).click();
        EXPECT_FALSE(Cell(window, 0, House, 1).contains(u"等待发布"_s));
        EXPECT_FALSE(Button(window, u"撤回等待的"_s).isEnabled());
    });
    test::SharedServer().StartAgain();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_EQ(Cell(window, 0, House, 1), u"没有发布过");
    });
    EXPECT_EQ(File(), mine);
}

TEST_F(OfficeWindowTest, WhatWaitsAndHasToBeMergedIsLeftToTheButton)
{
    EditWithAColleague();
    QByteArray mine = File();
    mine.replace(mine.lastIndexOf("DN"), 2, "dn");
    WriteFile(mine);
    test::SharedServer().Stop();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        PublishWith(window, {});
    });
    test::SharedServer().StartAgain();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_TRUE(Cell(window, 0, House, 1).contains(u"等待发布"_s));
    });
    EXPECT_EQ(File(), mine);
    EXPECT_TRUE(m_messages.Texts().last().contains(u"还没有人同意"_s));
}

TEST_F(OfficeWindowTest, ModulesCloudDiskAsksAboutEditsThatAreNotSaved)
{
    Publish(Rules(u"PlumbingRules.xml"_s), 0, {});
    Open();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        for (QCheckBox* box : window.findChildren<QCheckBox*>())
            box->setChecked(box->text().startsWith(u"取来后"_s));
        Button(window, u"取到本机"_s).click();
    });
    editor::WorkSession& session = m_window.Session();
    const CString pipes = u"给排水\\管道\\给水管"_s;
    session.Do(rules::InsertRules(session.Draft(), pipes, 0, {rules::Rule()}, u"增加规则"_s));
    ASSERT_TRUE(session.IsChanged());
    const auto showDisk = [] { KtNetService::CNetDiskFunc::GetInstance().ShowDialog(u"云"_s, true); };
    {
        const test::NextWindows user({[](QDialog& box) { test::PressButton(box, u"取消"_s); }});
        showDisk();
        EXPECT_TRUE(user.Done());
        EXPECT_TRUE(session.IsChanged());
    }
    const test::NextWindows user({[](QDialog& box) { test::PressButton(box, u"放弃修改"_s); },
                                  [](QDialog& window) {
                                      EXPECT_NE(dynamic_cast<editor::OfficeWindow*>(&window), nullptr);
                                      window.reject();
                                  }});
    showDisk();
    EXPECT_TRUE(user.Done());
    EXPECT_FALSE(session.IsChanged());
}

TEST_F(OfficeWindowTest, ReaderMayNeitherPublishNorRemove)
{
    Publish(Rules(u"PlumbingRules.xml"_s), 0, {});
    embedded::ProjectOptions options;
    options.office = test::TestOffice::Reader();
    embedded::CreateProject(Folder(u"reader"_s), options);
    ASSERT_TRUE(m_window.OpenProject(Folder(u"reader"_s)));
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_TRUE(Button(window, u"取到本机"_s).isEnabled());
        EXPECT_FALSE(Button(window, u"发布"_s).isEnabled());
        EXPECT_FALSE(Button(window, u"还原成此版本"_s).isEnabled());
        EXPECT_FALSE(Button(window, u"移除"_s).isEnabled());
    });
}

TEST_F(OfficeWindowTest, RemovedConfigurationCanBeBroughtBack)
{
    Publish(Rules(u"PlumbingRules.xml"_s), 0, {});
    Open();
    m_messages.PresetAnswer(platform::Answer::Yes);
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        Button(window, u"移除"_s).click();
    });
    embedded::Office office(test::TestOffice::Keeper());
    EXPECT_TRUE(embedded::PublishedConfigurations(office).Latest().isEmpty());
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_EQ(Cell(window, 0, House, 1), u"已移除");
        EXPECT_FALSE(Button(window, u"取到本机"_s).isEnabled());
        Button(window, u"收回"_s).click();
    });
    EXPECT_EQ(embedded::PublishedConfigurations(office).Latest().size(), 1);
}

TEST_F(OfficeWindowTest, WithoutTheServerTheWindowSaysSoAndWhatIsPublishedWaits)
{
    Open();
    WriteFile(Rules(u"PlumbingRules.xml"_s));
    test::SharedServer().Stop();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        PublishWith(window, u"离线"_s);
        EXPECT_TRUE(Cell(window, 0, House, 1).contains(u"等待发布"_s));
    });
    test::SharedServer().StartAgain();
    InOffice([&](editor::OfficeWindow& window) {
        Choose(window, House);
        EXPECT_EQ(Cell(window, 0, House, 1), u"相同") << "what waited was sent when the window opened";
    });
}

TEST_F(OfficeWindowTest, NewProjectTakesWhatTheOfficeOffers)
{
    const test::NextWindows user({[&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(Folder(u"new"_s));
        auto* offices = dialog.findChildren<QComboBox*>().first();
        offices->setCurrentText(test::TestOffice::Editor());
        test::PressButton(dialog, u"新建"_s);
    }});
    m_window.Commands().newProject->trigger();
    ASSERT_TRUE(user.Done());
    ASSERT_NE(m_window.OpenedProject(), nullptr);
    ASSERT_NE(m_window.OpenedProject()->Host().Office(), nullptr);
    EXPECT_EQ(m_window.OpenedProject()->Host().Office()->Name(), test::TestOffice::Editor());
    EXPECT_TRUE(m_window.Commands().office->isEnabled());
}
