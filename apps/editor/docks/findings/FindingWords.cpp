#include "editor/docks/findings/FindingWords.h"

#include <array>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

using enum rules::FindingCode;

struct Words
{
    rules::FindingCode code;
    QStringView text;
};

constexpr std::array OfApplication{
    Words{NeverApplies, u"符合这条规则的构件，全部已被前面的规则拿走，它永远不会适用。点名的是合起来就能做到"
                        u"这一点的最少几条。"
                        "把它移到前面，或者删除。"},
    Words{PartlyHidden,
          u"前面的规则拿走了它的一部分构件，而且还伸到它的外面，例如两个范围有重叠。这里说明还剩下什么；"
          "完全在它之内的例外排在前面是常见写法，不提示。"},
    Words{DefaultNeverApplies, u"凡是各属性都有值的构件，都归了别的规则，轮不到默认规则。"},
    Words{Gap, u"上下都有规则，中间的值却只能归默认规则。属性有值列表时，只看列表里的值。"},
    Words{NotDecided, u"规则太复杂，检查到规定的工作量就停下了，没有得出结论。"},
};

constexpr std::array OfConditions{
    Words{NoConditions, u"这条规则没有条件，又不是默认规则，会把剩下的构件全部拿走。"},
    Words{NoAttribute, u"条件没有写属性，永远不会满足。"},
    Words{UnknownOperator, u"运算符是空的，或者在这个位置不认识，条件永远不会满足。"},
    Words{EmptyValue, u"＝ 后面没有值，永远不会满足；≠ 后面没有值，什么值都满足。"},
    Words{BoundNotANumber, u"范围的界限不是数字，条件永远不会满足。"},
    Words{BoundsReversed, u"下限在上限之上，或者两者之间一个数也没有。"},
    Words{NoBounds, u"范围没有界限，任何数字都满足。"},
    Words{Contradiction, u"各个条件单独都能满足，合在一起不能。"},
    Words{FullWidthDigits, u"数字是全角的。计算时与半角一样，但容易看错。"},
    Words{UnknownAttribute, u"这个小类没有这个属性。"},
    Words{RangeNotAllowed, u"编辑时这个属性只能等于或不等于，不能用范围。"},
    Words{ValueNotInList, u"这个值不在属性的值列表里。"},
};

constexpr std::array OfItems{
    Words{NoItems, u"规则没有套清单或定额，收下的构件不会套价。"},
    Words{RepeatedItem, u"同一个编号套了两次，计算式也一样，工程量会算两遍。"},
    Words{AddedQuantities,
          u"同一个编号套了两次，计算式不同，两个工程量会相加。水平管和立管套同一项时就该这样。"},
    Words{NumberTwoNames, u"同一个清单编号有两个名称。清单里编号只能出现一次。"},
    Words{NumberTwoUnits, u"同一个清单编号有两个单位。清单里编号只能出现一次。"},
    Words{NumberTwoFeatures, u"套同一个清单编号的两条规则，对同一属性要求的值不同。清单会把它们合计，"
                             "项目特征里不写这个属性。"},
    Words{BadNumber, u"编号不合当前清单库的编码规则。"},
    Words{UnknownItem, u"当前的库里没有这一项。"},
    Words{OtherLibrary, u"这一项属于没有使用的库，不计价，也不再检查。"},
    Words{QuotaNotOnBill, u"指引把这个定额挂在别的清单下。"},
    Words{UnfitUnit, u"计算式算出来的与单位不符，例如用长度计台。"},
    Words{UnitMultiple, u"单位旁边保存的倍数，与单位开头的数字不同。"},
    Words{NoFormula, u"没有工程量计算式，就没有工程量。"},
    Words{BadFormula, u"计算式写得不对。"},
    Words{UnknownName, u"计算式里的名称既不是计算项，也不是这个小类的属性或计算项用到的工程量。"},
};

constexpr std::array OfFiles{
    Words{NoDefault, u"小类没有默认规则。下次保存时会补上一条空的。"},
    Words{SeveralDefaults, u"默认规则有几条，只有第一条起作用。"},
    Words{DefaultNotLast, u"默认规则后面还有规则。默认规则总是最后才起作用，但别的规则移不到它后面去。"},
    Words{RepeatedId, u"两条规则，或一条规则里的两个条件、两项，内部编号相同，改后一个会改到前一个。"},
    Words{RepeatedElement, u"文件中有两段，只有第一段会被读到，另一段下次保存时丢失。"},
    Words{UnknownCategory, u"工程里没有这个类别，下次保存它的专业时会丢失。"},
    Words{UnknownElement, u"文件里有不认识的元素，或者列表里夹着注释。"},
};

template <typename List>
QStringView Find(const List& list, rules::FindingCode code)
{
    for (const Words& words : list)
        if (words.code == code) return words.text;
    return {};
}

} // namespace

CString ExplanationOf(rules::FindingCode code)
{
    for (const QStringView text :
         {Find(OfApplication, code), Find(OfConditions, code), Find(OfItems, code), Find(OfFiles, code)})
        if (!text.isEmpty()) return text.toString();
    return {};
}

} // namespace editor
