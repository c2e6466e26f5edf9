#include "rules/bill/IdCheck.h"

#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryFile>

#include <algorithm>
#include <array>
#include <utility>

namespace rules {

namespace {

/// Hashes are looked at in parts by their first bits, each so small that it stays in the processor's cache.
constexpr unsigned PartBits = 10;
constexpr std::size_t Parts = std::size_t{1} << PartBits;
constexpr unsigned Shift = 64 - PartBits;

/// Where each part begins, and behind the last one the end.
using Offsets = std::array<std::size_t, Parts + 1>;

IdHash HashOf(QStringView id)
{
    static const std::array<std::size_t, 2> Seeds{
        static_cast<std::size_t>(QRandomGenerator::global()->generate64()),
        static_cast<std::size_t>(QRandomGenerator::global()->generate64())};
    if constexpr (sizeof(std::size_t) >= sizeof(IdHash))
        return qHash(id, Seeds[0]);
    else
        return (IdHash{qHash(id, Seeds[0])} << 32U) ^ qHash(id, Seeds[1]);
}

/// Puts hashes in the order of their parts.
Offsets Partition(const std::vector<IdHash>& hashes, std::vector<IdHash>& to)
{
    Offsets offsets{};
    for (const IdHash hash : hashes)
        ++offsets[(hash >> Shift) + 1];
    for (std::size_t part = 0; part < Parts; ++part)
        offsets[part + 1] += offsets[part];
    Offsets next = offsets;
    to.resize(hashes.size());
    for (const IdHash hash : hashes)
        to[next[hash >> Shift]++] = hash;
    return offsets;
}

/// Finds hashes that are the same among those of one part, in a table that is used again and again.
class SamePart
{
public:
    void Look(const IdHash* begin, std::size_t count, IdHashes& repeated)
    {
        std::size_t size = 64;
        while (size < 2 * count)
            size *= 2;
        m_slots.assign(size, 0);
        for (std::size_t i = 0; i < count; ++i) {
            const IdHash hash = begin[i] == 0 ? 1 : begin[i]; // 0 marks a free slot
            std::size_t slot = hash & (size - 1);
            while (m_slots[slot] != 0 && m_slots[slot] != hash)
                slot = (slot + 1) & (size - 1);
            if (m_slots[slot] == hash) repeated.insert(begin[i]);
            m_slots[slot] = hash;
        }
    }

private:
    std::vector<IdHash> m_slots;
};

} // namespace

IdCheck::IdCheck() = default;
IdCheck::~IdCheck() = default;

bool EveryId::IsNew(QStringView id)
{
    if (m_ids.find(id) != m_ids.end()) return false;
    m_ids.insert(id.toString());
    return true;
}

/// Hashes in a temporary file, run by run, each in the order of the parts.
class HashedIds::Spilled
{
public:
    Spilled()
    {
        if (!m_file.open()) Fail();
    }

    void Write(const std::vector<IdHash>& hashes, const Offsets& offsets)
    {
        m_runs.push_back({m_file.pos(), offsets});
        const auto size = static_cast<qint64>(hashes.size() * sizeof(IdHash));
        if (m_file.write(reinterpret_cast<const char*>(hashes.data()), size) != size || !m_file.flush())
            Fail();
    }

    /// Adds what the runs have of a part.
    void Read(std::size_t part, std::vector<IdHash>& to)
    {
        for (const Run& run : m_runs) {
            const std::size_t count = run.offsets[part + 1] - run.offsets[part];
            if (count == 0) continue;
            const std::size_t before = to.size();
            to.resize(before + count);
            const auto size = static_cast<qint64>(count * sizeof(IdHash));
            const auto at = run.position + static_cast<qint64>(run.offsets[part] * sizeof(IdHash));
            if (!m_file.seek(at) || m_file.read(reinterpret_cast<char*>(to.data() + before), size) != size)
                Fail();
        }
    }

private:
    struct Run
    {
        qint64 position = 0;
        Offsets offsets;
    };

    [[noreturn]] void Fail() const
    {
        throw platform::FileError(platform::FromNative(m_file.fileName()), m_file.errorString());
    }

    QTemporaryFile m_file;
    std::vector<Run> m_runs;
};

HashedIds::HashedIds(std::size_t most) : m_most(most) {}

HashedIds::~HashedIds() = default;

bool HashedIds::IsNew(QStringView id)
{
    if (m_hashes.size() == m_most) Spill();
    m_hashes.push_back(HashOf(id));
    return true;
}

void HashedIds::Spill()
{
    if (!m_spilled) m_spilled = std::make_unique<Spilled>();
    std::vector<IdHash> ordered;
    const Offsets offsets = Partition(m_hashes, ordered);
    m_spilled->Write(ordered, offsets);
    m_hashes.clear();
}

IdHashes HashedIds::Repeated()
{
    IdHashes repeated;
    SamePart same;
    std::vector<IdHash> ordered;
    const Offsets offsets = Partition(m_hashes, ordered);
    m_hashes = {};
    std::vector<IdHash> all;
    for (std::size_t part = 0; part < Parts; ++part) {
        const IdHash* const begin = ordered.data() + offsets[part];
        const std::size_t count = offsets[part + 1] - offsets[part];
        if (!m_spilled) {
            same.Look(begin, count, repeated);
            continue;
        }
        all.assign(begin, begin + count);
        m_spilled->Read(part, all);
        same.Look(all.data(), all.size(), repeated);
    }
    return repeated;
}

SuspectedIds::SuspectedIds(IdHashes suspected) : m_suspected(std::move(suspected)) {}

bool SuspectedIds::IsNew(QStringView id)
{
    return !m_suspected.contains(HashOf(id)) || m_ids.IsNew(id);
}

} // namespace rules
