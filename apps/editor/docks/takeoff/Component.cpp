#include "editor/docks/takeoff/Component.h"

#include "rules/match/CellText.h"

#include <algorithm>

namespace editor {

std::optional<std::size_t> ColumnFor(const CString& name, const rules::CategoryFacts& facts,
                                     const std::vector<CString>& headers)
{
    CStringArray forms{rules::Normalised(name)};
    const auto known = std::find_if(facts.begin(), facts.end(), [&](const rules::AttributeFacts& fact) {
        return rules::Normalised(fact.name) == forms.first();
    });
    if (known != facts.end()) {
        forms.append(rules::Normalised(known->code));
        forms.append(rules::Normalised(rules::WithUnit(known->name, known->unit)));
    }
    for (const CString& form : forms) {
        const auto place = form.isEmpty() ? headers.end() : std::find(headers.begin(), headers.end(), form);
        if (place != headers.end()) return static_cast<std::size_t>(place - headers.begin());
    }
    return std::nullopt;
}

std::vector<CString> NormalisedHeaders(const CStringArray& headers)
{
    std::vector<CString> normalised;
    for (const CString& header : headers)
        normalised.push_back(rules::Normalised(header));
    return normalised;
}

} // namespace editor
