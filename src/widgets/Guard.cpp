#include "widgets/Guard.h"

#include "platform/Messages.h"

#include <exception>

using namespace Qt::StringLiterals;

namespace widgets {

bool RunGuarded(const std::function<void()>& step, const CString& caption)
{
    CString failure;
    try {
        step();
        return true;
    } catch (const std::exception& error) {
        failure = CString::fromUtf8(error.what());
    } catch (...) {
        // What a host raises need not be of the standard's kind.
        failure = u"操作没有完成，原因不明"_s;
    }
    platform::Show({platform::MessageKind::Warning, failure, caption});
    return false;
}

} // namespace widgets
