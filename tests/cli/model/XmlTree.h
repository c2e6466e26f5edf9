#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

#include <utility>

namespace test {

/// An XML element or comment as plain data, read by a parser that shares nothing with the program's.
struct XmlTree
{
    QString name; ///< empty for a comment
    QList<std::pair<QString, QString>> attributes;
    QList<XmlTree> children;

    bool operator==(const XmlTree& other) const = default;

    /// The value of an attribute, empty when there is none.
    QString Attribute(const QString& key) const;
    /// Sets an attribute; an existing one keeps its place.
    void SetAttribute(const QString& key, const QString& value);
    /// The first child element of that name, or null.
    XmlTree* Child(const QString& childName);
    XmlTree& Append(const QString& childName);

    /// One node a line, for failure messages.
    QString ToText(int depth = 0) const;
};

/// The document element of a file; an empty tree when the bytes are no XML. Comments outside of it are left
/// out.
XmlTree ParseXml(const QByteArray& bytes);

} // namespace test
