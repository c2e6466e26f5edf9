#include "xml/Scanner.h"

#include "xml/Characters.h"

#include <algorithm>
#include <utility>

// Start tags behind the element's name: where the scanner spends most of its time.

namespace xml::detail {

namespace {

constexpr ByteSet PlainInValue = PlainBytes("<&\"'");

/// Elements whose names differ here keep their attribute names apart.
std::size_t ShapeOf(std::string_view element) noexcept
{
    const auto first = static_cast<unsigned char>(element.front());
    return (element.size() * 4 + first + first / 32U) % 16; // capitals differ by 32 from small letters
}

} // namespace

/// The rest of a start tag behind the element's name. True when it closes its element.
///
/// Most of a rule file is attributes, and most elements of a name have the same ones in the same order. So
/// the last names are kept, by element: where they stand here again, they need no second look, neither as
/// names nor for duplicates.
bool Scanner::ScanAttributes(std::string_view element)
{
    std::vector<std::string_view>& names = m_attributeNames[ShapeOf(element)];
    std::size_t count = SkipUsualAttributes(names);
    const std::size_t known = count;
    for (;; ++count) {
        const char* const before = m_at;
        SkipBlanks();
        if (*m_at == '>' || *m_at == '/') break;
        if (m_at == before) Miss(u"标记没有正确结束");
        names.resize(count);
        names.push_back(ScanAttributeName());
        ScanAttributeValue();
    }
    const bool selfClosing = *m_at == '/';
    if (m_at[selfClosing ? 1 : 0] != '>') Refuse(u"标记没有正确结束");
    m_at += selfClosing ? 2 : 1;
    if (count != known) CheckDuplicates(names);
    return selfClosing;
}

/// Walks over the attributes that have these names and are written as programs write them: a space, the name
/// and a value in double quotes without references. Stops in front of the first that is different, and gives
/// the number of those before it.
std::size_t Scanner::SkipUsualAttributes(const std::vector<std::string_view>& names)
{
    std::size_t count = 0;
    for (const std::string_view name : names) {
        const char* at = m_at;
        if (static_cast<std::size_t>(m_end - at) < name.size() + 3) break;
        const char* const equals = at + 1 + name.size();
        if (*at != ' ' || *equals != '=' || equals[1] != '"' || !SameBytes(at + 1, name)) break;
        at = SkipPlain(equals + 2, PlainInValue);
        while (const std::size_t length = ThreeByteLength(at))
            at = SkipPlain(at + length, PlainInValue);
        if (*at != '"') break;
        m_at = at + 1;
        ++count;
    }
    return count;
}

/// The attributes of a tag that has been scanned before.
std::vector<AttributeOutline> Scanner::AttributesFrom(const char* tag)
{
    const char* const resume = std::exchange(m_at, tag);
    std::vector<AttributeOutline> attributes;
    for (SkipBlanks(); *m_at != '>' && *m_at != '/'; SkipBlanks()) {
        AttributeOutline attribute;
        attribute.name = ScanAttributeName();
        attribute.valueBegin = Offset(m_at) + 1;
        ScanAttributeValue();
        attribute.valueEnd = Offset(m_at) - 1;
        attributes.push_back(attribute);
    }
    m_at = resume;
    return attributes;
}

/// An attribute up to the quote that opens its value.
inline std::string_view Scanner::ScanAttributeName()
{
    const char* const end = SkipName(m_at);
    if (end == m_at) Miss(u"属性名称无效");
    const std::string_view name(m_at, static_cast<std::size_t>(end - m_at));
    m_at = end;
    if (*m_at != '=') SkipBlanks();
    Expect("=", u"属性没有值");
    if (*m_at != '"') SkipBlanks();
    if (*m_at != '"' && *m_at != '\'') Miss(u"属性值没有引号");
    return name;
}

/// A value with both of its quotes.
inline void Scanner::ScanAttributeValue()
{
    const char quote = *m_at;
    const char* at = m_at + 1;
    for (;;) {
        at = SkipPlain(at, PlainInValue);
        if (*at == quote) break;
        m_at = at;
        if (*at == '&')
            ScanReference();
        else if (*at == '<')
            Refuse(u"属性值中不能有“<”");
        else
            SkipCharacter();
        at = m_at;
    }
    m_at = at + 1;
}

void Scanner::CheckDuplicates(std::vector<std::string_view> names) const
{
    std::sort(names.begin(), names.end());
    if (std::adjacent_find(names.begin(), names.end()) != names.end()) Refuse(u"同一元素中属性重复");
}

} // namespace xml::detail
