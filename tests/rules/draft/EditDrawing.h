#pragma once

#include "rules/draft/Draft.h"
#include "rules/draft/PlainRules.h"
#include "rules/draft/RuleDrawing.h"

#include <vector>

namespace test {

/// How many edits a random trial does: what the environment variable KTQDDE_EDITS says, else `usual`.
int EditsAsked(int usual);
/// What KTQDDE_EDIT_SEED says, which repeats a run, else any; it is printed.
unsigned EditSeed();

/// What a configuration holds of those categories; one that it has not holds a default rule alone.
PlainRules::Lists ListsIn(const std::vector<CString>& categories, const rules::Configuration& configuration);
/// The rules of these categories of 给排水\管道, those that nobody has touched left out.
rules::Configuration ConfigurationOfLists(const PlainRules::Lists& lists);

/// Draws edits of a draft that come to the same in plain lists.
class EditDrawing
{
public:
    /// Of these categories of 给排水\管道, which the lists have; `isAll` when the draft has rules in no
    /// others. The drawing must outlive this.
    EditDrawing(RuleDrawing& drawing, std::vector<CString> categories, bool isAll)
        : m_drawing(drawing), m_categories(std::move(categories)), m_isAll(isAll)
    {
    }

    /// An edit of the draft, which may be empty; it is done to the lists.
    rules::Edit Draw(const rules::Draft& draft, PlainRules& plain);

private:
    rules::Edit ListEdit(std::size_t kind, const CString& category, const rules::Draft& draft,
                         PlainRules& plain);
    rules::Edit OtherEdit(std::size_t kind, const CString& category, const rules::Draft& draft,
                          PlainRules& plain);
    rules::Edit TowardsAnother(const rules::Draft& draft, PlainRules& plain);

    RuleDrawing& m_drawing;
    std::vector<CString> m_categories;
    bool m_isAll;
};

} // namespace test
