#include "xml/Scanner.h"

#include "xml/Characters.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace xml::detail {

namespace {

constexpr ByteSet PlainInText = PlainBytes("<&]");

constexpr QStringView NoText = u"字节不是有效的文字编码";

} // namespace

Scanner::Scanner(const QByteArray& text)
    : m_begin(text.constData()), m_at(m_begin), m_end(m_begin + text.size())
{
}

Outline Scanner::ScanDocument()
{
    Outline head = ScanHead();
    m_outline = std::move(head);
    if (m_outline.rootSelfClosing)
        m_outline.rootContentEnd = m_outline.rootEnd = m_outline.rootTagEnd;
    else
        ScanContent();
    ScanMisc();
    if (m_at != m_end) Refuse(u"根元素之后还有别的内容");
    return std::move(m_outline);
}

Outline Scanner::ScanHead()
{
    if (m_at == m_end) Refuse(u"文件是空的");
    ScanDeclaration();
    ScanMisc();
    ScanRootTag();
    return std::move(m_outline);
}

void Scanner::ScanDeclaration()
{
    if (!StartsWith("<?xml") || !IsBlank(m_at[5])) return;
    m_at += 5;
    ScanPseudoAttribute("version", true);
    ScanPseudoAttribute("encoding", false);
    ScanPseudoAttribute("standalone", false);
    SkipBlanks();
    Expect("?>", u"XML 声明不完整");
}

void Scanner::ScanPseudoAttribute(std::string_view name, bool required)
{
    const char* const before = m_at;
    SkipBlanks();
    if (m_at == before || !StartsWith(name)) {
        if (required) Miss(u"XML 声明不完整");
        m_at = before;
        return;
    }
    m_at += name.size();
    SkipBlanks();
    Expect("=", u"XML 声明不完整");
    SkipBlanks();
    const char quote = *m_at;
    if (quote != '"' && quote != '\'') Miss(u"XML 声明不完整");
    const char* const value = ++m_at;
    while (*m_at != quote && *m_at > ' ' && *m_at != '<')
        ++m_at;
    if (*m_at != quote) Miss(u"XML 声明不完整");
    const std::string_view text(value, static_cast<std::size_t>(m_at - value));
    if (name == "version" && text != "1.0") Refuse(u"只支持 XML 1.0");
    if (name == "standalone" && text != "yes" && text != "no") Refuse(u"XML 声明不完整");
    ++m_at;
}

/// Comments, processing instructions and blanks around the document element.
void Scanner::ScanMisc()
{
    for (;;) {
        SkipBlanks();
        if (StartsWith("<!--"))
            ScanComment();
        else if (StartsWith("<?"))
            ScanInstruction();
        else if (StartsWith("<!DOCTYPE"))
            Refuse(u"不允许 DOCTYPE");
        else
            return;
    }
}

void Scanner::ScanRootTag()
{
    if (m_at == m_end) Refuse(u"没有根元素");
    if (*m_at != '<') Refuse(u"根元素之外有文字");
    m_outline.rootBegin = Offset(m_at);
    ++m_at;
    m_open.push_back(TakeName(u"元素名称无效"));
    const char* const tag = m_at;
    m_outline.rootSelfClosing = ScanAttributes(m_open.back());
    m_outline.rootTagEnd = Offset(m_at);
    m_outline.rootAttributes = AttributesFrom(tag);
}

/// Everything behind the document element's start tag up to and including its end tag.
void Scanner::ScanContent()
{
    while (!m_open.empty()) {
        if (*m_at == '<')
            ScanMarkup();
        else
            ScanText();
    }
}

void Scanner::ScanMarkup()
{
    const char next = m_at[1];
    if (next == '/') {
        ScanEndTag();
    } else if (next == '?') {
        BeginChild(NodeKind::ProcessingInstruction, m_at);
        ScanInstruction();
        EndChild();
    } else if (next != '!') {
        ScanStartTag();
    } else if (StartsWith("<!--")) {
        BeginChild(NodeKind::Comment, m_at);
        ScanComment();
        EndChild();
    } else if (StartsWith("<![CDATA[")) {
        BeginChild(NodeKind::CData, m_at);
        ScanCData();
        EndChild();
    } else {
        Miss(u"无法识别的标记");
    }
}

void Scanner::ScanStartTag()
{
    BeginChild(NodeKind::Element, m_at);
    ++m_at;
    const std::string_view name = TakeName(u"元素名称无效");
    const bool selfClosing = ScanAttributes(name);
    if (m_open.size() == 1) {
        ChildOutline& child = m_outline.children.back();
        child.selfClosing = selfClosing;
        child.contentBegin = child.contentEnd = Offset(m_at);
    }
    if (selfClosing)
        EndChild();
    else
        m_open.push_back(name);
}

