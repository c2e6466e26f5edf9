#include "support/SourceTree.h"

QString test::InSourceTree(const QString& path)
{
    return QStringLiteral(KTQDDE_SOURCE_DIR "/") + path;
}
