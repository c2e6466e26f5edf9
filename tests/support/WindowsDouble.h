#pragma once

#include "host/Roles.h"
#include "support/PrintText.h"

#include <functional>
#include <optional>

namespace test {

/// What a dialog has done with one of the host's pickers, and what a user does in it. Lives in the
/// `WindowsDouble`, so it can be asked also after the dialog is gone.
class PickerDouble
{
public:
    bool IsCreated() const noexcept { return m_parent != nullptr; }
    bool IsVisible() const noexcept { return m_visible; }
    bool AsksNumber() const noexcept { return m_asksNumber; }
    /// What the dialog asked for, in order: "create", "show", "hide", "enable", "disable", "right", "load",
    /// "position 1.2".
    const CStringArray& Calls() const noexcept { return m_calls; }
    void ForgetCalls() { m_calls.clear(); }
    /// Runs at each of these calls, with its text.
    void OnCall(std::function<void(const CString&)> listener) { m_listener = std::move(listener); }

    /// The user picks an item; null sends a message without a record. Gives the answer of the dialog.
    int PickBill(const SPickedQd* picked) const;
    int PickQuota(const SPickedDe* picked) const;
    /// Sends any message to the dialog and gives its answer.
    int Send(int code, const void* record) const;
    /// The user closes the picker.
    void Close() { m_visible = false; }

private:
    friend class PickerWindow;

    CWnd* m_parent = nullptr;
    bool m_visible = false;
    bool m_asksNumber = true;
    CStringArray m_calls;
    std::function<void(const CString&)> m_listener = [](const CString&) {};
};

/// The windows of a host without any of its own: pickers that a test moves, a calculator and a cloud disk
/// with preset answers, and a main frame that the test gives.
class WindowsDouble : public host::IWindows
{
public:
    /// Of the last bill picker and the last quota picker that were made.
    PickerDouble& Bill() noexcept { return m_bill; }
    PickerDouble& Quota() noexcept { return m_quota; }

    /// What the user enters in the calculator from now on; nothing is a cancelled calculator.
    void SetCalculation(const std::optional<CString>& result) { m_calculation = result; }
    /// Runs while the calculator is open.
    void DuringCalculation(std::function<void()> step) { m_duringCalculation = std::move(step); }
    /// Category text and cell text of each run of the calculator, joined by a bar.
    const CStringArray& Calculations() const noexcept { return m_calculations; }

    /// Runs while the cloud disk is open.
    void DuringNetDisk(std::function<void()> step) { m_duringNetDisk = std::move(step); }
    /// Folder and flag of each run of the cloud disk: "folder 1".
    const CStringArray& NetDisks() const noexcept { return m_netDisks; }

    /// Not owned.
    void SetMainFrame(CWnd* frame) noexcept { m_frame = frame; }

    std::unique_ptr<host::IBillPicker> MakeBillPicker() override;
    std::unique_ptr<host::IPickerWindow> MakeQuotaPicker() override;
    int ShowCalculatorDlg(const CString& categoryText, const CString& text, CString& result,
                          CWnd* parent) override;
    void ShowNetDisk(const CString& name, bool flag) override;
    CWnd* MainFrame() override { return m_frame; }

private:
    PickerDouble m_bill;
    PickerDouble m_quota;
    std::optional<CString> m_calculation;
    std::function<void()> m_duringCalculation = [] {};
    CStringArray m_calculations;
    std::function<void()> m_duringNetDisk = [] {};
    CStringArray m_netDisks;
    CWnd* m_frame = nullptr;
};

} // namespace test
