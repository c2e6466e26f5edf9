#pragma once

#include "platform/Export.h"
#include "platform/Messages.h"
#include "platform/Window.h"

#include <memory>

class QMessageBox;

namespace dialogs {

/// The box of a message, not yet shown.
KTQDDE_EXPORT std::unique_ptr<QMessageBox> MakeMessageBox(const platform::Message& message, CWnd* owner);

/// Shows a message in its box: modal for the whole program, raised to the front, owned by the active window
/// if the message asks for an owner and there is one. A question has Yes and No, with No as the default and
/// the answer of Escape and the close box.
KTQDDE_EXPORT platform::Answer ShowMessageBox(const platform::Message& message);

/// While it lives, messages to the user are shown by `ShowMessageBox`. A program with windows makes one in
/// `main()`, after the application object.
class KTQDDE_EXPORT MessageBoxes
{
public:
    MessageBoxes();

private:
    platform::ScopedMessageHandler m_handler;
};

} // namespace dialogs
