#include "shared/LineDiff.h"

#include <algorithm>
#include <vector>

namespace shared {

namespace {

/// Entries of the table of common lengths, four bytes each.
constexpr qsizetype LargestTable = 25'000'000;

/// `Length(i, j)` is the length of the longest common subsequence of the lines from `i` and from `j` on.
class CommonLengths
{
public:
    CommonLengths(const CStringArray& before, const CStringArray& after)
        : m_width(after.size() + 1), m_lengths(static_cast<std::size_t>((before.size() + 1) * m_width), 0)
    {
        for (qsizetype i = before.size() - 1; i >= 0; --i)
            for (qsizetype j = after.size() - 1; j >= 0; --j)
                At(i, j) =
                    before[i] == after[j] ? At(i + 1, j + 1) + 1 : std::max(At(i + 1, j), At(i, j + 1));
    }

    int& At(qsizetype i, qsizetype j) { return m_lengths[static_cast<std::size_t>(i * m_width + j)]; }

private:
    qsizetype m_width;
    std::vector<int> m_lengths;
};

qsizetype CommonStart(const CStringArray& before, const CStringArray& after)
{
    return std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first - before.begin();
}

qsizetype CommonEnd(const CStringArray& before, const CStringArray& after, qsizetype start)
{
    qsizetype count = 0;
    while (count < std::min(before.size(), after.size()) - start &&
           before[before.size() - 1 - count] == after[after.size() - 1 - count])
        ++count;
    return count;
}

qsizetype Indentation(const CString& line)
{
    return std::find_if(line.begin(), line.end(),
                        [](QChar character) { return character != u' ' && character != u'\t'; }) -
           line.begin();
}

/// Moves an insertion up or down, as far as the lines around it are the same, so that it begins at its
/// outermost line: an inserted element is then shown whole instead of from the end tag before it to the end
/// tag inside it.
void AlignInsertion(LineChange& change, const CStringArray& after)
{
    if (!change.removed.isEmpty()) return;
    const qsizetype count = change.added.size();
    qsizetype first = change.line - 1;
    while (first > 0 && after[first - 1] == after[first + count - 1])
        --first;
    const auto depth = [&](qsizetype at) {
        return Indentation(after[at]) + Indentation(after[at + count - 1]);
    };
    qsizetype best = first;
    for (qsizetype at = first; at + count < after.size() && after[at] == after[at + count]; ++at)
        if (depth(at + 1) < depth(best)) best = at + 1;
    change.line = best + 1;
    change.added = after.mid(best, count);
}

/// The changes between texts that begin and end differently; `start` lines stand before them.
CArray<LineChange> CompareMiddle(const CStringArray& left, const CStringArray& right, qsizetype start)
{
    CommonLengths lengths(left, right);
    CArray<LineChange> changes;
    bool open = false;
    for (qsizetype i = 0, j = 0; i < left.size() || j < right.size();) {
        if (i < left.size() && j < right.size() && left[i] == right[j]) {
            open = false;
            ++i;
            ++j;
            continue;
        }
        if (!open) changes.append({start + j + 1, {}, {}});
        open = true;
        if (j == right.size() || (i < left.size() && lengths.At(i + 1, j) >= lengths.At(i, j + 1))) {
            changes.last().removed += left[i++];
        } else {
            changes.last().added += right[j++];
        }
    }
    return changes;
}

} // namespace

CArray<LineChange> CompareLines(const CStringArray& before, const CStringArray& after)
{
    // Most of a file is the same on both sides; what stands between is mostly small enough for the plain
    // table.
    const qsizetype start = CommonStart(before, after);
    const qsizetype end = CommonEnd(before, after, start);
    const CStringArray left = before.mid(start, before.size() - end - start);
    const CStringArray right = after.mid(start, after.size() - end - start);
    if (left.size() * right.size() > LargestTable) return {{start + 1, left, right}};
    CArray<LineChange> changes = CompareMiddle(left, right, start);
    for (LineChange& change : changes)
        AlignInsertion(change, after);
    return changes;
}

} // namespace shared
