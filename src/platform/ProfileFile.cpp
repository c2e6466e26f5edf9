#include "platform/ProfileFile.h"

#include "platform/Encoding.h"
#include "platform/Files.h"

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

// The file is kept as bytes and cut into lines there, so that writing a key moves no other byte even where an
// encoding has two forms for one character. That works because no supported encoding uses the bytes of a line
// end, a blank or "=" inside another character.
//
// Several programs write such a file, each in its own encoding: one line may be UTF-8 and the next GBK. So
// every line is decoded by itself, and one that decodes as nothing costs no other line its meaning.

namespace platform {

namespace {

bool IsBlank(char16_t c)
{
    return c == u' ' || c == u'\t';
}
bool IsLineEnd(char16_t c)
{
    return c == u'\r' || c == u'\n';
}

QStringView Trimmed(QStringView text)
{
    while (!text.isEmpty() && IsBlank(text.front().unicode()))
        text = text.sliced(1);
    while (!text.isEmpty() && IsBlank(text.back().unicode()))
        text.chop(1);
    return text;
}

bool IsQuoted(QStringView text)
{
    return text.size() >= 2 && text.front() == text.back() && (text.front() == u'"' || text.front() == u'\'');
}

bool SameName(QStringView left, QStringView right)
{
    return Trimmed(left).compare(Trimmed(right), Qt::CaseInsensitive) == 0;
}

/// The form of a value in a file: in quotes where reading would otherwise take something off it.
CString WrittenForm(const CString& value)
{
    const bool changes = Trimmed(value) != value || IsQuoted(value);
    return changes ? u'"' + value + u'"' : value;
}

/// A range of bytes.
struct Range
{
    qsizetype begin = 0;
    qsizetype end = 0;
};

/// The bytes of one ini file, and where things stand in them.
class IniText
{
public:
    explicit IniText(QByteArray bytes)
        : m_bytes(std::move(bytes)), m_encoding(GuessEncoding(m_bytes)),
          m_wide(m_encoding == Encoding::Utf16Le || m_encoding == Encoding::Utf16Be)
    {
        SplitLines();
        if (!m_wide) ChooseEncodings();
    }

    /// The value of a key as a reader gets it; nothing when section or key is missing.
    std::optional<CString> Value(const CString& section, const CString& key) const
    {
        const std::optional<Line> found = FindValue(FindSection(section), key);
        if (!found) return std::nullopt;
        const std::optional<CString> value = Decoded(*found, found->content);
        return value && IsQuoted(*value) ? value->sliced(1, value->size() - 2) : value;
    }

    /// The whole file with that key set, so that it is read back as it was given; nothing when no encoding
    /// does that. The encoding of the file comes first, then the other one that its lines may have.
    std::optional<QByteArray> With(const CString& section, const CString& key, const CString& value) const
    {
        const Encoding other = m_encoding == Encoding::Gb18030 ? Encoding::Utf8 : Encoding::Gb18030;
        for (const Encoding encoding : {m_encoding, other}) {
            std::optional<QByteArray> changed = WithIn(encoding, section, key, value);
            if (changed && IniText(*changed).Value(section, key) == value) return changed;
            if (m_wide) break;
        }
        return std::nullopt;
    }

private:
    /// One line: its bytes without the line end, where the next one begins, and how it is decoded.
    struct Line
    {
        Range content;
        qsizetype next = 0;
        Encoding encoding = Encoding::Utf8;
    };

    /// The lines of a section, as indexes, without its head.
    struct Section
    {
        bool found = false;
        std::size_t first = 0;
        std::size_t last = 0;
    };

    std::optional<QByteArray> WithIn(Encoding encoding, const CString& section, const CString& key,
                                     const CString& value) const
    {
        const Section lines = FindSection(section);
        if (const std::optional<Line> found = FindValue(lines, key))
            return Replaced(found->content, WrittenForm(value), encoding);
        const CString entry = key + u'=' + WrittenForm(value) + LineEnd();
        if (lines.found) return Replaced(InsertionPoint(lines), entry, encoding, true);
        // Half a character at the end of the file stays there.
        const qsizetype end = m_bytes.size() - m_bytes.size() % UnitSize();
        return Replaced({end, end}, u'[' + section + u']' + LineEnd() + entry, encoding, true);
    }

