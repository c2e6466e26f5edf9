#include "presenter/DerivedAttributes.h"

#include <algorithm>
#include <initializer_list>

using namespace Qt::StringLiterals;

namespace {

bool ContainsAny(const CString& text, std::initializer_list<QStringView> parts)
{
    return std::any_of(parts.begin(), parts.end(), [&](QStringView part) { return text.contains(part); });
}

} // namespace

CArray<DerivedAttribute> DerivedAttributes(const CString& categoryText)
{
    if (categoryText.contains(u"暖通\\风管"_s))
        return {{u"周长(mm)"_s, u"AM_Perimeter"_s},
                {u"长边(mm)"_s, u"AM_LongEdge"_s},
                {u"直径(mm)"_s, u"AM_Diameter"_s}};
    const bool cabinet = categoryText.contains(u"电气\\配电箱柜"_s) && !categoryText.contains(u"元件装置"_s);
    if (cabinet || categoryText.contains(u"弱电\\箱柜\\接线箱"_s))
        return {{u"半周长(mm)"_s, u"AM_SemiPerimeter"_s}};
    if (ContainsAny(categoryText,
                    {u"电气\\电缆桥架\\桥架", u"电气\\电缆桥架\\托盘", u"电气\\电缆桥架\\组合式桥架",
                     u"弱电\\线槽桥架\\线槽", u"弱电\\线槽桥架\\桥架"}))
        return {{u"宽+高(mm)"_s, u"AM_SemiPerimeter"_s}, {u"宽+高×2(mm)"_s, u"AM_SPerimeter"_s}};
    return {};
}
