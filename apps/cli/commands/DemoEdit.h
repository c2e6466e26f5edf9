#pragma once

#include "cli/reading/CategoryLists.h"
#include "presenter/CQdDeConfigPresenter.h"

namespace cli {

/// The small category on which the demonstration works.
CString DemoCategory();

/// Adds the demonstration's rule to the category at `path`: a condition of each form, a bill item and under
/// it a quota item. Nothing is saved. Gives the steps in words, one a line. Raises `Refusal` when a step is
/// refused.
CString AddDemoRule(CQdDeConfigPresenter& presenter, CPath path);

} // namespace cli
