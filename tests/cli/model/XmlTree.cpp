#include "cli/model/XmlTree.h"

#include <QtCore/QXmlStreamReader>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace test {

namespace {

void ReadChildren(QXmlStreamReader& reader, XmlTree& parent)
{
    for (;;) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            XmlTree child;
            child.name = reader.qualifiedName().toString();
            for (const QXmlStreamAttribute& attribute : reader.attributes())
                child.attributes.append({attribute.qualifiedName().toString(), attribute.value().toString()});
            ReadChildren(reader, child);
            parent.children.append(child);
            break;
        }
        case QXmlStreamReader::Comment:
            parent.children.append(XmlTree{});
            break;
        case QXmlStreamReader::EndElement:
        case QXmlStreamReader::EndDocument:
        case QXmlStreamReader::Invalid:
            return;
        default:
            break;
        }
    }
}

} // namespace

QString XmlTree::Attribute(const QString& key) const
{
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& entry) { return entry.first == key; });
    return found == attributes.end() ? QString() : found->second;
}

void XmlTree::SetAttribute(const QString& key, const QString& value)
{
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& entry) { return entry.first == key; });
    if (found == attributes.end()) {
        attributes.append({key, value});
    } else {
        found->second = value;
    }
}

XmlTree* XmlTree::Child(const QString& childName)
{
    const auto found = std::find_if(children.begin(), children.end(),
                                    [&](const XmlTree& child) { return child.name == childName; });
    return found == children.end() ? nullptr : &*found;
}

XmlTree& XmlTree::Append(const QString& childName)
{
    XmlTree child;
    child.name = childName;
    children.append(child);
    return children.last();
}

QString XmlTree::ToText(int depth) const
{
    QString text(depth, u' ');
    text += name.isEmpty() ? u"(comment)"_s : name;
    for (const auto& [key, value] : attributes)
        text += u" %1=[%2]"_s.arg(key, value);
    text += u'\n';
    for (const XmlTree& child : children)
        text += child.ToText(depth + 1);
    return text;
}

XmlTree ParseXml(const QByteArray& bytes)
{
    QXmlStreamReader reader(bytes);
    XmlTree document;
    ReadChildren(reader, document);
    if (reader.hasError()) return {};
    document.children.removeIf([](const XmlTree& child) { return child.name.isEmpty(); });
    return document.children.value(0);
}

} // namespace test