    qsizetype UnitSize() const { return m_wide ? 2 : 1; }

    /// The code unit that begins at a byte offset.
    char16_t Unit(qsizetype at) const
    {
        const auto byte = [this](qsizetype i) { return static_cast<unsigned char>(m_bytes[i]); };
        if (!m_wide) return byte(at);
        const bool big = m_encoding == Encoding::Utf16Be;
        return static_cast<char16_t>(byte(big ? at : at + 1) << 8 | byte(big ? at + 1 : at));
    }

    void SplitLines()
    {
        const qsizetype step = UnitSize();
        const qsizetype size = m_bytes.size() - m_bytes.size() % step;
        qsizetype begin = MarkOf(m_encoding).size();
        for (qsizetype at = begin; at < size; at += step) {
            if (!IsLineEnd(Unit(at))) continue;
            const qsizetype end = at;
            if (Unit(at) == u'\r' && at + step < size && Unit(at + step) == u'\n') at += step;
            m_lines.push_back({{begin, end}, at + step, m_encoding});
            begin = at + step;
        }
        if (begin < size) m_lines.push_back({{begin, size}, size, m_encoding});
    }

    static QByteArray MarkOf(Encoding encoding) { return Encode(CString(), encoding).value_or(QByteArray()); }

    /// Gives every line its encoding. A line that is no UTF-8 is GB18030, and one with a character of three
    /// bytes, as all Chinese ones have, is UTF-8. Which of the two is more frequent is the encoding of the
    /// file: of the lines that could be both, or are neither, and of what is written.
    void ChooseEncodings()
    {
        std::vector<Line*> others;
        qsizetype utf8Lines = 0;
        qsizetype chineseLines = 0;
        for (Line& line : m_lines) {
            const QByteArray bytes = Bytes(line.content);
            const bool isUtf8 = Decode(bytes, Encoding::Utf8).has_value();
            if (isUtf8 && std::any_of(bytes.begin(), bytes.end(), BeginsThreeBytes)) {
                line.encoding = Encoding::Utf8;
                ++utf8Lines;
            } else if (!isUtf8 && Decode(bytes, Encoding::Gb18030)) {
                line.encoding = Encoding::Gb18030;
                ++chineseLines;
            } else {
                others.push_back(&line);
            }
        }
        const bool isChinese = chineseLines > 0 && chineseLines >= utf8Lines;
        if (m_encoding == Encoding::Gb18030 && !isChinese) m_encoding = Encoding::Utf8;
        for (Line* line : others)
            line->encoding = m_encoding;
    }

    static bool BeginsThreeBytes(char c) { return static_cast<unsigned char>(c) >= 0xE0; }

    QByteArray Bytes(Range range) const { return m_bytes.sliced(range.begin, range.end - range.begin); }

    std::optional<CString> Decoded(const Line& line, Range range) const
    {
        return Decode(Bytes(range), line.encoding);
    }

    /// The code units as characters, for what is looked for by its signs alone.
    CString Units(Range range) const
    {
        CString units;
        for (qsizetype at = range.begin; at < range.end; at += UnitSize())
            units.append(QChar(Unit(at)));
        return units;
    }

    /// The line end of the file's first line; a new file gets the one of the profile functions.
    CString LineEnd() const
    {
        if (m_lines.empty() || m_lines.front().next == m_lines.front().content.end) return u"\r\n"_s;
        return Units({m_lines.front().content.end, m_lines.front().next});
    }

    /// The name in a section's head; nothing for any other line. A head that does not decode is one, too.
    std::optional<CString> SectionName(const Line& line) const
    {
        const CString text = Decoded(line, line.content).value_or(Units(line.content));
        const QStringView head = Trimmed(text);
        const qsizetype close = head.lastIndexOf(u']');
        if (!head.startsWith(u'[') || close < 0) return std::nullopt;
        return head.sliced(1, close - 1).toString();
    }

    Section FindSection(const CString& name) const
    {
        Section section;
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            const std::optional<CString> head = SectionName(m_lines[i]);
            if (!head) continue;
            if (section.found) {
                section.last = i;
                return section;
            }
            if (SameName(*head, name)) section = {true, i + 1, i + 1};
        }
        section.last = m_lines.size();
        return section;
    }

