#include "support/StrictXml.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace test {

namespace {

struct Deleter
{
    void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
    void operator()(xmlChar* text) const { xmlFree(text); }
};

using DocumentPtr = std::unique_ptr<xmlDoc, Deleter>;

CString ToText(const xmlChar* text)
{
    return CString::fromUtf8(reinterpret_cast<const char*>(text));
}

/// Null, with a reason, when the bytes are no document.
DocumentPtr Parse(const QByteArray& bytes, CString& reason)
{
    if (bytes.size() > std::numeric_limits<int>::max()) {
        reason = u"too large for this parser"_s;
        return nullptr;
    }
    const std::unique_ptr<xmlParserCtxt, Deleter> context(xmlNewParserCtxt());
    constexpr int options = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    DocumentPtr document(xmlCtxtReadMemory(context.get(), bytes.constData(), static_cast<int>(bytes.size()),
                                           nullptr, nullptr, options));
    if (document) return document;
    const xmlError* error = xmlCtxtGetLastError(context.get());
    reason = error == nullptr
                 ? u"no document"_s
                 : u"line %1: %2"_s.arg(error->line).arg(QString::fromUtf8(error->message).trimmed());
    return nullptr;
}

CString DescribeElement(xmlNode* node)
{
    CString line = u"<"_s + ToText(node->name);
    for (const xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
        const std::unique_ptr<xmlChar, Deleter> value(
            xmlNodeListGetString(node->doc, attribute->children, 1));
        line += u' ' + ToText(attribute->name) + u"=\""_s + ToText(value.get()) + u'"';
    }
    return line + u'>';
}

/// One line for a node, empty for blank text.
CString Describe(xmlNode* node)
{
    switch (node->type) {
    case XML_ELEMENT_NODE:
        return DescribeElement(node);
    case XML_TEXT_NODE:
        return xmlIsBlankNode(node) ? CString() : u"text "_s + ToText(node->content);
    case XML_CDATA_SECTION_NODE:
        return u"cdata "_s + ToText(node->content);
    case XML_COMMENT_NODE:
        return u"comment "_s + ToText(node->content);
    case XML_PI_NODE:
        return u"instruction "_s + ToText(node->name) + u' ' + ToText(node->content);
    default:
        return u"node of kind %1"_s.arg(static_cast<int>(node->type));
    }
}

/// The node behind `node` in document order, keeping count of the depth; null behind the last one.
xmlNode* Following(xmlNode* node, int& depth)
{
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
        ++depth;
        return node->children;
    }
    while (node->next == nullptr) {
        if (depth-- == 0) return nullptr;
        node = node->parent;
    }
    return node->next;
}

} // namespace

::testing::AssertionResult IsStrictXml(const QByteArray& bytes)
{
    CString reason;
    if (Parse(bytes, reason)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << reason.toStdString();
}

CString CanonicalXml(const QByteArray& bytes)
{
    CString reason;
    const DocumentPtr document = Parse(bytes, reason);
    if (!document) return u"not XML: "_s + reason;
    CString result;
    int depth = 0;
    for (xmlNode* node = document->children; node != nullptr; node = Following(node, depth)) {
        const int indent = depth;
        const CString line = Describe(node);
        if (!line.isEmpty()) result += CString(indent, u' ') + line + u'\n';
    }
    return result;
}

} // namespace test
