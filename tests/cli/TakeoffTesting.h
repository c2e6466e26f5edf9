#pragma once

#include <QtCore/QString>

/// Take-off tables of the tests: their usual heading, and the category of their components.
namespace test {

inline const QString Head =
    QStringLiteral("构件编号,具体构件,类别,材质,公称直径,水平管长度,立管长度,连接方式\n");
inline const QString Pipe = QStringLiteral("给排水\\管道\\给水管");

} // namespace test
