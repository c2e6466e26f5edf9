#include "presenter/RefreshAutoConfig.h"

#include "presenter/CQdDeConfigPresenter.h"

using namespace Qt::StringLiterals;

bool RefreshAutoConfig(CString& message, const CString& filePath)
{
    const bool taken = CQdDeConfigPresenter(CString()).ReLoad(filePath);
    if (!taken) message = u"文件功能不匹配"_s;
    return taken;
}
