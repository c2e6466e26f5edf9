#pragma once

#include "platform/Text.h"

#include <optional>
#include <vector>

namespace embedded {

/// Finds texts by the words in them. Letter case and the width of letters and digits do not count ("ＤＮ15"
/// finds "DN15"); everything that can be prepared is prepared when a text comes in.
class SearchIndex
{
public:
    /// Which entries a search looks at; nothing means all of them.
    using Scope = std::optional<std::vector<int>>;

    void Clear();
    /// Adds an entry; its position is the number of entries before it.
    void Add(const CString& number, const CString& name);

    /// The positions of the entries in `scope` whose number or name holds each of the words of `query`, in
    /// whatever order the words come; in the order of the scope. Words are separated by blanks; no word
    /// finds everything.
    std::vector<int> Find(const CString& query, const Scope& scope = std::nullopt) const;

private:
    std::vector<CString> m_texts;
};

} // namespace embedded
