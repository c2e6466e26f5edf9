#pragma once

#include "platform/Encoding.h"
#include "xml/Dom.h"
#include "xml/NamePool.h"
#include "xml/Scanner.h"
#include "xml/TextPool.h"
#include "xml/Writer.h"

#include <QtCore/QByteArray>

#include <pugixml.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
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
    DocumentData() = default;
    DocumentData(const DocumentData&) = delete;
    DocumentData& operator=(const DocumentData&) = delete;

    /// Empties the document, then fills it from a file's bytes. Throws `Refusal`; the document is then empty.
    void Load(const QByteArray& bytes);
    void Clear();
    QByteArray ToBytes();
    /// Bytes of the text that was loaded.
    qint64 SourceSize() const { return m_source.utf8.size(); }

    pugi::xml_node DocumentNode();
    /// The document element; null when there is none. Comments and instructions may stand around it.
    pugi::xml_node RootElement();
    /// A new element in limbo.
    pugi::xml_node MakeElement(const char* name);
    /// The first element that an empty document is asked for is only noted: most such documents exist to make
    /// one element that is appended elsewhere at once, and need no tree of their own for it.
    bool CanNote() const { return !m_document && m_noted.empty(); }
    /// Whether nothing but its name is known of the noted element.
    bool IsOnlyNoted() const { return !m_notedNode; }
    void NoteElement(const char* name) { m_noted = name; }
    /// What a handle to the noted element holds in place of a node.
    void* NotedKey() { return &m_noted; }
    const char* NotedName() const { return m_noted.c_str(); }
    /// The noted element as a node in limbo, made when it is first asked for.
    pugi::xml_node NotedElement();
    /// The attribute of that name; null when there is none. Asking in the order of the file finds each at
    /// once.
    pugi::xml_attribute FindAttribute(pugi::xml_node element, const KnownName& name);
    /// What is to be known of the name of an attribute. Good until the next one is asked for.
    const KnownName& NameOf(const CString& name) { return m_names.Find(name); }
    /// The value of an attribute.
    CString ValueOf(pugi::xml_attribute attribute) { return m_texts.Text(attribute.value()); }
    /// The name of an element; empty for a node that has none.
    CString TagOf(pugi::xml_node node) { return m_texts.Text(node.name()); }
    /// The attribute of that name, made behind the others when there is none. On an element that has just
    /// been made most names need no search.
    pugi::xml_attribute AttributeToSet(pugi::xml_node element, const KnownName& name);
    /// Where a node went that was appended to another document.
    struct Place
    {
        std::weak_ptr<DocumentData> document;
        void* node = nullptr;
    };
    /// Remembers that `from`, and all below it, went to another document, where it is `to` now: the handles
    /// follow. `key` is what the handle holds that was given.
    void MovedAway(void* key, pugi::xml_node from, pugi::xml_node to,
                   const std::weak_ptr<DocumentData>& target);
    /// The same for the noted element, of which nothing has been made here.
    void NotedMovedAway(pugi::xml_node to, const std::weak_ptr<DocumentData>& target)
    {
        m_notedPlace = {target, to.internal_object()};
    }
    /// Where the node went that a handle holds; null when it is still here, or the other document is no more.
    const Place* PlaceOf(const void* key) const
    {
        const Place* place = &m_notedPlace;
        if (key != &m_noted) {
            if (m_places.empty()) return nullptr;
            const auto found = m_places.find(key);
            if (found == m_places.end()) return nullptr;
            place = &found->second;
        }
        return place->document.expired() ? nullptr : place;
    }
    /// Puts a node into limbo. Content that nobody has looked into is dropped with it.
    void Release(pugi::xml_node node);
    /// Parses the content of an outlined child, if this is one.
    void EnsureLoaded(pugi::xml_node node);
    /// Parses the content of all outlined children at or below a node.
    void EnsureWhole(pugi::xml_node node);
    /// To be called before the children or the attributes of a node change: its source bytes no longer tell.
    void TouchContent(pugi::xml_node node);
    void TouchTag(pugi::xml_node node);
    /// Remembers that a node has just been placed where everything is touched already.
    void Touched(pugi::xml_node node) { m_touched = node; }
    /// Remembers an element that has no attributes yet.
    void MadeBare(pugi::xml_node element)
    {
        m_bareElement = element;
        m_bareNames = 0;
    }
    /// Whether a node has no siblings to be walked to: it stands nowhere, or around the document element.
    bool StandsAlone(pugi::xml_node node) const
    {
        return node.parent() == m_limbo || node.parent() == m_document;
    }

    /// Where the document came from, be it taken or refused, so that a save that fails midway can put it
    /// back.
    void Remember(const CString& path, const QByteArray& bytes)
    {
        m_loadedPath = path;
        m_loadedBytes = bytes;
    }
    const CString& LoadedPath() const { return m_loadedPath; }
    const QByteArray& LoadedBytes() const { return m_loadedBytes; }

    LoadReason reason;

