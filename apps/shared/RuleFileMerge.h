#pragma once

#include "rules/merge/Merge.h"
#include "rules/model/Structure.h"

#include <QtCore/QByteArray>

#include <functional>
#include <optional>
#include <vector>

namespace shared {

/// Asked when states of a rule file cannot be merged without an answer for each of these: the sides that are
/// to count, in the same order; nothing when nothing is to happen after all.
using AnswerConflicts =
    std::function<std::optional<std::vector<rules::Side>>(const std::vector<rules::Conflict>& conflicts)>;

/// Where something stands twice in a rule file, of which readers take the first alone: a merge would lose the
/// other one, or bring it back in the place of a first one that went. Empty when nothing does.
CString RepeatedPlace(const rules::FileStructure& structure);

/// The bytes of a rule file that hold what both sides have made of `base`, by rule. `base` is empty where the
/// two have nothing in common: each began then with what the module makes. Where a side has changed no rule,
/// the result is the other one to the byte, else it is written into the bytes of `theirs`. Nothing when
/// `answer` gives none for the conflicts. Raises `embedded::Error`, which calls the file `name`, when a state
/// is no rule file, a side holds something twice, or the result cannot be written.
std::optional<QByteArray> MergeRuleFiles(const CString& name, const QByteArray& base, const QByteArray& mine,
                                         const QByteArray& theirs, const AnswerConflicts& answer);

} // namespace shared
