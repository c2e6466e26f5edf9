#pragma once

#include <vector>

namespace tree {

/// The first node with that id, or null. Ids may repeat in a file; the first one counts.
template <typename T>
T* FindById(const std::vector<T*>& nodes, int id) noexcept
{
    for (T* node : nodes)
        if (node->GetId() == id) return node;
    return nullptr;
}

} // namespace tree
