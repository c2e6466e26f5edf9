#include "embedded/windows/SearchIndex.h"

#include <algorithm>
#include <numeric>

namespace embedded {

namespace {

CString Fold(const CString& text)
{
    return text.normalized(CString::NormalizationForm_KC).toCaseFolded();
}

bool HoldsAll(const CString& text, const CStringArray& words)
{
    return std::all_of(words.begin(), words.end(), [&](const CString& word) { return text.contains(word); });
}

} // namespace

void SearchIndex::Clear()
{
    m_texts.clear();
}

void SearchIndex::Add(const CString& number, const CString& name)
{
    // The separator keeps a word from being found half in the number and half in the name.
    m_texts.push_back(Fold(number + u'\n' + name));
}

std::vector<int> SearchIndex::Find(const CString& query, const Scope& scope) const
{
    std::vector<int> found;
    if (scope) {
        found = *scope;
    } else {
        found.resize(m_texts.size());
        std::iota(found.begin(), found.end(), 0);
    }
    const CStringArray words = Fold(query).simplified().split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty()) return found;
    std::erase_if(found,
                  [&](int entry) { return !HoldsAll(m_texts[static_cast<std::size_t>(entry)], words); });
    return found;
}

} // namespace embedded