private:
    struct Outlined
    {
        std::size_t index;
        bool loaded;          ///< its content is in the tree
        bool touched = false; ///< its source bytes no longer tell
    };

    void ScanAndBuild();
    void Locate(const Refusal& refusal);
    void BuildOutlinedTree();
    QByteArray Skeleton() const;
    Layout SourceLayout() const;
    void WriteLoaded(Output& out);
    void WriteChildren(Output& out, const Layout& layout);
    bool FollowsForeignText(pugi::xml_node child, std::size_t index) const;
    bool EndsInForeignText() const;
    std::optional<std::size_t> SourceIndex(pugi::xml_node child) const;
    void WriteNew(Output& out);
    void PutSource(Output& out, std::size_t begin, std::size_t end) const;
    QByteArray SourceBytes(std::size_t begin, std::size_t end) const;
    std::size_t GapBegin(std::size_t childIndex) const;
    Outlined* FindOutlined(pugi::xml_node node);

    void EnsureTree();

    std::optional<pugi::xml_document> m_tree; ///< none until a node is made
    pugi::xml_node m_document;
    pugi::xml_node m_limbo;
    CString m_loadedPath;
    QByteArray m_loadedBytes; ///< shares its memory with the source text of a UTF-8 file
    SourceText m_source;
    Outline m_outline;
    pugi::xml_node m_loadedRoot;   ///< the document element as loaded; null for a new document
    pugi::xml_node m_touched;      ///< a node known to stand where source bytes no longer tell
    pugi::xml_node m_bareElement;  ///< all its attributes came through `AttributeToSet`
    std::uint64_t m_bareNames = 0; ///< a bit for each of their names; names of different bits differ
    std::string m_noted;           ///< short as most names are, it needs no memory of its own
    pugi::xml_node m_notedNode;
    Place m_notedPlace;
    std::unordered_map<const void*, Place> m_places; ///< of nodes that were appended to other documents
    bool m_rootTagTouched = false;
    pugi::xml_node m_askedElement;       ///< the element of the last attribute asked for
    pugi::xml_attribute m_nextAttribute; ///< the one behind it: where the next search begins
    NamePool m_names;                    ///< of attributes
    TextPool m_texts;                    ///< of attribute values and names of elements
    std::unordered_map<const void*, Outlined>
        m_outlined; ///< the children that came from the source, by their node
};

/// From handles to what stands behind them; the one friend of the handles.
struct Access
{
    /// The engine's node behind a handle. A document handle holds its data in place of a node, since a load
    /// replaces all nodes and such a handle stays good.
    static pugi::xml_node Get(const Node& node)
    {
        if (node.IsNull()) return {};
        if (node.m_node == node.m_document.get()) return node.m_document->DocumentNode();
        if (IsNoted(node)) return node.m_document->NotedElement();
        return pugi::xml_node(static_cast<pugi::xml_node_struct*>(node.m_node));
    }
    /// Whether the node has gone to another document, and the handle to it there, if that still stands.
    static bool HasMoved(const Node& node)
    {
        return !node.IsNull() && node.m_document->PlaceOf(node.m_node) != nullptr;
    }
    static Node Follow(const Node& node);
    /// What a handle holds in place of a node.
    static void* Key(const Node& node) { return node.m_node; }
    /// Whether the handle is that of an element that has only been noted.
    static bool IsNoted(const Node& node)
    {
        return !node.IsNull() && node.m_node == node.m_document->NotedKey();
    }
    static const std::shared_ptr<DocumentData>& Data(const Node& node) { return node.m_document; }
    static Node MakeNode(const std::shared_ptr<DocumentData>& data, pugi::xml_node node);
    static Element MakeElement(const std::shared_ptr<DocumentData>& data, pugi::xml_node node);
    static Element MakeNoted(const std::shared_ptr<DocumentData>& data);
    static Document MakeDocument(const std::shared_ptr<DocumentData>& data);
    /// Throws `PointerError` for a null handle.
    static void CheckNotNull(const Node& node, QStringView operation);
    /// The node behind a handle; throws `PointerError` for a null one.
    static pugi::xml_node Require(const Node& node, QStringView operation);
};

} // namespace xml::detail
