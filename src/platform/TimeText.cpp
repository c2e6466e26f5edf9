#include "platform/TimeText.h"

#include <QtCore/QDateTime>

using namespace Qt::StringLiterals;

namespace platform {

CString TimeText(const QDateTime& time)
{
    return time.toLocalTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
}

CString MinuteText(const QDateTime& time)
{
    return time.toLocalTime().toString(u"yyyy-MM-dd HH:mm"_s);
}

CString DayText(const QDateTime& time)
{
    return time.toLocalTime().toString(u"yyyy-MM-dd"_s);
}

} // namespace platform
