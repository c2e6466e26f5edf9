#pragma once

#include "support/MemoryHost.h"

namespace test {

/// Fills an empty host with a small, complete project in bill mode:
///
/// - 给排水 (1): 管道 (11) with 给水管 (111) and 排水管 (112); 阀门 (12) with 截止阀 (121)
/// - 电气 (2): 电缆桥架 (21) with 桥架 (211) and 托盘 (212)
/// - 建筑 (3): 门窗 (31) with 门 (311)
///
/// 给水管 has the attributes 材质 (CZ, a drop list), 管径 (GJ, values of its own) and 长度 (CD, no values);
/// 截止阀 has 管径. The bill library holds 031001001 and 031001006, with the coding rule 9 and 3; the history
/// holds two items for 031001001. 给水管 has one calculation item. The current specialty is 给排水. Project
/// path and application folder stay empty: see `HostGuard`.
void FillStandardCatalogue(MemoryHost& host);

} // namespace test
