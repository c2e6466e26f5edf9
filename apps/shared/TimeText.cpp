#include "shared/TimeText.h"

#include <QtCore/QDateTime>

using namespace Qt::StringLiterals;

namespace shared {

CString TimeText(const QDateTime& time)
{
    return time.toLocalTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
}

} // namespace shared
