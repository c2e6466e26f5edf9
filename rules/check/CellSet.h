#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace rules {

/// A set of small whole numbers, one bit each. Sets that are combined have the same length.
class CellSet
{
public:
    using Word = std::uint64_t;
    static constexpr std::size_t WordBits = 64;

    CellSet() = default;
    explicit CellSet(std::size_t size) : m_words((size + WordBits - 1) / WordBits), m_size(size) {}

    /// How many numbers there are, in the set or not.
    std::size_t Size() const noexcept { return m_size; }

    static CellSet AllOf(std::size_t size)
    {
        CellSet all(size);
        for (std::size_t i = 0; i < size; ++i)
            all.Add(i);
        return all;
    }

    void Add(std::size_t i) { m_words[i / WordBits] |= Word{1} << (i % WordBits); }
    void Remove(std::size_t i) { m_words[i / WordBits] &= ~(Word{1} << (i % WordBits)); }
    bool Has(std::size_t i) const { return (m_words[i / WordBits] >> (i % WordBits) & 1U) != 0; }

    bool IsEmpty() const
    {
        for (const Word word : m_words)
            if (word != 0) return false;
        return true;
    }

    /// The smallest element; the set must have one.
    std::size_t First() const
    {
        std::size_t word = 0;
        while (m_words[word] == 0)
            ++word;
        return word * WordBits + static_cast<std::size_t>(std::countr_zero(m_words[word]));
    }

    std::size_t Count() const
    {
        std::size_t count = 0;
        for (const Word word : m_words)
            count += static_cast<std::size_t>(std::popcount(word));
        return count;
    }

    bool Meets(const CellSet& other) const
    {
        for (std::size_t i = 0; i < m_words.size(); ++i)
            if ((m_words[i] & other.m_words[i]) != 0) return true;
        return false;
    }

    bool IsWithin(const CellSet& other) const
    {
        for (std::size_t i = 0; i < m_words.size(); ++i)
            if ((m_words[i] & ~other.m_words[i]) != 0) return false;
        return true;
    }

    CellSet& operator&=(const CellSet& other)
    {
        for (std::size_t i = 0; i < m_words.size(); ++i)
            m_words[i] &= other.m_words[i];
        return *this;
    }

    CellSet& operator|=(const CellSet& other)
    {
        for (std::size_t i = 0; i < m_words.size(); ++i)
            m_words[i] |= other.m_words[i];
        return *this;
    }

    CellSet& operator-=(const CellSet& other)
    {
        for (std::size_t i = 0; i < m_words.size(); ++i)
            m_words[i] &= ~other.m_words[i];
        return *this;
    }

    /// Takes out all from `limit` on.
    void CutAt(std::size_t limit)
    {
        const std::size_t word = limit / WordBits;
        if (word >= m_words.size()) return;
        m_words[word] &= (Word{1} << (limit % WordBits)) - 1;
        for (std::size_t i = word + 1; i < m_words.size(); ++i)
            m_words[i] = 0;
    }

    /// Calls `take` with every element, in ascending order.
    template <typename Take>
    void Each(Take take) const
    {
        for (std::size_t i = 0; i < m_words.size(); ++i)
            for (Word word = m_words[i]; word != 0; word &= word - 1)
                take(i * WordBits + static_cast<std::size_t>(std::countr_zero(word)));
    }

    auto operator<=>(const CellSet&) const = default;

private:
    std::vector<Word> m_words;
    std::size_t m_size = 0;
};

/// A set of components: for each attribute the cells that they may have.
using Region = std::vector<CellSet>;

} // namespace rules
