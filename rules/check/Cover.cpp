#include "rules/check/Cover.h"

#include <algorithm>
#include <bit>
#include <map>
#include <utility>

namespace rules {

namespace {

constexpr std::size_t WordBits = CellSet::WordBits;
using Group = std::pair<CellSet, std::vector<std::size_t>>; // the parts that hold a cell, and the cells

/// Sums of volumes are rounded; what comes that near to each other is taken for equal.
constexpr double NearlyOne = 1 - 1e-9;
/// Beyond so many cells of one attribute, looking for those that another one stands for costs more than it
/// saves.
constexpr std::size_t MostCompared = 512;

/// Takes out the cells that lie in every part in which another one lies, too.
void DropEasyCells(std::vector<Group>& groups)
{
    std::vector<Group> hard;
    for (const Group& group : groups)
        if (std::none_of(groups.begin(), groups.end(), [&](const Group& other) {
                return other.first != group.first && other.first.IsWithin(group.first);
            }))
            hard.push_back(group);
    groups = std::move(hard);
}

} // namespace

Cover::Cover(const Part& target, const std::vector<Part>& parts, Purpose purpose, Effort& effort)
    : m_effort(effort)
{
    m_axes.resize(target.size());
    m_parts.resize(parts.size());
    for (std::size_t axis = 0; axis < target.size(); ++axis)
        MakeAxis(axis, target, parts, purpose);
    for (std::size_t part = 0; part < m_parts.size(); ++part)
        if (Meet(m_target, m_parts[part])) m_all.push_back(part);
}

/// Numbers the cells of the target anew, those that all parts treat alike as one, and appends the words of
/// this attribute.
void Cover::MakeAxis(std::size_t index, const Part& target, const std::vector<Part>& parts, Purpose purpose)
{
    Axis& axis = m_axes[index];
    axis.size = target[index]->Size();
    std::vector<Group> groups;
    std::map<CellSet, std::size_t> groupBySet;
    target[index]->Each([&](std::size_t cell) {
        CellSet holding(parts.size());
        for (std::size_t part = 0; part < parts.size(); ++part)
            if (parts[part][index] == nullptr || parts[part][index]->Has(cell)) holding.Add(part);
        const auto [place, isNew] = groupBySet.try_emplace(holding, groups.size());
        if (isNew) groups.emplace_back(std::move(holding), std::vector<std::size_t>());
        groups[place->second].second.push_back(cell);
    });
    if (purpose == Purpose::Answer && groups.size() <= MostCompared) DropEasyCells(groups);
    axis.begin = m_target.size();
    axis.end = axis.begin + (groups.size() + WordBits - 1) / WordBits;
    m_target.resize(axis.end);
    for (Box& part : m_parts)
        part.resize(axis.end);
    for (std::size_t cell = 0; cell < groups.size(); ++cell) {
        const std::size_t word = axis.begin + cell / WordBits;
        const Word bit = Word{1} << (cell % WordBits);
        m_target[word] |= bit;
        groups[cell].first.Each([&](std::size_t part) { m_parts[part][word] |= bit; });
        axis.cells.push_back(std::move(groups[cell].second));
    }
}

double Cover::Volume(const Box& box) const
{
    return SharedVolume(box, box);
}

double Cover::SharedVolume(const Box& a, const Box& b) const
{
    double volume = 1;
    for (const Axis& axis : m_axes) {
        int count = 0;
        for (std::size_t word = axis.begin; word < axis.end; ++word)
            count += std::popcount(a[word] & b[word]);
        volume *= count;
    }
    return volume;
}

bool Cover::Meet(const Box& a, const Box& b) const
{
    return std::all_of(m_axes.begin(), m_axes.end(), [&](const Axis& axis) {
        for (std::size_t word = axis.begin; word < axis.end; ++word)
            if ((a[word] & b[word]) != 0) return true;
        return false;
    });
}

/// In how many attributes the box has cells that the part has not.
int Cover::AxesOutside(const Box& box, const Box& part) const
{
    int outside = 0;
    for (const Axis& axis : m_axes)
        for (std::size_t word = axis.begin; word < axis.end; ++word)
            if ((box[word] & ~part[word]) != 0) {
                ++outside;
                break;
            }
    return outside;
}

bool Cover::Spend(std::size_t comparisons)
{
    m_effort.left -= static_cast<long long>(comparisons) + 1;
    return m_effort.left >= 0;
}

Cover::Meeting Cover::MeetingOf(const Box& box, const std::vector<std::size_t>& ids) const
{
    Meeting meeting;
    double bestVolume = 0;
    for (const std::size_t id : ids) {
        const double volume = SharedVolume(box, m_parts[id]);
        if (volume == 0) continue;
        const int outside = AxesOutside(box, m_parts[id]);
        if (meeting.ids.empty() || outside < meeting.outside ||
            (outside == meeting.outside && volume > bestVolume)) {
            meeting.best = id;
            meeting.outside = outside;
            bestVolume = volume;
        }
        meeting.ids.push_back(id);
        meeting.volume += volume;
        if (outside == 0) break;
    }
    return meeting;
}

template <typename Take>
bool Cover::EachPiece(const Box& box, const Box& part, Take take) const
{
    Box rest = box; // what has not been given out yet
    for (const Axis& axis : m_axes) {
        Box piece = rest;
        bool isEmpty = true;
        for (std::size_t word = axis.begin; word < axis.end; ++word) {
            piece[word] &= ~part[word];
            isEmpty = isEmpty && piece[word] == 0;
            rest[word] &= part[word];
        }
        if (!isEmpty && !take(piece)) return false;
    }
    return true;
}

Cover::Answer Cover::Ask()
{
    return Ask(m_target, m_all);
}

Cover::Answer Cover::Ask(const Box& box, const std::vector<std::size_t>& ids)
{
    if (!Spend(ids.size())) return Answer::Unknown;
    const Meeting meeting = MeetingOf(box, ids);
    if (meeting.ids.empty()) return Answer::Open;
    if (meeting.outside == 0) return Answer::Covered;
    if (meeting.volume < Volume(box) * NearlyOne) return Answer::Open;
    Answer answer = Answer::Covered;
    EachPiece(box, m_parts[meeting.best], [&](const Box& piece) {
        const Answer here = Ask(piece, meeting.ids);
        if (here != Answer::Covered) answer = here;
        return here != Answer::Open;
    });
    return answer;
}

/// Whether these parts cover the box; when they do not, `open` becomes a piece of it that none of them meets.
Cover::Answer Cover::FindOpen(const Box& box, const std::vector<std::size_t>& ids, Box& open)
{
    if (!Spend(ids.size())) return Answer::Unknown;
    const Meeting meeting = MeetingOf(box, ids);
    if (meeting.ids.empty()) {
        open = box;
        return Answer::Open;
    }
    Answer answer = Answer::Covered;
    EachPiece(box, m_parts[meeting.best], [&](const Box& piece) {
        answer = FindOpen(piece, meeting.ids, open);
        return answer == Answer::Covered;
    });
    return answer;
}

/// Takes out parts that the others make superfluous, those behind first.
std::vector<std::size_t> Cover::WithoutIdle(std::vector<std::size_t> ids)
{
    for (std::size_t i = ids.size(); i-- > 0 && m_effort.left >= 0;) {
        std::vector<std::size_t> fewer = ids;
        fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(i));
        if (Ask(m_target, fewer) == Answer::Covered) ids = std::move(fewer);
    }
    return ids;
}

