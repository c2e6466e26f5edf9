#pragma once

#include "rules/check/CellSpace.h"

/// Regions as people read them.
namespace rules {

/// What some cells of an attribute are: "材质＝镀锌钢管或PPR管", "65＜公称直径＜80",
/// "材质不是铜管，或未填写". Empty when they are all.
KTQDDE_RULES_EXPORT CString CellsText(const CellSpace::Attribute& attribute, const CellSet& cells);

/// The same of all attributes, joined by "，且"; "全部构件" for a region that leaves nothing out.
KTQDDE_RULES_EXPORT CString RegionText(const CellSpace& space, const Region& region);

/// Several regions, the first ones only when there are many. `isAll` tells whether they are all that there
/// are.
KTQDDE_RULES_EXPORT CString RegionsText(const CellSpace& space, const std::vector<Region>& regions,
                                        bool isAll);

/// Steps of an attribute's line, from the first to the last: "65＜公称直径＜80", "公称直径＝20、25".
KTQDDE_RULES_EXPORT CString GapText(const CellSpace::Attribute& attribute, std::size_t first,
                                    std::size_t last);

} // namespace rules
