#include "editor/messages/ErrorBox.h"

#include "editor/messages/Boxes.h"
#include "platform/Messages.h"
#include "widgets/Guard.h"

namespace editor {

void ShowError(const std::exception& error)
{
    platform::Show({platform::MessageKind::Warning, CString::fromUtf8(error.what()), ProgramName()});
}

bool RunGuarded(const std::function<void()>& step)
{
    return widgets::RunGuarded(step, ProgramName());
}

} // namespace editor
