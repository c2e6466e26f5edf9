#pragma once

#include "dialogs/AutoConfigFixture.h"
#include "dialogs/secondary/wizard/COnlineAutoConfigDlg.h"

namespace test::autoconfig {

/// What the wizard form is opened with.
struct WizardArguments
{
    CString configFile;
    CString billFile = u"示例清单.mdb"_s;
    CString quotaFile = u"示例定额.mdb"_s;
    CString note = u"请按当地定额核对"_s;
    bool allowBack = true;
};

/// The wizard form over the in-memory host, with a user in front of it.
class OnlineAutoConfigTest : public AutoConfigTest
{
protected:
    void OpenWizard(const WizardArguments& arguments = {});
    /// Opens the wizard on a rule with a bill item.
    void OpenOnABill();
    /// Types into the name of the bill item, without ending the edit.
    void EditName(const CString& name);

    void Click(ControlId id) { test::Click(*m_wizard, id); }
    /// Presses a key where the focus is.
    void Strike(Qt::Key key);
    bool Shows(ControlId id) const { return m_wizard->GetDlgItem(id)->isVisible(); }
    CString Text(ControlId id) const { return m_wizard->ItemText(id); }

    /// The name of the bill item in the grid and in the file.
    CString ShownName() const;
    CString SavedName() const;

    std::unique_ptr<COnlineAutoConfigDlg> m_wizard;

private:
    MyGridCtrl& WizardGrid() const { return m_wizard->Item<MyGridCtrl>(ControlId::Grid); }

    int m_ruleId = 0;
};

} // namespace test::autoconfig
