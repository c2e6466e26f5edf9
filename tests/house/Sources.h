#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace house {

/// A source file and what it includes.
struct Source
{
    QString path;          ///< relative to the top of the tree, with slashes
    QStringList quoted;    ///< the headers in quotes
    QStringList bracketed; ///< those in angle brackets
};

/// The includes of a text, whatever stands around them.
Source ReadSource(const QString& path, const QString& text);

/// The source files below `folders` of the tree at `top`, a native path, in order of their paths. Folders
/// that are not there are passed over. Raises `std::runtime_error` for a file that cannot be read.
QList<Source> SourcesIn(const QString& top, const QStringList& folders);

} // namespace house
