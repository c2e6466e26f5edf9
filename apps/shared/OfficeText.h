#pragma once

#include "shared/OfficeFiles.h"

#include <limits>

/// What became of publishing, in words.
namespace shared {

/// How the project's file stands to the office, in a few characters: "相同", "已修改，等待发布".
CString StateText(const OfficeEntry& entry);

/// That the project's file holds what others have published, to be said before why nothing was published.
CString MergedText(const JoinedStates& joined);
/// What was done or why it was not, a sentence or several, without final mark. `office` is its name.
CString EndText(const PublishEnd& end, const CString& office);
CString EndText(const FetchEnd& end, const CString& configuration, const CString& office);
CString EndText(const SentPublication& sent, const CString& office);
CString EndText(WithdrawEnd end, const CString& configuration);

/// What a merge has brought into what was to be published, rule by rule, a line each. Of more than `most`
/// lines the others are counted.
CString JoinedText(const JoinedStates& joined, qsizetype most = std::numeric_limits<qsizetype>::max());

} // namespace shared
