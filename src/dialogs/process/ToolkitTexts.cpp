#include "dialogs/process/ToolkitTexts.h"

#include <QtCore/QTranslator>

using namespace Qt::StringLiterals;

namespace dialogs {

bool LoadToolkitTexts(QTranslator& texts, const QStringList& folders)
{
    for (const QString& folder : folders) {
        // Without a folder the toolkit would look in whatever the current one is.
        if (folder.isEmpty()) continue;
        for (const QString& place : {folder, folder + u"/translations"_s}) {
            for (const QString& name : {u"qtbase_zh_CN"_s, u"qt_zh_CN"_s}) {
                if (texts.load(name, place)) return true;
            }
        }
    }
    return false;
}

} // namespace dialogs
