#pragma once

#include "rules/sql/Dialect.h"

#include <vector>

namespace rules {

/// Queries one over the other, each with the columns that a later one needs: what one step has named, the
/// next one may use any number of times, and it is reckoned once.
class StepList
{
public:
    /// `names` are those of the steps, in their order.
    explicit StepList(CStringArray names);

    /// Lets a step select `expression` under a name. `uses` are the columns in it that steps before have
    /// named, the name itself perhaps among them. The first step's expressions are over the table alone.
    void Define(const CString& step, const CString& name, const CString& expression,
                const CStringArray& uses = {});

    /// The steps as common table expressions, "name AS (SELECT ...)" each, those left out that define nothing
    /// needed. `wanted` are the columns that the last one gives. `source` is what stands behind FROM in the
    /// first one.
    CStringArray Text(const CStringArray& wanted, const CString& source, const Dialect& dialect) const;

private:
    struct Definition
    {
        CString name;
        CString expression;
        CStringArray uses;
    };
    struct Step
    {
        CString name;
        std::vector<Definition> definitions;
    };

    std::vector<CStringArray> SelectedFor(const CStringArray& wanted) const;
    static bool Defines(const Step& step, const CString& name);

    std::vector<Step> m_steps;
};

} // namespace rules
