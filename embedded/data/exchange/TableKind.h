#pragma once

namespace embedded {

/// A table that goes to and from a CSV file.
enum class TableKind {
    Catalogue,  ///< specialties, big and small categories
    Attributes, ///< attributes of small categories and where their values come from
    Bill,       ///< a bill library
    Quota,      ///< a quota library
    Guide,      ///< which items of a quota library go with a bill item
    Calc,       ///< calculation items with their rules, and the categories that they serve
    Libraries,  ///< the libraries themselves
};

/// Whether there is a table of that kind for every library, and not one for the whole catalogue.
constexpr bool IsOfALibrary(TableKind kind) noexcept
{
    return kind == TableKind::Bill || kind == TableKind::Quota || kind == TableKind::Guide;
}

} // namespace embedded
