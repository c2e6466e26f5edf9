#include "host/Roles.h"

// The destructors live here so that each interface has its table in one place.
namespace host {

ICategories::~ICategories() = default;
CellData::~CellData() = default;
IAttributes::~IAttributes() = default;
ILibraries::~ILibraries() = default;
IProject::~IProject() = default;
INvKtAppProfile::~INvKtAppProfile() = default;
ICalculationRules::~ICalculationRules() = default;
IXmlTool::~IXmlTool() = default;
IXmlTools::~IXmlTools() = default;
IPickerWindow::~IPickerWindow() = default;
IBillPicker::~IBillPicker() = default;
IWindows::~IWindows() = default;

} // namespace host
