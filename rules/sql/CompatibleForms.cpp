#include "rules/sql/CompatibleForms.h"

#include <QtCore/QHash>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

constexpr char32_t LastCharacter = 0x10FFFF;
constexpr char32_t FirstDecomposable = 0x80;
/// The orders of six marks of six kinds on one letter.
constexpr std::size_t MostOrders = 720;

CString TextOf(char32_t character)
{
    return CString::fromUcs4(&character, 1);
}

CString Decomposed(const CString& text)
{
    return text.normalized(CString::NormalizationForm_KD);
}

/// Every character that decomposes, by what it decomposes to: one character or several.
struct Decompositions
{
    QHash<CString, CString> variants; ///< of one character, all in one text
    QHash<CString, CStringArray> wholes;
    qsizetype longest = 0; ///< of the texts that are keys of `wholes`

    Decompositions()
    {
        for (char32_t c = FirstDecomposable; c <= LastCharacter; ++c) {
            if (QChar::isSurrogate(c) || QChar::decompositionTag(c) == QChar::NoDecomposition) continue;
            const CString whole = TextOf(c);
            const CString parts = Decomposed(whole);
            if (parts.toUcs4().size() == 1) {
                variants[parts] += whole;
            } else {
                wholes[parts].append(whole);
                longest = std::max(longest, parts.size());
            }
        }
    }
};

const Decompositions& AllDecompositions()
{
    static const Decompositions all;
    return all;
}

/// The orders in which the marks from `begin` may have been written: those of one class keep theirs, since
/// only marks of different classes are put in order.
std::vector<std::u32string> OrdersOf(const std::u32string& marks)
{
    const auto classOf = [](char32_t mark) { return QChar::combiningClass(mark); };
    std::vector<int> classes(marks.size());
    std::transform(marks.begin(), marks.end(), classes.begin(), classOf);
    std::vector<std::u32string> orders;
    do {
        if (orders.size() > MostOrders) break;
        std::u32string order;
        QHash<int, std::size_t> next;
        for (const int wanted : classes) {
            std::size_t& from = next[wanted];
            while (classOf(marks[from]) != wanted)
                ++from;
            order += marks[from++];
        }
        orders.push_back(order);
    } while (std::next_permutation(classes.begin(), classes.end()));
    return orders;
}

/// The decomposed text in every order of its marks.
std::vector<std::u32string> AllOrders(const std::u32string& text)
{
    std::vector<std::u32string> made{{}};
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t end = begin + 1;
        if (QChar::combiningClass(text[begin]) != 0)
            while (end < text.size() && QChar::combiningClass(text[end]) != 0)
                ++end;
        const std::vector<std::u32string> orders = OrdersOf(text.substr(begin, end - begin));
        if (made.size() * orders.size() > MostOrders)
            throw std::length_error(
                u"条件的值叠了太多附加符号，写不成 SQL：%1"_s.arg(CString::fromStdU32String(text))
                    .toStdString());
        std::vector<std::u32string> longer;
        for (const std::u32string& start : made)
            for (const std::u32string& order : orders)
                longer.push_back(start + order);
        made = std::move(longer);
        begin = end;
    }
    return made;
}

void AddReplacements(const CString& form, std::vector<Replacement>& replacements)
{
    const Decompositions& all = AllDecompositions();
    for (qsizetype begin = 0; begin < form.size(); ++begin)
        for (qsizetype length = 2; length <= all.longest && begin + length <= form.size(); ++length) {
            const CString parts = form.mid(begin, length);
            for (const CString& whole : all.wholes.value(parts))
                replacements.emplace_back(whole, parts);
        }
}

} // namespace

CompatibleForms CompatibleFormsOf(const CString& normalised)
{
    const Decompositions& all = AllDecompositions();
    const CString decomposed = Decomposed(normalised);
    CompatibleForms found;
    for (const std::u32string& order : AllOrders(decomposed.toStdU32String())) {
        AddReplacements(CString::fromStdU32String(order), found.replacements);
        CStringArray& places = found.forms.emplace_back();
        for (const char32_t character : order) {
            const CString plain = TextOf(character);
            places.append(plain + all.variants.value(plain));
            found.hasOthers = found.hasOthers || places.back() != plain;
        }
    }
    found.hasOthers =
        found.hasOthers || found.forms.size() > 1 || !found.replacements.empty() || decomposed != normalised;
    return found;
}

} // namespace rules
