#pragma once

#include "rules/Export.h"
#include "rules/check/CellSet.h"

#include <cstddef>
#include <vector>

namespace rules {

/// How much work a question may still cost, in comparisons of regions. Questions share one; when it is used
/// up, they answer that they do not know, and never guess.
struct Effort
{
    long long left = 0;
};

/// What a category may cost: about a second. Lists as people write them take a thousandth of it.
inline constexpr long long UsualEffort = 40'000'000;

/// Whether a region is covered by several others together, and what they leave of it.
///
/// A part is subtracted from the region one attribute after the other, which leaves pieces that do not meet,
/// and each piece is asked the same of the parts that meet it. Before that, cells that the parts do not tell
/// apart become one cell; where only the answer counts and not what is left, a cell goes that lies in every
/// part in which another one lies, too: who covers the other covers it as well. A piece is open when the
/// parts that meet it are smaller than it, all added up. The worst case grows exponentially all the same,
/// hence the effort.
class KTQDDE_RULES_EXPORT Cover
{
public:
    enum class Answer { Covered, Open, Unknown };
    enum class Purpose {
        Answer, ///< `Ask` and `SmallestCover` only
        Rest,   ///< `Rest`, too
    };

    /// A part: for each attribute its cells; null for all.
    using Part = std::vector<const CellSet*>;

    /// `target` must not be empty in any attribute. Both may go afterwards; `effort` must stay.
    Cover(const Part& target, const std::vector<Part>& parts, Purpose purpose, Effort& effort);

    /// Whether all parts together cover the target.
    Answer Ask();

    /// The smallest set of parts that covers it, by their indexes; of several the one found first, which
    /// prefers parts that stand in front. To be asked when `Ask` said so. `isSmallest` becomes false when it
    /// might be smaller.
    std::vector<std::size_t> SmallestCover(bool& isSmallest);

    /// What the parts leave, as regions that do not meet, at most `limit` of them. `isAll` becomes false
    /// when there is more, or might be.
    std::vector<Region> Rest(std::size_t limit, bool& isAll);

private:
    using Word = CellSet::Word;
    using Box = std::vector<Word>; ///< the words of all attributes, one behind the other

    struct Axis
    {
        std::size_t begin = 0; ///< of its words
        std::size_t end = 0;
        std::vector<std::vector<std::size_t>>
            cells;            ///< by cell here: the cells of the attribute that it stands for
        std::size_t size = 0; ///< cells of the attribute
    };

    void MakeAxis(std::size_t index, const Part& target, const std::vector<Part>& parts, Purpose purpose);
    double Volume(const Box& box) const;
    double SharedVolume(const Box& a, const Box& b) const;
    bool Meet(const Box& a, const Box& b) const;
    int AxesOutside(const Box& box, const Box& part) const;
    bool Spend(std::size_t comparisons);

    /// The parts among `ids` that meet the box, and which of them leaves the fewest pieces.
    struct Meeting
    {
        std::vector<std::size_t> ids;
        std::size_t best = 0; ///< the part
        int outside = 0;      ///< attributes in which the box stands out of it
        double volume = 0;    ///< of all meetings, added up
    };
    Meeting MeetingOf(const Box& box, const std::vector<std::size_t>& ids) const;

    Answer Ask(const Box& box, const std::vector<std::size_t>& ids);
    /// Calls `take` with each piece of the box that the part leaves, until it gives false; false then.
    template <typename Take>
    bool EachPiece(const Box& box, const Box& part, Take take) const;
    bool CollectRest(const Box& box, const std::vector<std::size_t>& ids, std::size_t limit,
                     std::vector<Box>& rest);
    Answer FindOpen(const Box& box, const std::vector<std::size_t>& ids, Box& open);
    std::vector<std::size_t> WithoutIdle(std::vector<std::size_t> ids);
    bool Extend(std::vector<std::size_t>& chosen, std::size_t size);
    Region RegionOf(const Box& box) const;

    std::vector<Axis> m_axes;
    Box m_target;
    std::vector<Box> m_parts;
    std::vector<std::size_t> m_all; ///< the indexes of the parts that meet the target
    Effort& m_effort;
};

} // namespace rules
