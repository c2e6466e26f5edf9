#include "editor/files/KeepFirstQuestion.h"

#include "editor/messages/Boxes.h"
#include "platform/Paths.h"

using namespace Qt::StringLiterals;

namespace editor {

bool AskToKeepFirst(Project& project, const shared::RuleFileState& state)
{
    if (!AskYesNo(u"%1\n%2；保存以后读到的会是另一段\n文件先留一份历史副本，然后只留第一段"_s.arg(
            platform::ToNative(state.path), state.Describe())))
        return false;
    const auto lock = project.Lock(state.path);
    if (!project.KeepCopy(state.path)) return false;
    shared::KeepFirstSpecialties(state.path);
    return true;
}

} // namespace editor
