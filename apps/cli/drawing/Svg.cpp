#include "cli/drawing/Colours.h"
#include "cli/drawing/Picture.h"
#include "cli/printing/TextTable.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

CString Hex(std::uint32_t colour)
{
    return u'#' + CString::number(colour, 16).rightJustified(6, u'0');
}

CString Number(double value)
{
    return CString::number(value, 'f', 1);
}

/// The colours as a style sheet: those of light paper, and others where the viewer asks for dark ones.
CString StyleSheet()
{
    CString light;
    CString dark;
    for (const Colour& colour : Colours) {
        const CString name = CString::fromLatin1(colour.name);
        light += u".%1{fill:%2}"_s.arg(name, Hex(colour.light));
        dark += u".%1{fill:%2}"_s.arg(name, Hex(colour.dark));
    }
    return u"text{font-family:\"Noto Sans CJK SC\",\"Source Han Sans SC\",\"Microsoft YaHei\",\"PingFang "
           u"SC\","
           "sans-serif}"_s +
           light + u"@media (prefers-color-scheme:dark){"_s + dark + u'}';
}

/// The class of an ink, and its light colour for viewers that know no style sheets.
CString Fill(Ink ink)
{
    const Colour& colour = ColourOf(ink);
    return u"class=\"%1\" fill=\"%2\""_s.arg(CString::fromLatin1(colour.name), Hex(colour.light));
}

CString Element(const Bar& bar)
{
    return u"<rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" %5/>\n"_s.arg(
        Number(bar.x), Number(bar.y), Number(bar.width), Number(bar.height), Fill(bar.ink));
}

/// The text as an XML file can hold it: other control characters become blanks.
CString Escaped(const CString& text)
{
    CString clean = text;
    for (QChar& character : clean)
        if (character < u' ' || character == u'\uFFFE' || character == u'\uFFFF') character = u' ';
    return clean.toHtmlEscaped();
}

CString Element(const Label& label)
{
    const CString title =
        label.whole.isEmpty() ? CString() : u"<title>"_s + Escaped(label.whole) + u"</title>"_s;
    return u"<text x=\"%1\" y=\"%2\" font-size=\"%3\"%4%5 %6>%7"_s.arg(
               Number(label.x), Number(label.y), Number(label.size),
               label.isBold ? u" font-weight=\"bold\""_s : CString(),
               label.endsAtX ? u" text-anchor=\"end\""_s : CString(), Fill(label.ink), title) +
           Escaped(label.text) + u"</text>\n"_s;
}

} // namespace

double WidthOf(const CString& text, double size)
{
    // A narrow character takes less than two thirds of a square in all usual fonts.
    constexpr double Column = 0.62;
    double columns = 0;
    for (const uint character : text.toUcs4()) {
        const int width = DisplayWidth(CString::fromUcs4(reinterpret_cast<const char32_t*>(&character), 1));
        columns += width == 2 ? 1 / Column : width;
    }
    return columns * Column * size;
}

CString CutToWidth(const CString& text, double size, double width)
{
    if (WidthOf(text, size) <= width) return text;
    CString cut = text;
    while (!cut.isEmpty() && WidthOf(cut + u'…', size) > width) {
        cut.chop(1);
        if (!cut.isEmpty() && cut.back().isHighSurrogate()) cut.chop(1);
    }
    return cut + u'…';
}

QByteArray ToSvg(const Picture& picture)
{
    CString svg =
        u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"%2\" viewBox=\"0 0 %1 %2\" "
        "role=\"img\">\n<title>%3</title>\n<style>%4</style>\n"_s.arg(
            Number(picture.width), Number(picture.height), Escaped(picture.title), StyleSheet());
    svg += Element(Bar{0, 0, picture.width, picture.height, Ink::Paper});
    for (const Bar& bar : picture.bars)
        svg += Element(bar);
    for (const Label& label : picture.labels)
        svg += Element(label);
    return (svg + u"</svg>\n"_s).toUtf8();
}

} // namespace cli
