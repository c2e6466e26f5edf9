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
    }

    bool IsText() const { return Decode(m_bytes, m_encoding).has_value(); }

    /// The value of a key as a reader gets it; nothing when section or key is missing.
    std::optional<CString> Value(const CString& section, const CString& key) const
    {
        const std::optional<Range> range = FindValue(FindSection(section), key);
        if (!range) return std::nullopt;
        const std::optional<CString> value = DecodeRange(*range);
        return value && IsQuoted(*value) ? value->sliced(1, value->size() - 2) : value;
    }

    /// The whole file with that key set; nothing when a text does not encode.
    std::optional<QByteArray> With(const CString& section, const CString& key, const CString& value) const
    {
        const Section lines = FindSection(section);
        if (const std::optional<Range> range = FindValue(lines, key))
            return Replaced(*range, WrittenForm(value));
        const CString entry = key + u'=' + WrittenForm(value) + LineEnd();
        if (lines.found) return Replaced(InsertionPoint(lines), entry, true);
        const auto end = m_bytes.size();
        return Replaced({end, end}, u'[' + section + u']' + LineEnd() + entry, true);
    }

private:
    /// One line: its bytes without the line end, and where the next one begins.
    struct Line
    {
        Range content;
        qsizetype next = 0;
    };

    /// The lines of a section, as indexes, without its head.
    struct Section
    {
        bool found = false;
        std::size_t first = 0;
        std::size_t last = 0;
    };

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
        qsizetype begin = Mark().size();
        for (qsizetype at = begin; at < size; at += step) {
            if (!IsLineEnd(Unit(at))) continue;
            const qsizetype end = at;
            if (Unit(at) == u'\r' && at + step < size && Unit(at + step) == u'\n') at += step;
            m_lines.push_back({{begin, end}, at + step});
            begin = at + step;
        }
        if (begin < size) m_lines.push_back({{begin, size}, size});
    }

    QByteArray Mark() const { return Encode(CString(), m_encoding).value_or(QByteArray()); }

    std::optional<CString> DecodeRange(Range range) const
    {
        return Decode(m_bytes.sliced(range.begin, range.end - range.begin), m_encoding);
    }

    CString Text(Range range) const { return DecodeRange(range).value_or(CString()); }

    /// The line end of the file's first line; a new file gets the one of the profile functions.
    CString LineEnd() const
    {
        if (m_lines.empty() || m_lines.front().next == m_lines.front().content.end) return u"\r\n"_s;
        return Text({m_lines.front().content.end, m_lines.front().next});
    }

    /// The name in a section's head; nothing for any other line.
    std::optional<CString> SectionName(const Line& line) const
    {
        const CString text = Text(line.content);
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

    /// The bytes of a key's value, without the blanks around it.
    std::optional<Range> FindValue(const Section& section, const CString& key) const
    {
        if (!section.found) return std::nullopt;
        for (std::size_t i = section.first; i < section.last; ++i) {
            const Range line = m_lines[i].content;
            const qsizetype equals = FindEquals(line);
            const CString name = Text({line.begin, equals});
            if (equals == line.end || Trimmed(name).startsWith(u';') || !SameName(name, key)) continue;
            return WithoutBlanks({equals + UnitSize(), line.end});
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

    /// Behind the last line of a section that is not blank; its head counts as one.
    Range InsertionPoint(const Section& section) const
    {
        std::size_t last = section.last;
        while (last > section.first && Trimmed(Text(m_lines[last - 1].content)).isEmpty())
            --last;
        const qsizetype at = m_lines[last - 1].next;
        return {at, at};
    }

    /// The file with `text` in the place of a range. `ownLine` first ends a line that the file left open
    /// there.
    std::optional<QByteArray> Replaced(Range range, const CString& text, bool ownLine = false) const
    {
        const bool open = ownLine && !m_lines.empty() && range.begin == m_lines.back().content.end &&
                          m_lines.back().content.end == m_lines.back().next;
        std::optional<QByteArray> bytes = Encode(open ? LineEnd() + text : text, m_encoding);
        if (!bytes) return std::nullopt;
        bytes->remove(0, Mark().size());
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
    if (!text.IsText()) return false;
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
