#include "dialogs/grid/GridText.h"

#include "xml/Dom.h"

#include <algorithm>

namespace grid {

namespace {

constexpr QChar Tab = u'\t';
constexpr QChar Quote = u'"';
constexpr QChar LineFeed = u'\n';
constexpr QChar Return = u'\r';

bool EndsCell(QChar c)
{
    return c == Tab || c == LineFeed || c == Return;
}

CString Quoted(CString cell)
{
    const bool plain =
        std::none_of(cell.cbegin(), cell.cend(), [](QChar c) { return c == Quote || EndsCell(c); });
    if (plain) return cell;
    cell.replace(Quote, CString(2, Quote));
    return Quote + cell + Quote;
}

/// Takes cells and their separators off the front of a tabbed text.
class Reader
{
public:
    explicit Reader(const CString& text) : m_text(text) {}

    bool AtEnd() const { return m_at >= m_text.size(); }

    bool Skip(QChar wanted)
    {
        if (AtEnd() || m_text[m_at] != wanted) return false;
        ++m_at;
        return true;
    }

    void SkipLineEnd()
    {
        Skip(Return);
        Skip(LineFeed);
    }

    CString Cell()
    {
        CString cell;
        if (Skip(Quote)) cell = InsideQuotes();
        while (!AtEnd() && !EndsCell(m_text[m_at]))
            cell += m_text[m_at++];
        return cell;
    }

private:
    CString InsideQuotes()
    {
        CString inside;
        while (!AtEnd()) {
            const QChar next = m_text[m_at++];
            if (next == Quote && !Skip(Quote)) return inside;
            inside += next;
        }
        return inside;
    }

    const CString& m_text;
    qsizetype m_at = 0;
};

} // namespace

CString WithoutForbidden(const CString& text)
{
    if (xml::IsText(text)) return text;
    CString kept;
    for (qsizetype at = 0; at < text.size();) {
        const bool pair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const CString character = text.mid(at, pair ? 2 : 1);
        if (xml::IsText(character)) kept += character;
        at += character.size();
    }
    return kept;
}

CString ToTabbedText(const CArray<CStringArray>& rows)
{
    CStringArray lines;
    for (const CStringArray& row : rows) {
        CStringArray cells;
        for (const CString& cell : row)
            cells += Quoted(cell);
        lines += cells.join(Tab);
    }
    return lines.join(LineFeed);
}

CArray<CStringArray> FromTabbedText(const CString& text)
{
    CArray<CStringArray> rows;
    Reader reader(text);
    while (!reader.AtEnd()) {
        CStringArray row{reader.Cell()};
        while (reader.Skip(Tab))
            row += reader.Cell();
        rows += row;
        reader.SkipLineEnd();
    }
    return rows;
}

} // namespace grid
