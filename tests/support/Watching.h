#pragma once

namespace test {

/// What this machine tells a program that watches files now.
enum class Watching {
    Nothing,    ///< it watches as many as it lets anybody
    ByTime,     ///< that a file has another time
    EveryWrite, ///< also a write that leaves that
};

/// Why a test that waits for such words is skipped.
constexpr auto NoWatching = "the system lets no program watch any more files";
constexpr auto NotEveryWrite = "the system does not tell every write of a file";

/// Finds out with a watcher of its own, and handles events meanwhile.
Watching WatchingHere();

} // namespace test
