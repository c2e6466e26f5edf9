#pragma once

#include "rules/model/Configuration.h"

#include <cstddef>
#include <vector>

namespace rules {

/// A list of rules in which pieces are replaced one behind the other. It keeps a gap where the last one was,
/// so that pieces all over the list, in rising or falling order, cost no more than one walk over it.
class SplicedList
{
public:
    explicit SplicedList(std::vector<Rule> rules) : m_before(std::move(rules)) {}

    /// Raises `std::logic_error`, with nothing replaced, when `removed` is not what stands there.
    void Replace(std::size_t position, const std::vector<Rule>& removed, const std::vector<Rule>& inserted);

    std::vector<Rule> Take() &&;

private:
    void MoveGap(std::size_t position);

    std::vector<Rule> m_before; ///< the gap
    std::vector<Rule> m_behind; ///< the gap, the last rule first
};

} // namespace rules