/// Whether the chosen parts can be completed to a cover of `size` parts; they are then. What is still open
/// must be covered by one of the parts that hold a place of it, so only these are tried. Ends without an
/// answer when the effort is used up.
bool Cover::Extend(std::vector<std::size_t>& chosen, std::size_t size)
{
    Box place;
    const Answer answer = FindOpen(m_target, chosen, place);
    if (answer != Answer::Open) return answer == Answer::Covered;
    if (chosen.size() == size) return false;
    for (const Axis& axis : m_axes) { // its first cell in every attribute
        bool isFound = false;
        for (std::size_t word = axis.begin; word < axis.end; ++word) {
            place[word] = isFound ? 0 : place[word] & (~place[word] + 1);
            isFound = isFound || place[word] != 0;
        }
    }
    for (const std::size_t id : m_all) {
        if (!Meet(place, m_parts[id])) continue;
        chosen.push_back(id);
        if (Extend(chosen, size)) return true;
        chosen.pop_back();
        if (m_effort.left < 0) return false;
    }
    return false;
}

std::vector<std::size_t> Cover::SmallestCover(bool& isSmallest)
{
    std::vector<std::size_t> some = WithoutIdle(m_all);
    isSmallest = true;
    for (std::size_t size = 1; size < some.size(); ++size) {
        std::vector<std::size_t> chosen;
        if (Extend(chosen, size)) {
            std::sort(chosen.begin(), chosen.end());
            return chosen;
        }
        if (m_effort.left < 0) {
            isSmallest = false;
            break;
        }
    }
    return some;
}

std::vector<Region> Cover::Rest(std::size_t limit, bool& isAll)
{
    std::vector<Box> rest;
    isAll = CollectRest(m_target, m_all, limit, rest);
    std::vector<Region> regions;
    regions.reserve(rest.size());
    for (const Box& box : rest)
        regions.push_back(RegionOf(box));
    return regions;
}

bool Cover::CollectRest(const Box& box, const std::vector<std::size_t>& ids, std::size_t limit,
                        std::vector<Box>& rest)
{
    if (!Spend(ids.size())) return false;
    const Meeting meeting = MeetingOf(box, ids);
    if (meeting.ids.empty()) {
        if (rest.size() == limit) return false;
        rest.push_back(box);
        return true;
    }
    return EachPiece(box, m_parts[meeting.best],
                     [&](const Box& piece) { return CollectRest(piece, meeting.ids, limit, rest); });
}

Region Cover::RegionOf(const Box& box) const
{
    Region region;
    for (const Axis& axis : m_axes) {
        CellSet cells(axis.size);
        for (std::size_t i = 0; i < axis.cells.size(); ++i)
            if ((box[axis.begin + i / WordBits] >> (i % WordBits) & 1U) != 0)
                for (const std::size_t cell : axis.cells[i])
                    cells.Add(cell);
        region.push_back(std::move(cells));
    }
    return region;
}

} // namespace rules
