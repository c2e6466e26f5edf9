#include "cli/drawing/ChineseFont.h"

#include "cli/reading/Failure.h"

#include <fontconfig/fontconfig.h>

#include <cmath>
#include <new>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

struct Destroy
{
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, Destroy>;

/// The font that the system draws Chinese texts with; null for none that has their characters.
Pattern Find(bool isBold)
{
    const Pattern wanted(FcNameParse(reinterpret_cast<const FcChar8*>("sans-serif:lang=zh-cn")));
    if (!wanted) throw std::bad_alloc();
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, isBold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    Pattern found(FcFontMatch(nullptr, wanted.get(), &result));
    FcCharSet* characters = nullptr;
    constexpr FcChar32 Probe = U'规';
    if (!found || FcPatternGetCharSet(found.get(), FC_CHARSET, 0, &characters) != FcResultMatch ||
        FcCharSetHasChar(characters, Probe) == FcFalse)
        return nullptr;
    return found;
}

} // namespace

ChineseFont::ChineseFont()
{
    if (FT_Init_FreeType(&m_library) != 0) throw std::bad_alloc();
    m_plain = Open(false);
    m_bold = Open(true);
    FcFini(); // the files are known; nothing else in this program looks for fonts
    if (m_plain == nullptr) {
        FT_Done_FreeType(m_library);
        throw Refusal(u"系统里没有中文字体，写不出 PNG，请写成 .svg"_s);
    }
}

ChineseFont::~ChineseFont()
{
    FT_Done_FreeType(m_library); // with its faces
}

FT_Face ChineseFont::Open(bool isBold) const
{
    const Pattern found = Find(isBold);
    FcChar8* file = nullptr;
    int index = 0;
    if (!found || FcPatternGetString(found.get(), FC_FILE, 0, &file) != FcResultMatch) return nullptr;
    FcPatternGetInteger(found.get(), FC_INDEX, 0, &index);
    FT_Face face = nullptr;
    return FT_New_Face(m_library, reinterpret_cast<const char*>(file), index, &face) == 0 ? face : nullptr;
}

FT_Face ChineseFont::At(double size, bool isBold)
{
    FT_Face face = isBold && m_bold != nullptr ? m_bold : m_plain;
    constexpr double Fraction = 64; // sizes are told in such parts
    FT_Set_Char_Size(face, 0, std::lround(size * Fraction), 72, 72);
    return face;
}

} // namespace cli
