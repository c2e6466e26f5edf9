#include "xml/DocumentData.h"

#include <cstring>
#include <new>
#include <utility>

namespace xml::detail {

namespace {

constexpr unsigned ParseOptions = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi |
                                  pugi::parse_escapes | pugi::parse_wconv_attribute | pugi::parse_eol |
                                  pugi::parse_fragment;

void Parse(pugi::xml_node parent, const char* bytes, std::size_t size)
{
    // The scanner has passed every byte, so only memory can be missing.
    if (!parent.append_buffer(bytes, size, ParseOptions, pugi::encoding_utf8)) throw std::bad_alloc();
}

/// One of 64 bits that equal names share.
std::uint64_t NameBit(const char* name)
{
    const std::size_t length = std::strlen(name);
    const std::size_t key = length * 11 + 3 * static_cast<unsigned char>(name[length / 2]) +
                            static_cast<unsigned char>(name[length - 1]);
    return std::uint64_t{1} << (key % 64);
}

} // namespace

void DocumentData::EnsureTree()
{
    if (m_document) return;
    m_document = m_tree.append_child(pugi::node_element);
    m_limbo = m_tree.append_child(pugi::node_element);
}

pugi::xml_node DocumentData::DocumentNode()
{
    EnsureTree();
    return m_document;
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
    m_outline = {};
    m_source = {};
    m_touched = {};
    m_bareElement = {};
    m_noted.clear();
    m_notedNode = {};
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

pugi::xml_attribute DocumentData::FindAttribute(pugi::xml_node element, const char* name)
{
    if (element != m_askedElement) m_nextAttribute = pugi::xml_attribute();
    m_askedElement = element;
    return std::as_const(element).attribute(name, m_nextAttribute);
}

pugi::xml_attribute DocumentData::AttributeToSet(pugi::xml_node element, const char* name)
{
    if (element == m_bareElement) {
        const std::uint64_t bit = NameBit(name);
        const bool isNew = (m_bareNames & bit) == 0;
        m_bareNames |= bit;
        if (isNew) return element.append_attribute(name);
    }
    const pugi::xml_attribute attribute = element.attribute(name);
    return attribute ? attribute : element.append_attribute(name);
}

pugi::xml_node DocumentData::MakeElement(const char* name)
{
    EnsureTree();
    return m_limbo.append_child(name);
}

pugi::xml_node DocumentData::NotedElement()
{
    if (!m_notedNode) m_notedNode = MakeElement(m_noted.constData());
    return m_notedNode;
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

void DocumentData::TouchContent(pugi::xml_node node)
{
    if (!m_loadedRoot || node == m_touched) return;
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
    if (m_loadedRoot && m_document.first_child() == m_loadedRoot)
        WriteLoaded(out);
    else
        WriteNew(out);
    if (!out.EndsWith('\n')) out.Put(SourceLayout().lineEnd);
    return EncodeSource(out.Take(), m_source);
}

void DocumentData::WriteNew(Output& out)
{
    m_source.encoding = platform::Encoding::Utf8;
    out.Put(std::string_view("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"));
    for (const pugi::xml_node child : DocumentNode())
        WriteNode(out, child, 0, Layout());
}

void DocumentData::WriteLoaded(Output& out)
{
    const Layout layout = SourceLayout();
    const bool hasChildren = static_cast<bool>(m_loadedRoot.first_child());
    const bool opensSelfClosing = m_outline.rootSelfClosing && hasChildren;
    PutSource(out, 0, m_outline.rootBegin);
    if (m_rootTagTouched || opensSelfClosing)
        WriteStartTag(out, m_loadedRoot, m_outline.rootSelfClosing && !hasChildren);
    else
        PutSource(out, m_outline.rootBegin, m_outline.rootTagEnd);

    WriteChildren(out, layout);
    const QByteArray tail = SourceBytes(GapBegin(m_outline.children.size()), m_outline.rootContentEnd);
    const bool lastIsNew = hasChildren && !m_outlined.contains(m_loadedRoot.last_child().internal_object());
    if (!tail.isEmpty())
        out.Put(tail);
    else if (lastIsNew)
        WriteBreak(out, 0, layout);
    if (opensSelfClosing)
        WriteEndTag(out, m_loadedRoot);
    else
        PutSource(out, m_outline.rootContentEnd, m_outline.rootEnd);
    PutSource(out, m_outline.rootEnd, static_cast<std::size_t>(m_source.utf8.size()));
}

void DocumentData::WriteChildren(Output& out, const Layout& layout)
{
    for (const pugi::xml_node child : m_loadedRoot) {
        const auto found = m_outlined.find(child.internal_object());
        if (found == m_outlined.end()) {
            // Blanks behind a text would become part of it.
            if (!IsCharacterData(child.previous_sibling())) WriteBreak(out, 1, layout);
            WriteNode(out, child, 1, layout);
            continue;
        }
        const ChildOutline& outline = m_outline.children[found->second.index];
        const std::size_t gap = GapBegin(found->second.index);
        PutSource(out, gap, found->second.touched ? outline.begin : outline.end);
        if (found->second.touched) WriteNode(out, child, 1, layout);
    }
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
