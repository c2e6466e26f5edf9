#include "house/Sources.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace house {

Source ReadSource(const QString& path, const QString& text)
{
    static const QRegularExpression include(u"^[ \\t]*#[ \\t]*include[ \\t]*([\"<])([^\">]+)[\">]"_s,
                                            QRegularExpression::MultilineOption);
    Source source{path, {}, {}};
    for (auto found = include.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        (match.captured(1) == u"<" ? source.bracketed : source.quoted) += match.captured(2);
    }
    return source;
}

QList<Source> SourcesIn(const QString& top, const QStringList& folders)
{
    QList<Source> sources;
    const QDir tree(top);
    for (const QString& folder : folders) {
        QDirIterator walk(tree.filePath(folder), {u"*.h"_s, u"*.cpp"_s}, QDir::Files,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            QFile file(walk.next());
            if (!file.open(QIODevice::ReadOnly))
                throw std::runtime_error("cannot read " + file.fileName().toStdString());
            sources += ReadSource(tree.relativeFilePath(file.fileName()), QString::fromUtf8(file.readAll()));
        }
    }
    std::sort(sources.begin(), sources.end(),
              [](const Source& left, const Source& right) { return left.path < right.path; });
    return sources;
}

} // namespace house