    /// Where the value of a key stands, without the blanks around it.
    std::optional<Line> FindValue(const Section& section, const CString& key) const
    {
        if (!section.found) return std::nullopt;
        for (std::size_t i = section.first; i < section.last; ++i) {
            Line line = m_lines[i];
            const qsizetype equals = FindEquals(line.content);
            const CString name = Decoded(line, {line.content.begin, equals}).value_or(CString());
            if (equals == line.content.end || Trimmed(name).startsWith(u';') || !SameName(name, key))
                continue;
            line.content = WithoutBlanks({equals + UnitSize(), line.content.end});
            return line;
        }
        return std::nullopt;
    }

    /// The offset of the first "=" of a line, its end when there is none.
    qsizetype FindEquals(Range line) const
    {
        qsizetype at = line.begin;
        while (at < line.end && Unit(at) != u'=')
            at += UnitSize();
        return at;
    }

    Range WithoutBlanks(Range range) const
    {
        while (range.begin < range.end && IsBlank(Unit(range.begin)))
            range.begin += UnitSize();
        while (range.begin < range.end && IsBlank(Unit(range.end - UnitSize())))
            range.end -= UnitSize();
        return range;
    }

    bool IsBlankLine(const Line& line) const
    {
        const Range rest = WithoutBlanks(line.content);
        return rest.begin == rest.end;
    }

    /// Behind the last line of a section that is not blank; its head counts as one.
    Range InsertionPoint(const Section& section) const
    {
        std::size_t last = section.last;
        while (last > section.first && IsBlankLine(m_lines[last - 1]))
            --last;
        const qsizetype at = m_lines[last - 1].next;
        return {at, at};
    }

    /// The file with `text` in the place of a range. `ownLine` first ends a line that the file left open
    /// there.
    std::optional<QByteArray> Replaced(Range range, const CString& text, Encoding encoding,
                                       bool ownLine = false) const
    {
        const bool open = ownLine && !m_lines.empty() && range.begin == m_lines.back().content.end &&
                          m_lines.back().content.end == m_lines.back().next;
        std::optional<QByteArray> bytes = Encode(open ? LineEnd() + text : text, encoding);
        if (!bytes) return std::nullopt;
        bytes->remove(0, MarkOf(encoding).size());
        return m_bytes.first(range.begin) + *bytes + m_bytes.sliced(range.end);
    }

    QByteArray m_bytes;
    Encoding m_encoding;
    bool m_wide;
    std::vector<Line> m_lines;
};

/// Whether the format can hold the three texts at all, so that reading finds them again.
bool CanCarry(const CString& section, const CString& key, const CString& value)
{
    const auto breaks = [](QChar c) { return IsLineEnd(c.unicode()) || c == u'\0'; };
    for (const CString& text : {section, key, value})
        if (std::any_of(text.begin(), text.end(), breaks)) return false;
    const QStringView name = Trimmed(key);
    return !name.isEmpty() && !name.contains(u'=') && !name.startsWith(u';') && !name.startsWith(u'[');
}

} // namespace

ProfileFile::ProfileFile(CString path) : m_path(std::move(path)) {}

CString ProfileFile::Read(const CString& section, const CString& key, const CString& fallback,
                          int bufferSize) const
{
    const std::optional<QByteArray> bytes = Files().Read(m_path);
    const std::optional<CString> value = bytes ? IniText(*bytes).Value(section, key) : std::nullopt;
    return value.value_or(fallback).left(qMax(0, bufferSize - 1));
}

bool ProfileFile::Write(const CString& section, const CString& key, const CString& value) const
{
    if (!CanCarry(section, key, value)) return false;
    std::optional<QByteArray> bytes = Files().Read(m_path);
    if (!bytes && Files().Exists(m_path)) return false;
    const IniText text(bytes.value_or(QByteArray()));
    if (text.Value(section, key) == value) return true;
    const std::optional<QByteArray> changed = text.With(section, key, value);
    if (!changed) return false;
    try {
        Files().WriteInPlace(m_path, *changed);
        return true;
    } catch (const FileError&) {
        return false;
    }
}

} // namespace platform
