#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace house {

/// Which name leads to which others.
using Arrows = QMap<QString, QSet<QString>>;

/// The groups of names that all reach each other along arrows, two or more in each; members and groups in
/// order.
QList<QStringList> RingsOf(const Arrows& arrows);

} // namespace house
