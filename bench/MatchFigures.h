#pragma once

namespace bench {

/// Matching of 1,000,000 components of one category with 3,700 rules of three conditions, rules compiled anew
/// each time, every cell a text of its own. Each prints its line and tells whether the bar is met.

/// Against the slow matcher of the tests, which works on a sample of 500 of these components: the peer's time
/// is that of the sample, scaled up.
bool Match(int rounds);

/// Against itself with 370 rules and as many components.
bool MatchGrowth(int rounds);

/// Against SQLite, which runs the exported query over the same components in memory: the peer has a tenth of
/// them, and its time is scaled up. Its table is filled beforehand; the query is parsed each time, as our
/// rules are compiled.
bool ApplySql(int rounds);

} // namespace bench
