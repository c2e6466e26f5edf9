#include "host/HostWindows.h"
#include "host/Installation.h"
#include "host/NvQdDeMng.h"
#include "support/MemoryHost.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// Records what a picker is told, in order.
class RecordingPicker : public host::IBillPicker
{
public:
    RecordingPicker(CStringArray& calls, bool creates) : m_calls(calls), m_creates(creates) {}
    bool Create(CWnd* parent) override
    {
        m_calls.append(parent != nullptr ? u"create"_s : u"create without parent"_s);
        return m_creates;
    }
    bool IsVisible() const override { return true; }
    void Show(bool visible) override { m_calls.append(visible ? u"show"_s : u"hide"_s); }
    void EnableContent(bool enable) override { m_calls.append(enable ? u"enable"_s : u"disable"_s); }
    void MoveWndToRight(CWnd*) override { m_calls.append(u"move"_s); }
    void InitData() override { m_calls.append(u"init"_s); }
    void SetShowGetQdNumDlg(bool show) override { m_calls.append(show ? u"ask number"_s : u"do not ask"_s); }
    void SetTreePosition(const CString& position) override { m_calls.append(u"position "_s + position); }

private:
    CStringArray& m_calls;
    bool m_creates;
};

class RecordingWindows : public host::IWindows
{
public:
    std::unique_ptr<host::IBillPicker> MakeBillPicker() override
    {
        return std::make_unique<RecordingPicker>(calls, creates);
    }
    std::unique_ptr<host::IPickerWindow> MakeQuotaPicker() override { return MakeBillPicker(); }
    int ShowCalculatorDlg(const CString& categoryText, const CString& text, CString& result, CWnd*) override
    {
        result = categoryText + u'|' + text;
        return 1;
    }
    void ShowNetDisk(const CString& name, bool flag) override
    {
        calls.append(u"net disk "_s + name + (flag ? u" true"_s : u" false"_s));
    }
    CWnd* MainFrame() override { return frame; }

    CStringArray calls;
    bool creates = true;
    CWnd* frame = nullptr;
};

/// The names of windows over recording windows. The parent is never looked into, so any address serves.
class WindowNames : public ::testing::Test
{
protected:
    host::Roles Roles()
    {
        m_memory.SetWindows(&m_windows);
        return m_memory.Roles();
    }
    CStringArray& Calls() { return m_windows.calls; }

    int m_place = 0;
    CWnd* m_parent = reinterpret_cast<CWnd*>(&m_place);
    RecordingWindows m_windows;
    test::MemoryHost m_memory;
    host::Installation m_installed = host::Install(Roles());
};

TEST_F(WindowNames, BillPickerPassesEverythingOn)
{
    NvQdDeMng::CSelQdDeDlg picker(m_parent);
    picker.SetShowGetQdNumDlg(false);
    picker.ShowWindow(true);
    picker.MoveWndToRight(m_parent);
    picker.InitQdDeData();
    picker.SetTreePosition(u"1.2.3"_s);
    picker.ShowWindow(false);
    EXPECT_TRUE(picker.IsWindowVisible());
    EXPECT_EQ(Calls(), (CStringArray{u"create"_s, u"do not ask"_s, u"show"_s, u"move"_s, u"init"_s,
                                     u"position 1.2.3"_s, u"hide"_s}));
}

TEST_F(WindowNames, QuotaPickerPassesEverythingOn)
{
    NvQdDeMng::CSelDeDlg picker(m_parent);
    picker.ShowWindow(true);
    picker.EnableWindow(false);
    picker.MoveWndToRight(m_parent);
    picker.InitDeData();
    EXPECT_TRUE(picker.IsWindowVisible());
    EXPECT_EQ(Calls(), (CStringArray{u"create"_s, u"show"_s, u"disable"_s, u"move"_s, u"init"_s}));
}

TEST_F(WindowNames, PickerThatHasNotBeenCreatedDoesNothing)
{
    NvQdDeMng::CSelQdDeDlg bill;
    NvQdDeMng::CSelDeDlg quota;
    bill.ShowWindow(true);
    bill.MoveWndToRight(m_parent);
    bill.InitQdDeData();
    bill.SetTreePosition(u"1"_s);
    quota.ShowWindow(true);
    quota.EnableWindow(true);
    quota.MoveWndToRight(m_parent);
    quota.InitDeData();
    EXPECT_FALSE(bill.IsWindowVisible());
    EXPECT_FALSE(quota.IsWindowVisible());
    EXPECT_EQ(Calls(), CStringArray());
}

TEST_F(WindowNames, PickerWhoseCreationFailsStaysInvisible)
{
    m_windows.creates = false;
    NvQdDeMng::CSelQdDeDlg bill;
    EXPECT_FALSE(bill.Create(m_parent));
    bill.ShowWindow(true);
    EXPECT_FALSE(bill.IsWindowVisible());
    EXPECT_EQ(Calls(), CStringArray{u"create"_s});
    m_windows.creates = true;
    NvQdDeMng::CSelDeDlg quota;
    EXPECT_TRUE(quota.Create(m_parent));
    EXPECT_TRUE(quota.IsWindowVisible());
}

TEST_F(WindowNames, CalculatorCloudDiskAndFramePassOn)
{
    CString result;
    EXPECT_EQ(KtGlobalDlg::CFaceGlobalDlg().ShowCalculatorDlg(u"a\\b\\c"_s, u"L*2"_s, result, m_parent), 1);
    EXPECT_EQ(result, u"a\\b\\c|L*2"_s);
    KtNetService::CNetDiskFunc::GetInstance().ShowDialog(u"自动套"_s, true);
    EXPECT_EQ(Calls(), CStringArray{u"net disk 自动套 true"_s});
    EXPECT_EQ(acedGetAcadFrame(), nullptr);
    m_windows.frame = m_parent;
    EXPECT_EQ(acedGetAcadFrame(), m_parent);
}

TEST(WindowNamesWithoutAScreen, Raise)
{
    test::MemoryHost memory;
    const host::Installation installed = host::Install(memory.Roles());
    CString result;
    EXPECT_THROW(NvQdDeMng::CSelQdDeDlg(), host::NoHostError);
    EXPECT_THROW(NvQdDeMng::CSelDeDlg(), host::NoHostError);
    EXPECT_THROW(KtGlobalDlg::CFaceGlobalDlg().ShowCalculatorDlg(result, result, result, nullptr),
                 host::NoHostError);
    EXPECT_THROW(KtNetService::CNetDiskFunc::GetInstance().ShowDialog(result, false), host::NoHostError);
    EXPECT_THROW(acedGetAcadFrame(), host::NoHostError);
}

} // namespace
