#pragma once

#include "rules/model/Configuration.h"

#include <cstddef>
#include <vector>

namespace rules {

/// Rules of one category that take the place of others: the piece of which every change of a draft is made.
/// It knows both sides and so can be taken back.
struct Splice
{
    CString category;           ///< its full text
    std::size_t position = 0;   ///< index of the first rule that goes, or before which rules come
    std::vector<Rule> removed;  ///< as they stand there
    std::vector<Rule> inserted; ///< with their ids
};

/// One change as a person makes it, and takes back, in one go.
struct Edit
{
    CString text;                ///< what it does, as a menu tells it behind 撤销: 删除 3 条规则
    std::vector<Splice> splices; ///< done in this order, taken back in the opposite one

    bool IsEmpty() const noexcept { return splices.empty(); }
    /// The change that takes this one back.
    Edit Inverse() const;
};

} // namespace rules
