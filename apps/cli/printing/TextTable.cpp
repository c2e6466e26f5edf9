#include "cli/printing/TextTable.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

constexpr int Gap = 2;

struct Range
{
    char32_t first;
    char32_t last;
};

/// The blocks whose characters are two columns wide, and the fullwidth forms. Operators such as "≥" are one.
constexpr std::array<Range, 11> WideRanges{{
    {0x1100, 0x115F},
    {0x2E80, 0x303E},
    {0x3041, 0x33FF},
    {0x3400, 0x4DBF},
    {0x4E00, 0x9FFF},
    {0xA000, 0xA4CF},
    {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},
    {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60},
    {0x20000, 0x3FFFD},
}};

int CharacterWidth(char32_t character)
{
    if (QChar::isMark(character) || QChar::category(character) == QChar::Other_Format) return 0;
    const bool wide = std::any_of(WideRanges.begin(), WideRanges.end(), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
    return wide ? 2 : 1;
}

CString OneLine(const CString& text)
{
    CString line = text;
    for (QChar& character : line)
        if (character.category() == QChar::Other_Control) character = u' ';
    return line;
}

} // namespace

int DisplayWidth(const CString& text)
{
    int width = 0;
    for (const uint character : text.toUcs4())
        width += CharacterWidth(character);
    return width;
}

CArray<int> TextTable::ColumnWidths() const
{
    CArray<int> widths;
    for (const CStringArray& row : m_rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (i == widths.size()) widths.append(0);
            widths[i] = std::max(widths[i], DisplayWidth(row[i]));
        }
    }
    return widths;
}

CString TextTable::ToText(int indent) const
{
    const CArray<int> widths = ColumnWidths();
    CString text;
    for (const CStringArray& row : m_rows) {
        CString line(indent, u' ');
        for (qsizetype i = 0; i < row.size(); ++i)
            line += OneLine(row[i]) + CString(widths[i] - DisplayWidth(row[i]) + Gap, u' ');
        while (line.endsWith(u' '))
            line.chop(1);
        text += line + u'\n';
    }
    return text;
}

} // namespace cli
