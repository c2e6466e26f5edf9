#pragma once

#include "rules/model/Facts.h"

#include <optional>
#include <vector>

namespace editor {

/// One component of a take-off table, with all that the table says of it.
struct Component
{
    CString id{};
    CString name{};
    CString category{}; ///< specialty, big and small category joined by backslashes
    CStringArray headers{};
    std::vector<CString> cells{}; ///< beside the headers
};

/// The column that gives an attribute or a quantity of a category, as pricing finds it: that of its name,
/// else of its code, else of its name with the unit. `headers` are in normalised form (see
/// `rules::Normalised`).
std::optional<std::size_t> ColumnFor(const CString& name, const rules::CategoryFacts& facts,
                                     const std::vector<CString>& headers);

/// Headers in that form.
std::vector<CString> NormalisedHeaders(const CStringArray& headers);

} // namespace editor
