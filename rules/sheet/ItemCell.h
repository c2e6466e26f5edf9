#pragma once

#include "rules/model/Configuration.h"
#include "rules/sheet/SheetItems.h"

#include <optional>

/// Items as the cells of a table, one a line: 031001001001：管道长度. A number alone has the quantity that
/// its library gives it, one with a colon and nothing behind it has none. A quota item below a bill item
/// stands behind └. Whether fittings are taken in stands at the end, in brackets, where it differs from the
/// library.
namespace rules {

/// What a line says of an item.
struct ItemWords
{
    bool isBelow = false;
    CString number;
    std::optional<CString> formula{};   ///< nothing for that of the library
    std::optional<bool> withFittings{}; ///< the same

    bool operator==(const ItemWords&) const = default;
};

/// The lines of a cell; nothing when one of them has no number, or the first stands below none.
std::optional<std::vector<ItemWords>> ReadItems(const CString& cell);

/// The cell that says the items of a rule of that small category; nothing when none does.
std::optional<CString> BillCell(const std::vector<BillItem>& items, const CString& category,
                                const SheetItems& known);
std::optional<CString> QuotaCell(const std::vector<QuotaItem>& items, const CString& category,
                                 const SheetItems& known);

/// The item that the words say: `record`, which is that of the library or of another rule, with what they say
/// otherwise.
template <typename Record>
Record Said(const ItemWords& words, Record record)
{
    if (words.formula) record.strFormula = *words.formula;
    if (words.withFittings)
        record.strAnnex = *words.withFittings ? QStringLiteral("是") : QStringLiteral("否");
    return record;
}

} // namespace rules
