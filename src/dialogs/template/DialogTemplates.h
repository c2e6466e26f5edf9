#pragma once

#include "dialogs/template/DialogTemplate.h"

#include <array>

/// The tables of all dialogs. They live as long as the program.
namespace dialogs::templates {

/// Rules of a specialty: `CAutoConfigDlg` and its wizard form.
const DialogTemplate& AutoConfig();
/// Name of a rule file: `DlgSaveAs`.
const DialogTemplate& SaveAs();
/// Number of a bill item: `CDlgGetQdNum`.
const DialogTemplate& GetQdNum();

/// All of them.
std::array<const DialogTemplate*, 3> All();

} // namespace dialogs::templates
