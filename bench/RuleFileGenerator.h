#pragma once

#include <QtCore/QByteArray>

namespace bench {

/// A rule file with rules for every small category of every specialty of the installed host, of about `bytes`
/// bytes. Its text is that of real rules: Chinese names, three conditions, one bill item with a quota item
/// each.
QByteArray GenerateRuleFile(qsizetype bytes);

} // namespace bench
