#pragma once

#include "platform/Text.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>

namespace cli {

/// The system's font for Chinese texts, plain or bold, to be drawn with.
class ChineseFont
{
public:
    /// Raises `Refusal` when the system has none.
    ChineseFont();
    ~ChineseFont();
    ChineseFont(const ChineseFont&) = delete;
    ChineseFont& operator=(const ChineseFont&) = delete;

    /// The face at that size in pixels; of a system without a bold one the plain one. Not owned.
    FT_Face At(double size, bool isBold);

private:
    FT_Face Open(bool isBold) const;

    FT_Library m_library = nullptr;
    FT_Face m_plain = nullptr;
    FT_Face m_bold = nullptr;
};

} // namespace cli
