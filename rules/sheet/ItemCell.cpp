#include "rules/sheet/ItemCell.h"

#include "rules/sheet/SheetColumns.h"

using namespace Qt::StringLiterals;

namespace rules {

namespace {

template <typename Record>
ItemWords WordsOf(const CString& number, const Record& record, const std::optional<Record>& usual,
                  bool isBelow)
{
    ItemWords words{isBelow, number};
    if (!usual || usual->strFormula != record.strFormula) words.formula = record.strFormula;
    const bool takesFittings = record.strAnnex == sheet::Yes;
    if (takesFittings != (usual && usual->strAnnex == sheet::Yes)) words.withFittings = takesFittings;
    return words;
}

CString TextOf(const std::vector<ItemWords>& lines)
{
    CStringArray texts;
    for (const ItemWords& line : lines) {
        CString text = line.isBelow ? sheet::Below : CString();
        text += line.number;
        if (line.formula) text += sheet::BeforeFormula + *line.formula;
        if (line.withFittings) text += *line.withFittings ? sheet::WithFittings : sheet::WithoutFittings;
        texts.append(text);
    }
    return texts.join(u'\n');
}

/// The text, if it is read back as the lines.
std::optional<CString> Checked(const std::vector<ItemWords>& lines)
{
    const CString text = TextOf(lines);
    const auto back = ReadItems(text);
    return back && *back == lines ? std::optional(text) : std::nullopt;
}

bool TakeEnd(CString& text, const CString& end)
{
    if (!text.endsWith(end)) return false;
    text.chop(end.size());
    return true;
}

ItemWords ReadLine(CString text)
{
    ItemWords words;
    words.isBelow = text.startsWith(sheet::Below);
    if (words.isBelow) text = text.sliced(sheet::Below.size());
    if (TakeEnd(text, sheet::WithFittings))
        words.withFittings = true;
    else if (TakeEnd(text, sheet::WithoutFittings))
        words.withFittings = false;
    const qsizetype colon = text.indexOf(sheet::BeforeFormula);
    words.number = text.left(colon < 0 ? text.size() : colon).trimmed();
    if (colon >= 0) words.formula = text.mid(colon + sheet::BeforeFormula.size()).trimmed();
    return words;
}

} // namespace

std::optional<std::vector<ItemWords>> ReadItems(const CString& cell)
{
    std::vector<ItemWords> lines;
    for (const CString& part : cell.split(u'\n')) {
        const CString text = part.trimmed();
        if (text.isEmpty()) continue;
        ItemWords line = ReadLine(text);
        if (line.number.isEmpty() || (line.isBelow && lines.empty())) return std::nullopt;
        lines.push_back(std::move(line));
    }
    return lines;
}

std::optional<CString> BillCell(const std::vector<BillItem>& items, const CString& category,
                                const SheetItems& known)
{
    std::vector<ItemWords> lines;
    for (const BillItem& item : items) {
        const CString& number = item.record.strQdId;
        lines.push_back(WordsOf(number, item.record, known.bill(number, category), false));
        for (const QuotaItem& quota : item.quotas) {
            const CString& below = quota.record.strDeId;
            lines.push_back(WordsOf(below, quota.record, known.quotaOfBills(below, category), true));
        }
    }
    return Checked(lines);
}

std::optional<CString> QuotaCell(const std::vector<QuotaItem>& items, const CString& category,
                                 const SheetItems& known)
{
    std::vector<ItemWords> lines;
    for (const QuotaItem& item : items) {
        const CString& number = item.record.strDeId;
        lines.push_back(WordsOf(number, item.record, known.quota(number, category), false));
    }
    return Checked(lines);
}

} // namespace rules
