#pragma once

#include "platform/Export.h"
#include "platform/Text.h"
#include "xml/Error.h"

#include <QtCore/QByteArray>

#include <memory>

/// XML documents as small value handles. A handle shares ownership of its document, so a document lives as
/// long as any handle into it. A null handle is legal: it can be copied, compared, converted and asked for
/// its kind; using it for anything else raises `PointerError`.
///
/// A loaded document remembers its source: children of the document element that nobody touched are saved
/// byte for byte. Single threaded.
namespace xml {

class Document;
class Element;
class Node;

namespace detail {
class DocumentData;
struct Access;
} // namespace detail

enum class NodeKind { Null, Document, Element, Text, CData, Comment, ProcessingInstruction };

/// A node of a document, or null.
class KTQDDE_EXPORT Node
{
public:
    Node() noexcept = default;

    bool IsNull() const noexcept { return m_node == nullptr; }
    explicit operator bool() const noexcept { return !IsNull(); }
    /// Whether both name the same node (or are both null).
    bool operator==(const Node& other) const;

    /// `Null` for a null handle.
    NodeKind Kind() const;
    /// The tag of an element, the target of a processing instruction; empty for every other kind. Raises on a
    /// null handle.
    CString Name() const;
    /// The node as an element; a null element for a null handle and for every other kind. Never raises.
    Element ToElement() const&;
    Element ToElement() &&;

    /// First child and next sibling in document order, null when there is none. Elements, comments,
    /// processing instructions, CDATA and text that is not blank are nodes; blank text is not. The child of a
    /// document is its document element; what stands around that is kept and not walked. Raise on a null
    /// handle.
    Node FirstChild() const;
    Node NextSibling() const;
    /// The first child element of exactly that name, null when there is none. Raises on a null handle.
    Node SelectSingleNode(const CString& name) const;

    /// Appends `child` as last child and gives a handle to it. A node that stands elsewhere is moved, with
    /// all below it, from another document, too; the handles to it and to what is below follow it there. A
    /// document takes one element, and comments and instructions behind what it has. Raises `PointerError`
    /// when either handle is null and `Error` when the place cannot take it (a child of a text, a second
    /// document element, text beside the document element, a node below itself).
    Node AppendChild(const Node& child) const;
    /// Takes `child` and all below it out of this node. A handle to it then names an element that stands
    /// nowhere, and may have lost its content. Raises `PointerError` when either is null and `Error` when
    /// `child` is no child of this node.
    void RemoveChild(const Node& child) const;

protected:
    friend struct detail::Access;
    Node(std::shared_ptr<detail::DocumentData> document, void* node) noexcept
        : m_document(std::move(document)), m_node(node)
    {
    }
    std::shared_ptr<detail::DocumentData> m_document;
    void* m_node = nullptr;
};

/// An element, or null.
class KTQDDE_EXPORT Element : public Node
{
public:
    Element() noexcept = default;

    /// The value of an attribute; false, with `value` left alone, when there is none. Raises on a null
    /// handle.
    bool GetAttribute(const CString& name, CString& value) const;
    /// Sets an attribute: a new one goes behind the others, an existing one keeps its place. Raises
    /// `PointerError` on a null handle and `Error` for an invalid name or a character that XML 1.0 forbids;
    /// nothing has changed then.
    void SetAttribute(const CString& name, const CString& value) const;

private:
    friend struct detail::Access;
    using Node::Node;
};

/// Why a document was refused.
struct KTQDDE_EXPORT LoadReason
{
    int line = 0;   ///< one-based; 0 when the place is not known (the file could not be read)
    int column = 0; ///< one-based, in characters
    CString text;   ///< in words

    /// "line 3, column 7: ..." or the words alone.
    CString ToString() const;
};

/// A document, or null.
class KTQDDE_EXPORT Document : public Node
{
public:
    Document() noexcept = default;

    /// A new empty document; null when no engine can be had (no memory, or see `SetEngineAvailable`).
    static Document Create();

    /// Replaces the content by that of a file. False when it cannot be read or is refused; the document is
    /// then empty and `Reason()` says why. Never raises for what a file holds. Handles into the former
    /// content become invalid. Refused are: bytes that do not decode, any DOCTYPE, not exactly one document
    /// element, text outside it, duplicate attributes, invalid names, undefined entities and characters that
    /// XML 1.0 forbids. The encoding is that of a byte order mark, else of the declaration (UTF-8, UTF-16,
    /// GB2312, GBK, GB18030), else UTF-8.
    bool Load(const CString& path) const;
    /// The same for bytes in memory.
    bool LoadBytes(const QByteArray& bytes) const;
    /// Why the last load was refused.
    LoadReason Reason() const;

    /// A new element that belongs to this document but stands nowhere yet. Raises `Error` for an invalid
    /// name.
    Element CreateElement(const CString& name) const;

    /// The document as bytes in its encoding (UTF-8 for a new one): well-formed, one element on a line,
    /// ending with a line end. What was loaded and not touched comes back byte for byte.
    QByteArray ToBytes() const;
    /// Writes `ToBytes()` over `path` in place (see `platform::FileSystem::WriteInPlace`). Raises `Error`
    /// naming file and reason when that fails.
    void Save(const CString& path) const;

private:
    friend struct detail::Access;
    using Node::Node;
};

/// Whether `name` can be the name of an element or attribute (XML 1.0, without regard to namespaces).
KTQDDE_EXPORT bool IsName(const CString& name);

/// Whether every character of `text` may stand in an XML 1.0 file. Unpaired surrogates may not.
KTQDDE_EXPORT bool IsText(const CString& text);

/// For tests of callers: while false, `Document::Create()` gives null, as on a machine without an XML engine.
KTQDDE_EXPORT void SetEngineAvailable(bool available) noexcept;

} // namespace xml

/// The handles under the names by which the module's operations take them.
using IXMLDOMNode = xml::Node;
using IXMLDOMElement = xml::Element;
using IXMLDOMDocument = xml::Document;
