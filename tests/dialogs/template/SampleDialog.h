#pragma once

#include "dialogs/template/PlainDialog.h"

#include <functional>

/// Templates and a dialog for the tests of the template machinery itself.
namespace test::sample {

using namespace Qt::StringLiterals;
using namespace dialogs;

using enum ControlKind;

// One control of every kind, and a default button.
inline constexpr ControlRow AllKindsRows[] = {
    {1, PushButton, u"确定(&O)", {100, 180, 50, 14}, DefaultButton},
    {2, PushButton, u"取消", {155, 180, 50, 14}},
    {10, PushButton, u"应用", {45, 180, 50, 14}},
    {11, ListBox, u"", {10, 12, 60, 40}, Sorted},
    {NoId, GroupBox, u"组", {5, 2, 70, 55}},
    {NoId, Static, u"名称(&N):", {80, 5, 40, 8}, 0, {}, {}, 12},
    {12, Edit, u"", {120, 4, 60, 13}},
    {13, MultiLineEdit, u"", {80, 20, 100, 30}, ReadOnly, u"说明文字"},
    {14, DropList, u"", {5, 60, 60, 50}, Sorted},
    {15, EditableCombo, u"", {70, 60, 60, 50}},
    {16, RadioButton, u"甲", {5, 80, 40, 10}, GroupStart},
    {17, RadioButton, u"乙", {50, 80, 40, 10}},
    {18, RadioButton, u"丙", {100, 80, 40, 10}, GroupStart},
    {19, CheckBox, u"丁", {150, 80, 40, 10}},
    {20, Tree, u"", {5, 95, 60, 40}},
    {21, ReportList, u"", {70, 95, 60, 40}},
    {22, Tab, u"", {135, 95, 60, 40}},
    {23, Frame, u"", {5, 140, 60, 30}},
    {24, Static, u"帮助", {70, 140, 40, 10}, Notifies},
    {25, PushButton, u"藏", {120, 140, 40, 14}, Hidden},
    {26, PushButton, u"灰", {120, 160, 40, 14}, Disabled},
};
inline constexpr DialogTemplate AllKinds{u"样板", 210, 200, AllKindsRows};

inline constexpr ControlRow NoDefaultRows[] = {
    {10, PushButton, u"一", {5, 5, 50, 14}},
    {11, PushButton, u"二", {60, 5, 50, 14}},
    {12, Edit, u"", {5, 25, 60, 13}},
};
inline constexpr DialogTemplate NoDefault{u"无", 120, 50, NoDefaultRows};

/// A dialog that notes what it is asked to do.
class NotingDialog : public PlainDialog
{
public:
    NotingDialog() : PlainDialog(AllKinds, nullptr) {}

    /// Notes the event under that word.
    void Note(DialogEvent event, int source, const CString& word)
    {
        On(event, source, [this, word] { m_notes.append(word); });
    }
    const CStringArray& Notes() const { return m_notes; }

    std::function<void()> m_duringInit = [] {};
    std::function<void()> m_duringOk = [] {};
    CString m_text;
    int m_radio = 1;
    int m_layouts = 0;

protected:
    void OnInitDialog() override
    {
        m_notes.append(u"init"_s);
        PlainDialog::OnInitDialog();
        m_duringInit();
    }
    void DoDataExchange(DataExchange& exchange) override
    {
        exchange.Text(12, m_text);
        exchange.Radio(16, m_radio);
    }
    void OnOK() override
    {
        UpdateData(DataExchange::Direction::ToMembers);
        m_duringOk();
        m_notes.append(u"ok"_s);
        PlainDialog::OnOK();
    }
    void OnCancel() override
    {
        m_notes.append(u"cancel"_s);
        PlainDialog::OnCancel();
    }
    void OnClose() override
    {
        m_notes.append(u"close"_s);
        PlainDialog::OnClose();
    }
    void OnLayout() override { ++m_layouts; }

private:
    CStringArray m_notes;
};

} // namespace test::sample
