#include "editor/project/ChosenFile.h"

#include "platform/Paths.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace editor {

CString PathTextOf(const QString& nativePath)
{
    if (!platform::HasPathText(nativePath))
        throw std::runtime_error(u"“%1”不能用作文件路径"_s.arg(nativePath).toStdString());
    return platform::FromNative(nativePath);
}

} // namespace editor
