#include "editor/messages/Guard.h"

#include "editor/messages/Boxes.h"
#include "platform/Messages.h"

namespace editor {

void ShowError(const std::exception& error)
{
    platform::Show({platform::MessageKind::Warning, CString::fromUtf8(error.what()), ProgramName()});
}

bool RunGuarded(const std::function<void()>& step)
{
    try {
        step();
        return true;
    } catch (const std::exception& error) {
        ShowError(error);
        return false;
    }
}

} // namespace editor
