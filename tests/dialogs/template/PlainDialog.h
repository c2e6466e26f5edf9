#pragma once

#include "dialogs/template/TemplateDialog.h"

namespace test {

/// A dialog without behaviour of its own, its inside open to tests.
class PlainDialog : public dialogs::TemplateDialog
{
public:
    using TemplateDialog::AddDlgItem;
    using TemplateDialog::EndDialog;
    using TemplateDialog::On;
    using TemplateDialog::TemplateDialog;
};

} // namespace test
