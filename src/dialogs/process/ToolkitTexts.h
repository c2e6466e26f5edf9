#pragma once

#include <QtCore/QStringList>

class QTranslator;

namespace dialogs {

/// Loads the toolkit's own texts in Chinese from the first of the folders that has them, in itself or in a
/// folder "translations" in it: as "qtbase_zh_CN", the name in the toolkit's installation, or as
/// "qt_zh_CN", the name that a program's setup gives them. False when there are none; empty names of folders
/// are passed over.
bool LoadToolkitTexts(QTranslator& texts, const QStringList& folders);

} // namespace dialogs
