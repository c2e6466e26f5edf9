#pragma once

#include "platform/Encoding.h"
#include "xml/Dom.h"
#include "xml/Scanner.h"
#include "xml/Writer.h"

#include <QtCore/QByteArray>

#include <pugixml.hpp>

#include <unordered_map>

namespace xml::detail {

/// The bytes of a file as UTF-8 text, and how to get back from one to the other.
struct SourceText
{
    QByteArray utf8; ///< without byte order mark
    platform::Encoding encoding = platform::Encoding::Utf8;
    QByteArray charset; ///< as declared, in capitals; empty when nothing was declared
};

/// Decides the encoding and decodes. Throws `Refusal` for an unknown encoding and for bytes that do not
/// decode; UTF-8 is not checked here, the scanner does.
SourceText DecodeSource(const QByteArray& bytes);

/// The way back. A text that no longer fits its declared GB2312 or GBK is declared as GB18030, which holds
/// everything.
QByteArray EncodeSource(QByteArray utf8, const SourceText& source);

/// What stands behind the handles of one document.
///
/// One tree of the engine holds two branches: the document itself, and a limbo for nodes that stand nowhere
/// (just made, or taken out). So moving a node is relinking, a handle to a removed node stays safe, and no
/// deep subtree is ever destroyed recursively: everything goes at once with the tree's memory.
///
/// After a load the document element's children are only outlined: their start tags are in the tree, their
/// content is parsed when somebody looks into it. As long as nobody changes such a child, saving copies its
/// source bytes.
class DocumentData
{
public:
    DocumentData();
    DocumentData(const DocumentData&) = delete;
    DocumentData& operator=(const DocumentData&) = delete;

    /// Empties the document, then fills it from a file's bytes. Throws `Refusal`; the document is then empty.
    void Load(const QByteArray& bytes);
    void Clear();
    QByteArray ToBytes();

    pugi::xml_node DocumentNode() const { return m_document; }
    /// A new element in limbo.
    pugi::xml_node MakeElement(const char* name);
    /// Puts a node into limbo. Content that nobody has looked into is dropped with it.
    void Release(pugi::xml_node node);
    /// Parses the content of an outlined child, if this is one.
    void EnsureLoaded(pugi::xml_node node);
    /// To be called before the children or the attributes of a node change: its source bytes no longer tell.
    void TouchContent(pugi::xml_node node);
    void TouchTag(pugi::xml_node node);
    /// Whether a node stands nowhere.
    bool InLimbo(pugi::xml_node node) const { return node.parent() == m_limbo; }

    LoadReason reason;

private:
    struct Outlined
    {
        std::size_t index;
        bool loaded;
    };

    void ScanAndBuild();
    void Locate(const Refusal& refusal);
    void BuildOutlinedTree();
    QByteArray Skeleton() const;
    Layout SourceLayout() const;
    void WriteLoaded(QByteArray& out);
    void WriteChildren(QByteArray& out, const Layout& layout);
    void WriteNew(QByteArray& out);
    QByteArray SourceBytes(std::size_t begin, std::size_t end) const;
    std::size_t GapBegin(std::size_t childIndex) const;
    Outlined* FindOutlined(pugi::xml_node node);

    pugi::xml_document m_tree;
    pugi::xml_node m_document;
    pugi::xml_node m_limbo;
    SourceText m_source;
    Outline m_outline;
    pugi::xml_node m_loadedRoot; ///< the document element as loaded; null for a new document
    bool m_rootTagTouched = false;
    std::unordered_map<const void*, Outlined> m_outlined; ///< untouched children by their node
};

/// From handles to what stands behind them; the one friend of the handles.
struct Access
{
    /// The engine's node behind a handle. A document handle holds its data in place of a node, since a load
    /// replaces all nodes and such a handle stays good.
    static pugi::xml_node Get(const Node& node)
    {
        if (node.m_node == node.m_document.get())
            return node.m_document ? node.m_document->DocumentNode() : pugi::xml_node();
        return pugi::xml_node(static_cast<pugi::xml_node_struct*>(node.m_node));
    }
    static const std::shared_ptr<DocumentData>& Data(const Node& node) { return node.m_document; }
    static Node MakeNode(const std::shared_ptr<DocumentData>& data, pugi::xml_node node);
    static Element MakeElement(const std::shared_ptr<DocumentData>& data, pugi::xml_node node);
    static Document MakeDocument(const std::shared_ptr<DocumentData>& data);
    /// The node behind a handle; throws `PointerError` for a null one.
    static pugi::xml_node Require(const Node& node, QStringView operation);
};

} // namespace xml::detail
