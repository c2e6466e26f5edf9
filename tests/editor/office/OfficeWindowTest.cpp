#include "editor/office/OfficeWindow.h"

#include "editor/office/OfficeWindowFixture.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "host/HostWindows.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

using namespace Qt::StringLiterals;
using test::OfficeWindowTest;

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
