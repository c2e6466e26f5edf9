#pragma once

#include "rules/model/Configuration.h"

#include <QtCore/QByteArray>

namespace rules {

/// The bytes of a rule file that hold `wanted`, made of those of `file`, a rule file in which no specialty
/// stands twice. Only what differs is written: a specialty of which nothing does keeps its bytes; in the
/// others the rules that are the same keep their elements with all that stands in them, and what differs is
/// written as the editor writes it. What `wanted` lacks goes, what `file` lacks comes behind what it has.
/// Head and version stay. Raises `xml::Error` for a file that is none and for texts that cannot stand in one.
QByteArray WriteRules(const QByteArray& file, const Configuration& wanted);

} // namespace rules