void Scanner::ScanEndTag()
{
    const char* const tag = m_at;
    m_at += 2;
    const std::string_view name = m_open.back();
    // The name may be a mere beginning of the one that stands here; the blank or ">" behind it decides.
    const bool fits = static_cast<std::size_t>(m_end - m_at) >= name.size();
    if (!fits || !SameBytes(m_at, name)) Miss(u"结束标记与开始标记不符");
    m_at += name.size();
    SkipBlanks();
    if (*m_at != '>') Miss(u"结束标记与开始标记不符");
    ++m_at;
    m_open.pop_back();
    if (m_open.empty()) {
        m_outline.rootContentEnd = Offset(tag);
        m_outline.rootEnd = Offset(m_at);
    } else if (m_open.size() == 1) {
        m_outline.children.back().contentEnd = Offset(tag);
        EndChild();
    }
}

void Scanner::ScanText()
{
    const char* const begin = m_at;
    SkipBlanks();
    if (*m_at == '<') return; // blank text is no node
    BeginChild(NodeKind::Text, begin);
    for (;;) {
        m_at = SkipPlain(m_at, PlainInText);
        const char c = *m_at;
        if (c == '<') break;
        if (c == '&')
            ScanReference();
        else if (c == ']' && StartsWith("]]>"))
            Refuse(u"文字中不能有“]]>”");
        else
            SkipCharacter();
    }
    EndChild();
}

/// A character reference or one of the five predefined entities: without a DOCTYPE there are no others.
void Scanner::ScanReference()
{
    for (const std::string_view entity : {"&lt;", "&gt;", "&amp;", "&quot;", "&apos;"}) {
        if (!StartsWith(entity)) continue;
        m_at += entity.size();
        return;
    }
    if (m_at[1] != '#') Refuse(u"未定义的实体");
    const char* digit = m_at + 2;
    const std::uint32_t base = *digit == 'x' ? 16 : 10;
    if (base == 16) ++digit;
    std::uint32_t value = 0;
    const char* const first = digit;
    for (;; ++digit) {
        const char c = *digit;
        std::uint32_t number = 16;
        if (c >= '0' && c <= '9')
            number = static_cast<std::uint32_t>(c - '0');
        else if (base == 16 && c >= 'a' && c <= 'f')
            number = static_cast<std::uint32_t>(c - 'a') + 10;
        else if (base == 16 && c >= 'A' && c <= 'F')
            number = static_cast<std::uint32_t>(c - 'A') + 10;
        if (number == 16) break;
        value = std::min<std::uint32_t>(value * base + number, 0x110000);
    }
    if (digit == first || *digit != ';' || !IsXmlCharacter(value)) Refuse(u"字符引用无效");
    m_at = digit + 1;
}

void Scanner::ScanComment()
{
    m_at += 4;
    while (!StartsWith("--"))
        SkipCharacter();
    Expect("-->", u"注释中不能有“--”");
}

void Scanner::ScanInstruction()
{
    m_at += 2;
    const std::string_view target = TakeName(u"处理指令名称无效");
    const auto isLetter = [&target](std::size_t i, char lower) { return (target[i] | 0x20) == lower; };
    if (target.size() == 3 && isLetter(0, 'x') && isLetter(1, 'm') && isLetter(2, 'l'))
        Refuse(u"XML 声明只能在文件开头");
    if (!StartsWith("?>") && !IsBlank(*m_at)) Miss(u"处理指令名称无效");
    while (!StartsWith("?>"))
        SkipCharacter();
    m_at += 2;
}

void Scanner::ScanCData()
{
    m_at += 9;
    while (!StartsWith("]]>"))
        SkipCharacter();
    m_at += 3;
}

void Scanner::Expect(std::string_view text, QStringView why)
{
    if (!StartsWith(text)) Miss(why);
    m_at += text.size();
}

void Scanner::SkipAnyCharacter()
{
    const CodePoint c = DecodeUtf8(m_at);
    if (m_at == m_end) Refuse(u"文件不完整");
    if (c.length == 0) Refuse(NoText);
    if (!IsXmlCharacter(c.value)) Refuse(u"含有 XML 不允许的字符");
    m_at += c.length;
}

std::string_view Scanner::TakeName(QStringView why)
{
    const char* const end = SkipName(m_at);
    if (end == m_at) Miss(why);
    const std::string_view name(m_at, static_cast<std::size_t>(end - m_at));
    m_at = end;
    return name;
}

/// Only children of the document element are remembered: those that begin while nothing else is open.
void Scanner::BeginChild(NodeKind kind, const char* begin)
{
    if (m_open.size() != 1) return;
    ChildOutline child;
    child.kind = kind;
    child.begin = Offset(begin);
    m_outline.children.push_back(child);
}

void Scanner::EndChild()
{
    if (m_open.size() == 1) m_outline.children.back().end = Offset(m_at);
}

void Scanner::Refuse(QStringView why) const
{
    throw Refusal{Offset(m_at), why};
}

void Scanner::Miss(QStringView why) const
{
    if (m_at == m_end) Refuse(u"文件不完整");
    const bool isAscii = static_cast<unsigned char>(*m_at) < 0x80;
    Refuse(isAscii || DecodeUtf8(m_at).length > 0 ? why : NoText);
}

} // namespace xml::detail
