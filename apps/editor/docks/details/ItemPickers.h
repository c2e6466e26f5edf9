#pragma once

#include "host/NvQdDeMng.h"
#include "platform/Text.h"
#include "platform/Window.h"

#include <optional>
#include <vector>

namespace rules {
struct Rule;
}

namespace editor {

/// The host's windows in which a person picks items of the libraries: one for bill items and their quota
/// items in bill mode, one for quota items in quota mode. Made when they are first shown.
class ItemPickers
{
public:
    /// `receiver` gets what is picked, as `host::UserMessage`s; it outlives this.
    explicit ItemPickers(CWnd& receiver) : m_receiver(receiver) {}

    /// Shows the picker of the mode beside the window of the receiver, or where there is no room over that
    /// but beside the receiver, whose items stay to be seen, with its lists loaded anew and turned to the
    /// chapter of the category. One that is up already stays as it is.
    void Show(bool isBillMode, const CString& category);
    /// Turns a picker that is up to another category.
    void Follow(const CString& category);
    /// Drops the windows, as when the project with its libraries goes.
    void Forget();

private:
    CWnd& m_receiver;
    std::optional<NvQdDeMng::CSelQdDeDlg> m_bills;
    std::optional<NvQdDeMng::CSelDeDlg> m_quotas;
    CString m_category;
};

/// Asks for the number under which a picked bill item comes into the rules; nothing when the user cancels.
std::optional<CString> AskForBillNumber(const CString& picked, const std::vector<const rules::Rule*>& rules,
                                        CWnd* parent);

} // namespace editor
