#include "xml/DocumentData.h"

#include <new>
#include <utility>

namespace xml::detail {

namespace {

constexpr unsigned ParseOptions = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi |
                                  pugi::parse_escapes | pugi::parse_wconv_attribute | pugi::parse_eol |
                                  pugi::parse_fragment;

constexpr std::string_view Mark = "\xEF\xBB\xBF";

void Parse(pugi::xml_node parent, const char* bytes, std::size_t size)
{
    // The parser takes one mark off whatever it is given, but here it is a character of a text.
    QByteArray marked;
    if (std::string_view(bytes, size).substr(0, Mark.size()) == Mark) {
        marked.append(Mark.data(), static_cast<qsizetype>(Mark.size()));
        marked.append(bytes, static_cast<qsizetype>(size));
        bytes = marked.constData();
        size = static_cast<std::size_t>(marked.size());
    }
    // The scanner has passed every byte, so only memory can be missing.
    if (!parent.append_buffer(bytes, size, ParseOptions, pugi::encoding_utf8)) throw std::bad_alloc();
}

} // namespace

void DocumentData::EnsureTree()
{
    if (m_document) return;
    m_tree.emplace();
    m_document = m_tree->append_child(pugi::node_element);
    m_limbo = m_tree->append_child(pugi::node_element);
}

pugi::xml_node DocumentData::DocumentNode()
{
    EnsureTree();
    return m_document;
}

pugi::xml_node DocumentData::RootElement()
{
    for (const pugi::xml_node child : DocumentNode())
        if (child.type() == pugi::node_element) return child;
    return {};
}

void DocumentData::Clear()
{
    m_loadedPath.clear();
    m_loadedBytes.clear();
    m_outlined.clear();
    m_loadedRoot = {};
    m_rootTagTouched = false;
    m_askedElement = {};
    m_nextAttribute = pugi::xml_attribute();
    m_texts = {};
    m_outline = {};
    m_source = {};
    m_touched = {};
    m_bareElement = {};
    m_noted.clear();
    m_notedNode = {};
    m_notedPlace = {};
    m_places.clear();
    m_tree.reset();
    m_document = {};
    m_limbo = {};
}

void DocumentData::Load(const QByteArray& bytes)
{
    Clear();
    reason = {};
    try {
        m_source = DecodeSource(bytes);
        ScanAndBuild();
    } catch (...) {
        Clear();
        throw;
    }
}

void DocumentData::ScanAndBuild()
{
    try {
        m_outline = Scanner(m_source.utf8).ScanDocument();
    } catch (const Refusal& refusal) {
        Locate(refusal);
        throw;
    }
    BuildOutlinedTree();
}

void DocumentData::Locate(const Refusal& refusal)
{
    const QByteArray before = m_source.utf8.left(static_cast<qsizetype>(refusal.offset));
    const qsizetype lineBegin = before.lastIndexOf('\n') + 1;
    reason.line = static_cast<int>(before.count('\n')) + 1;
    reason.column = static_cast<int>(CString::fromUtf8(before.mid(lineBegin)).size()) + 1;
}

/// The document element with the start tags of its children: the others' content waits for `EnsureLoaded`.
void DocumentData::BuildOutlinedTree()
{
    EnsureTree();
    const QByteArray skeleton = Skeleton();
    Parse(m_document, skeleton.constData(), static_cast<std::size_t>(skeleton.size()));
    m_loadedRoot = m_document.first_child();
    std::size_t index = 0;
    for (const pugi::xml_node child : m_loadedRoot) {
        const ChildOutline& outline = m_outline.children.at(index);
        m_outlined.emplace(child.internal_object(),
                           Outlined{index, outline.contentBegin == outline.contentEnd});
        ++index;
    }
}

QByteArray DocumentData::Skeleton() const
{
    QByteArray skeleton = SourceBytes(m_outline.rootBegin, m_outline.rootTagEnd);
    for (const ChildOutline& child : m_outline.children) {
        const bool hasContent = child.contentBegin != child.contentEnd;
        skeleton += hasContent ? SourceBytes(child.begin, child.contentBegin - 1) + "/>"
                               : SourceBytes(child.begin, child.end);
    }
    return skeleton + SourceBytes(m_outline.rootContentEnd, m_outline.rootEnd);
}

pugi::xml_attribute DocumentData::FindAttribute(pugi::xml_node element, const KnownName& name)
{
    if (element != m_askedElement) m_nextAttribute = element.first_attribute();
    m_askedElement = element;
    return std::as_const(element).attribute(name.utf8.constData(), m_nextAttribute);
}

pugi::xml_attribute DocumentData::AttributeToSet(pugi::xml_node element, const KnownName& name)
{
    const char* const bytes = name.utf8.constData();
    if (element == m_bareElement) {
        const bool isNew = (m_bareNames & name.bit) == 0;
        m_bareNames |= name.bit;
        if (isNew) return element.append_attribute(bytes);
    }
    const pugi::xml_attribute attribute = element.attribute(bytes);
    return attribute ? attribute : element.append_attribute(bytes);
}

pugi::xml_node DocumentData::MakeElement(const char* name)
{
    EnsureTree();
    return m_limbo.append_child(name);
}

pugi::xml_node DocumentData::NotedElement()
{
    if (!m_notedNode) m_notedNode = MakeElement(NotedName());
    return m_notedNode;
}

void DocumentData::MovedAway(void* key, pugi::xml_node from, pugi::xml_node to,
                             const std::weak_ptr<DocumentData>& target)
{
    if (key == NotedKey()) NotedMovedAway(to, target);
    const pugi::xml_node top = from;
    for (;;) {
        m_places[from.internal_object()] = {target, to.internal_object()};
        if (from.first_child()) {
            from = from.first_child();
            to = to.first_child();
            continue;
        }
        while (from != top && !from.next_sibling()) {
            from = from.parent();
            to = to.parent();
        }
        if (from == top) return;
        from = from.next_sibling();
        to = to.next_sibling();
    }
}

void DocumentData::Release(pugi::xml_node node)
{
    m_outlined.erase(node.internal_object());
    m_limbo.append_move(node);
}

DocumentData::Outlined* DocumentData::FindOutlined(pugi::xml_node node)
{
    if (!m_loadedRoot || node.parent() != m_loadedRoot) return nullptr;
    const auto found = m_outlined.find(node.internal_object());
    return found == m_outlined.end() ? nullptr : &found->second;
}

void DocumentData::EnsureLoaded(pugi::xml_node node)
{
    Outlined* outlined = FindOutlined(node);
    if (outlined == nullptr || outlined->loaded) return;
    const ChildOutline& child = m_outline.children[outlined->index];
    Parse(node, m_source.utf8.constData() + child.contentBegin, child.contentEnd - child.contentBegin);
    outlined->loaded = true;
}

void DocumentData::EnsureWhole(pugi::xml_node node)
{
    EnsureLoaded(node);
    pugi::xml_node above = m_loadedRoot;
    while (above && above != node)
        above = above.parent();
    if (!above) return;
    for (const pugi::xml_node child : m_loadedRoot)
        EnsureLoaded(child);
}

void DocumentData::TouchContent(pugi::xml_node node)
{
    // The parent of a place where source bytes no longer tell is such a place, too, or the document element,
    // where there is nothing to remember: that is where the next of several children goes.
    if (!m_loadedRoot || node == m_touched || node == m_touched.parent()) return;
    // The document element's own list of children is what saving goes by: nothing to remember.
    pugi::xml_node child = node;
    while (child && child.parent() != m_loadedRoot)
        child = child.parent();
    if (!child) return;
    EnsureLoaded(child);
    if (Outlined* outlined = FindOutlined(child)) outlined->touched = true;
    m_touched = node;
}

void DocumentData::TouchTag(pugi::xml_node node)
{
    if (node == m_loadedRoot) m_rootTagTouched = true;
    TouchContent(node);
}

QByteArray DocumentData::ToBytes()
{
    Output out(m_source.utf8.size() + m_source.utf8.size() / 8);
    if (m_loadedRoot && RootElement() == m_loadedRoot)
        WriteLoaded(out);
    else
        WriteNew(out);
    if (!out.EndsWith('\n')) out.Put(SourceLayout().lineEnd);
    return EncodeSource(std::move(out).Take(), m_source);
}

void DocumentData::WriteNew(Output& out)
{
    m_source.encoding = platform::Encoding::Utf8;
    out.Put(std::string_view("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"));
    for (const pugi::xml_node child : DocumentNode()) {
        EnsureWhole(child);
        WriteNode(out, child, 0, Layout());
        WriteBreak(out, 0, Layout());
    }
}

void DocumentData::WriteLoaded(Output& out)
{
    const Layout layout = SourceLayout();
    const bool hasChildren = static_cast<bool>(m_loadedRoot.first_child());
    const bool opensSelfClosing = m_outline.rootSelfClosing && hasChildren;
    PutSource(out, 0, m_outline.rootBegin);
    for (pugi::xml_node before = m_document.first_child(); before != m_loadedRoot;
         before = before.next_sibling()) {
        WriteNode(out, before, 0, layout);
        WriteBreak(out, 0, layout);
    }
    if (m_rootTagTouched || opensSelfClosing)
        WriteStartTag(out, m_loadedRoot, m_outline.rootSelfClosing && !hasChildren);
    else
        PutSource(out, m_outline.rootBegin, m_outline.rootTagEnd);

    WriteChildren(out, layout);
    const QByteArray tail = SourceBytes(GapBegin(m_outline.children.size()), m_outline.rootContentEnd);
    const bool lastIsNew = hasChildren && !m_outlined.contains(m_loadedRoot.last_child().internal_object());
    if (!tail.isEmpty() && !EndsInForeignText())
        out.Put(tail);
    else if (lastIsNew && !HoldsText(m_loadedRoot))
        WriteBreak(out, 0, layout);
    if (opensSelfClosing)
        WriteEndTag(out, m_loadedRoot);
    else
        PutSource(out, m_outline.rootContentEnd, m_outline.rootEnd);
    PutSource(out, m_outline.rootEnd, static_cast<std::size_t>(m_source.utf8.size()));
    for (pugi::xml_node after = m_loadedRoot.next_sibling(); after; after = after.next_sibling()) {
        if (!out.EndsWith('\n')) WriteBreak(out, 0, layout);
        WriteNode(out, after, 0, layout);
    }
}

void DocumentData::WriteChildren(Output& out, const Layout& layout)
{
    // Blanks beside a text would become part of it.
    const bool onOneLine = HoldsText(m_loadedRoot);
    for (const pugi::xml_node child : m_loadedRoot) {
        const auto found = m_outlined.find(child.internal_object());
        if (found == m_outlined.end()) {
            if (!onOneLine) WriteBreak(out, 1, layout);
            WriteNode(out, child, 1, layout);
            continue;
        }
        const std::size_t index = found->second.index;
        const ChildOutline& outline = m_outline.children[index];
        if (!FollowsForeignText(child, index)) PutSource(out, GapBegin(index), outline.begin);
        if (found->second.touched)
            WriteNode(out, child, 1, layout);
        else
            PutSource(out, outline.begin, outline.end);
    }
}

/// The place of a child among those of the source; nothing for a new one.
std::optional<std::size_t> DocumentData::SourceIndex(pugi::xml_node child) const
{
    const auto found = m_outlined.find(child.internal_object());
    return found == m_outlined.end() ? std::nullopt : std::optional(found->second.index);
}

/// Whether a child stands behind a text that did not stand before it in the source: the blanks that did are
/// none of that text's.
bool DocumentData::FollowsForeignText(pugi::xml_node child, std::size_t index) const
{
    const pugi::xml_node before = child.previous_sibling();
    if (!IsCharacterData(before)) return false;
    const std::optional<std::size_t> place = SourceIndex(before);
    return !place || *place + 1 != index;
}

/// The same for the end tag.
bool DocumentData::EndsInForeignText() const
{
    const pugi::xml_node last = m_loadedRoot.last_child();
    if (!IsCharacterData(last)) return false;
    const std::optional<std::size_t> place = SourceIndex(last);
    return !place || *place + 1 != m_outline.children.size();
}

/// Where the blanks in front of a child begin; for the index behind the last child, those in front of the end
/// tag.
std::size_t DocumentData::GapBegin(std::size_t childIndex) const
{
    return childIndex == 0 ? m_outline.rootTagEnd : m_outline.children[childIndex - 1].end;
}

void DocumentData::PutSource(Output& out, std::size_t begin, std::size_t end) const
{
    out.Put(m_source.utf8.constData() + begin, end - begin);
}

QByteArray DocumentData::SourceBytes(std::size_t begin, std::size_t end) const
{
    return QByteArray::fromRawData(m_source.utf8.constData() + begin, static_cast<qsizetype>(end - begin));
}

/// The line end and indent that the source uses, so that what is new looks like what stood there.
Layout DocumentData::SourceLayout() const
{
    Layout layout;
    const QByteArray& text = m_source.utf8;
    const qsizetype firstBreak = text.indexOf('\n');
    if (firstBreak > 0 && text[firstBreak - 1] == '\r') layout.lineEnd = "\r\n";
    if (m_outline.children.empty()) return layout;
    const QByteArray gap = SourceBytes(m_outline.rootTagEnd, m_outline.children.front().begin);
    const qsizetype lastBreak = gap.lastIndexOf('\n');
    const QByteArray indent = gap.mid(lastBreak + 1);
    if (lastBreak >= 0 && !indent.isEmpty()) layout.indent = QByteArray(indent.constData(), indent.size());
    return layout;
}

} // namespace xml::detail
