#include "cli/drawing/ChineseFont.h"
#include "cli/drawing/Colours.h"
#include "cli/drawing/Picture.h"
#include "cli/reading/Failure.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <new>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

constexpr int Channels = 3;
constexpr double MostPixels = 200e6;

/// An image in memory, three bytes a pixel.
class Canvas
{
public:
    Canvas(int width, int height)
        : m_width(width), m_height(height),
          m_bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * Channels, 0xFF)
    {
    }

    int Width() const noexcept { return m_width; }
    int Height() const noexcept { return m_height; }
    const std::uint8_t* Bytes() const noexcept { return m_bytes.data(); }

    /// Lays a colour over a pixel as far as `cover`, of 255, covers it; outside of the image nothing happens.
    void Mix(int x, int y, std::uint32_t colour, unsigned cover)
    {
        if (x < 0 || y < 0 || x >= m_width || y >= m_height) return;
        std::uint8_t* const pixel =
            &m_bytes[(static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
                      static_cast<std::size_t>(x)) *
                     Channels];
        for (unsigned channel = 0; channel < Channels; ++channel) {
            const unsigned ink = (colour >> (8 * (Channels - 1 - channel))) & 0xFFU;
            pixel[channel] = static_cast<std::uint8_t>((pixel[channel] * (255 - cover) + ink * cover) / 255);
        }
    }

private:
    int m_width;
    int m_height;
    std::vector<std::uint8_t> m_bytes;
};

void Draw(Canvas& canvas, const Bar& bar, double scale)
{
    const auto at = [&](double length) { return static_cast<int>(std::lround(length * scale)); };
    for (int y = at(bar.y); y < at(bar.y + bar.height); ++y)
        for (int x = at(bar.x); x < at(bar.x + bar.width); ++x)
            canvas.Mix(x, y, ColourOf(bar.ink).light, 255);
}

/// Goes over the characters of a text, with the face that is set to each; gives how wide the text is.
template <typename Take>
double ForEachGlyph(FT_Face face, const CString& text, Take take)
{
    constexpr double Fraction = 64;
    double x = 0;
    for (const uint character : text.toUcs4()) {
        if (FT_Load_Char(face, character, FT_LOAD_RENDER | FT_LOAD_NO_BITMAP) != 0) continue;
        take(x, *face->glyph);
        x += static_cast<double>(face->glyph->advance.x) / Fraction;
    }
    return x;
}

void Draw(Canvas& canvas, const Label& label, double scale, ChineseFont& font)
{
    FT_Face face = font.At(label.size * scale, label.isBold);
    double left = label.x * scale;
    if (label.endsAtX) left -= ForEachGlyph(face, label.text, [](double, const FT_GlyphSlotRec&) {});
    const int base = static_cast<int>(std::lround(label.y * scale));
    ForEachGlyph(face, label.text, [&](double x, const FT_GlyphSlotRec& glyph) {
        const FT_Bitmap& bitmap = glyph.bitmap;
        if (bitmap.pixel_mode != FT_PIXEL_MODE_GRAY) return; // another layout of its bytes
        for (unsigned row = 0; row < bitmap.rows; ++row)
            for (unsigned column = 0; column < bitmap.width; ++column)
                canvas.Mix(static_cast<int>(std::lround(left + x)) + glyph.bitmap_left +
                               static_cast<int>(column),
                           base - glyph.bitmap_top + static_cast<int>(row), ColourOf(label.ink).light,
                           bitmap.buffer[row * static_cast<unsigned>(bitmap.pitch) + column]);
    });
}

QByteArray Packed(const Canvas& canvas)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(canvas.Width());
    image.height = static_cast<png_uint_32>(canvas.Height());
    image.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = 0;
    if (png_image_write_to_memory(&image, nullptr, &size, 0, canvas.Bytes(), 0, nullptr) == 0)
        throw std::bad_alloc();
    QByteArray bytes(static_cast<qsizetype>(size), '\0');
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, canvas.Bytes(), 0, nullptr) == 0)
        throw std::bad_alloc();
    bytes.truncate(static_cast<qsizetype>(size));
    return bytes;
}

} // namespace

QByteArray ToPng(const Picture& picture, double scale)
{
    if (picture.width * picture.height * scale * scale > MostPixels)
        throw Refusal(u"图太大，写不出 PNG，请写成 .svg"_s);
    ChineseFont font;
    Canvas canvas(static_cast<int>(std::ceil(picture.width * scale)),
                  static_cast<int>(std::ceil(picture.height * scale)));
    for (const Bar& bar : picture.bars)
        Draw(canvas, bar, scale);
    for (const Label& label : picture.labels)
        Draw(canvas, label, scale, font);
    return Packed(canvas);
}

} // namespace cli
