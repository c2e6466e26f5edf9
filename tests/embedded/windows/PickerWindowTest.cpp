#include "embedded/windows/BillPickerWindow.h"
#include "embedded/windows/PickerFixture.h"
#include "embedded/windows/QuotaPickerWindow.h"
#include "embedded/windows/WindowUser.h"

#include <QtWidgets/QSplitter>

#include <memory>

using namespace Qt::StringLiterals;
using namespace test;

// What pickers of both kinds do.

namespace {

using PickerWindows = EmbeddedWindowsTest;

TEST_F(PickerWindows, RememberTheirArrangementWhenTheyEndVisibleWithTheirParent)
{
    auto parent = std::make_unique<PickerParent>();
    NvQdDeMng::CSelQdDeDlg first(parent.get());
    first.ShowWindow(true);
    auto& window = *parent->findChild<QDialog*>();
    window.resize(640, 480);
    window.findChildren<QSplitter*>()[1]->setSizes({260, 340});
    const QList<int> chapters = window.findChildren<QSplitter*>()[1]->sizes();
    parent.reset();

    NvQdDeMng::CSelQdDeDlg next(&m_parent);
    const auto& restored = *m_parent.findChildren<QDialog*>().last();
    EXPECT_EQ(restored.size(), QSize(640, 480));
    next.ShowWindow(true);
    EXPECT_EQ(restored.findChildren<QSplitter*>()[1]->sizes(), chapters);
}

TEST_F(PickerWindows, LeaveNoBillAndNoQuotaToPickWhenTheLibraryHasBecomeEmpty)
{
    embedded::LibraryContents contents = m_host->Contents();
    PickerParent parent;
    embedded::BillPickerWindow window(parent, contents, std::make_shared<embedded::PickerMemory>());
    window.Load();
    ASSERT_TRUE(Button(window, u"选用清单"_s).isEnabled());
    ASSERT_TRUE(Button(window, u"选用定额"_s).isEnabled());
    contents = {};
    window.Load();
    EXPECT_FALSE(Button(window, u"选用清单"_s).isEnabled());
    EXPECT_FALSE(Button(window, u"选用定额"_s).isEnabled());
}

TEST_F(PickerWindows, LeaveNoQuotaToPickWhenTheLibraryHasBecomeEmpty)
{
    embedded::LibraryContents contents = m_host->Contents();
    PickerParent parent;
    embedded::QuotaPickerWindow window(parent, contents, std::make_shared<embedded::PickerMemory>());
    window.Load();
    ASSERT_TRUE(Button(window, u"选用定额"_s).isEnabled());
    contents = {};
    window.Load();
    EXPECT_FALSE(Button(window, u"选用定额"_s).isEnabled());
}

} // namespace
