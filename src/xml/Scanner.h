#pragma once

#include "xml/Characters.h"
#include "xml/Dom.h"

#include <QtCore/QByteArray>

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

/// The judge of what is XML. It walks over the bytes once, without building anything: the parser behind the
/// document model takes much that is no XML, so nothing reaches it that has not passed here. What it
/// remembers are the places of the document element and its children, by which untouched children are later
/// copied byte for byte and parsed only when somebody looks into them.
namespace xml::detail {

/// Why and where scanning stopped. Thrown inside this folder only.
struct Refusal
{
    std::size_t offset;
    QStringView text;
};

/// A child of the document element; blank text is none. Offsets are into the scanned bytes.
struct ChildOutline
{
    NodeKind kind = NodeKind::Null;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t contentBegin = 0; ///< elements: behind the start tag
    std::size_t contentEnd = 0;   ///< elements: before the end tag; equal to `contentBegin` when empty
    bool selfClosing = false;     ///< elements: written as one tag
};

/// One attribute of a start tag.
struct AttributeOutline
{
    std::string_view name;
    std::size_t valueBegin = 0; ///< behind the opening quote
    std::size_t valueEnd = 0;   ///< the closing quote
};

struct Outline
{
    std::size_t rootBegin = 0;      ///< the "<" of the document element
    std::size_t rootTagEnd = 0;     ///< behind its start tag
    std::size_t rootContentEnd = 0; ///< the "<" of its end tag
    std::size_t rootEnd = 0;        ///< behind it
    bool rootSelfClosing = false;
    std::vector<AttributeOutline> rootAttributes;
    std::vector<ChildOutline> children;
};

class Scanner
{
public:
    /// `text` is UTF-8 without byte order mark and must outlive scanner and outline.
    explicit Scanner(const QByteArray& text);

    /// Scans the whole document. Throws `Refusal`.
    Outline ScanDocument();
    /// Scans up to the end of the document element's start tag; the outline holds no more than that. Throws
    /// `Refusal`.
    Outline ScanHead();

private:
    void ScanDeclaration();
    void ScanPseudoAttribute(std::string_view name, bool required);
    void ScanMisc();
    void ScanRootTag();
    void ScanContent();
    void ScanMarkup();
    void ScanStartTag();
    void ScanEndTag();
    bool ScanAttributes(std::string_view element);
    std::size_t SkipUsualAttributes(const std::vector<std::string_view>& names);
    std::vector<AttributeOutline> AttributesFrom(const char* tag);
    std::string_view ScanAttributeName();
    void ScanAttributeValue();
    void CheckDuplicates(std::vector<std::string_view> names) const;
    void ScanText();
    void ScanReference();
    void ScanComment();
    void ScanInstruction();
    void ScanCData();
    void SkipBlanks() noexcept { m_at = SkipPlain(m_at, Blanks); }
    bool StartsWith(std::string_view text) const noexcept
    {
        return static_cast<std::size_t>(m_end - m_at) >= text.size() &&
               std::memcmp(m_at, text.data(), text.size()) == 0;
    }
    void Expect(std::string_view text, QStringView why);
    /// A character that is neither ASCII markup nor the end.
    void SkipCharacter()
    {
        if (const std::size_t length = ThreeByteLength(m_at))
            m_at += length;
        else
            SkipAnyCharacter();
    }
    void SkipAnyCharacter();
    std::string_view TakeName(QStringView why);
    void BeginChild(NodeKind kind, const char* begin);
    void EndChild();
    std::size_t Offset(const char* position) const noexcept
    {
        return static_cast<std::size_t>(position - m_begin);
    }
    /// Whatever follows, this is no XML.
    [[noreturn]] void Refuse(QStringView why) const;
    /// Something else had to stand here: the reason is `why`, unless the bytes end here or are no text.
    [[noreturn]] void Miss(QStringView why) const;

    const char* m_begin;
    const char* m_at;
    const char* m_end;
    Outline m_outline;
    std::vector<std::string_view> m_open; ///< names of the open elements
    /// The attribute names of the last element of each shape of name, without duplicates.
    std::array<std::vector<std::string_view>, 16> m_attributeNames;
};

} // namespace xml::detail
