#pragma once

#include "platform/Text.h"
#include "store/WrappedFile.h"

#include <utility>
#include <vector>

/// The head of a finished rule file: what its document element says about mode and libraries.
namespace store {

/// The head attributes with the values that the host gives now, in the order in which they are written.
std::vector<std::pair<CString, CString>> HeadAttributes();

/// Whether the rule file in a wrapped one has the head that the host gives now. The wrapping itself passes
/// over a head that could not be written.
bool HoldsHead(const WrappedFile& file);

} // namespace store
