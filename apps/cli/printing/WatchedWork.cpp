#include "cli/printing/WatchedWork.h"

#include "platform/Console.h"

namespace cli {

using namespace Qt::StringLiterals;

WatchedWork::~WatchedWork()
{
    if (m_shown >= 0) platform::WriteErr(u"\r     \r"_s);
}

embedded::Progress WatchedWork::Progress()
{
    m_isSeen = platform::ErrIsTerminal();
    return [this](int percent) {
        Show(percent);
        return !m_interrupt.HasCome();
    };
}

void WatchedWork::Show(int percent)
{
    if (!m_isSeen || percent == m_shown) return;
    m_shown = percent;
    platform::WriteErr(u"\r%1 %"_s.arg(percent, 3));
}

} // namespace cli
