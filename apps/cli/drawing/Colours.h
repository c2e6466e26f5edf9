#pragma once

#include "cli/drawing/Picture.h"

#include <array>
#include <cstdint>

namespace cli {

/// The colours of an ink on light and on dark paper, as 0xRRGGBB.
struct Colour
{
    const char* name;
    std::uint32_t light;
    std::uint32_t dark;
};

/// By `Ink`. Blue and orange are told apart by those who see few colours, too.
inline constexpr std::array<Colour, 7> Colours{{{"paper", 0xFFFFFF, 0x1E1F22},
                                                {"text", 0x1F2328, 0xE6E6E6},
                                                {"muted", 0x656D76, 0xA0A6AD},
                                                {"track", 0xEAEEF2, 0x34373C},
                                                {"caught", 0x2F6FB3, 0x5B9BD9},
                                                {"default", 0xD9822B, 0xE8A04C},
                                                {"uncaught", 0xB42318, 0xF07B6E}}};

inline const Colour& ColourOf(Ink ink)
{
    return Colours[static_cast<std::size_t>(ink)];
}

} // namespace cli
