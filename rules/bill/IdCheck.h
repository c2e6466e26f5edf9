#pragma once

#include "platform/Text.h"
#include "rules/Export.h"
#include "rules/match/TextKey.h"

#include <cstdint>
#include <memory>
#include <unordered_set>
#include <vector>

/// Ids that come twice. Whoever has components in memory remembers every id; a table of any length is read
/// with the hashes of its ids alone, and a second time only when two are the same.
namespace rules {

/// Decides which ids a builder takes for new. Ids come in the order of the components, empty ones do not
/// come.
class KTQDDE_RULES_EXPORT IdCheck
{
public:
    IdCheck();
    virtual ~IdCheck();
    IdCheck(const IdCheck&) = delete;
    IdCheck& operator=(const IdCheck&) = delete;

    /// Whether the id has not come before, as far as this one can tell.
    virtual bool IsNew(QStringView id) = 0;
};

/// Remembers every id, in memory that grows with them.
class KTQDDE_RULES_EXPORT EveryId final : public IdCheck
{
public:
    bool IsNew(QStringView id) override;

private:
    std::unordered_set<CString, TextHash, TextEqual> m_ids;
};

/// The hashes of ids: the same number for the same text, within one run of the program.
using IdHash = std::uint64_t;
using IdHashes = std::unordered_set<IdHash>;

/// Takes every id for new and keeps its hash: the latest million in memory, those before in a temporary file
/// that goes with this object. `Repeated` tells afterwards which hashes came more than once.
class KTQDDE_RULES_EXPORT HashedIds final : public IdCheck
{
public:
    /// `most` is how many hashes are kept in memory.
    explicit HashedIds(std::size_t most = std::size_t{1} << 20);
    ~HashedIds() override;

    /// True. Raises `platform::FileError` when the temporary file cannot be written.
    bool IsNew(QStringView id) override;
    /// The hashes that came more than once; of two ids in some 10^19 they are the same by chance, so that
    /// these are suspicions. Once only, and no id may follow. Raises `platform::FileError`.
    IdHashes Repeated();

private:
    class Spilled;

    void Spill();

    std::size_t m_most;
    std::vector<IdHash> m_hashes;
    std::unique_ptr<Spilled> m_spilled; ///< null while memory was enough
};

/// Remembers those ids whose hashes are among the suspected ones, as texts: exact, in memory that grows with
/// the ids that come more than once.
class KTQDDE_RULES_EXPORT SuspectedIds final : public IdCheck
{
public:
    explicit SuspectedIds(IdHashes suspected);
    bool IsNew(QStringView id) override;

private:
    IdHashes m_suspected;
    EveryId m_ids;
};

} // namespace rules
