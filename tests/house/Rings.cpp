#include "house/Rings.h"

namespace house {

namespace {

/// Everything that is reached from `start` by one arrow or more.
QSet<QString> ReachedFrom(const QString& start, const Arrows& arrows)
{
    QSet<QString> reached;
    QStringList ahead{start};
    while (!ahead.isEmpty()) {
        for (const QString& next : arrows.value(ahead.takeLast())) {
            if (reached.contains(next)) continue;
            reached += next;
            ahead += next;
        }
    }
    return reached;
}

} // namespace

QList<QStringList> RingsOf(const Arrows& arrows)
{
    QMap<QString, QSet<QString>> reached;
    for (auto from = arrows.keyBegin(); from != arrows.keyEnd(); ++from)
        reached[*from] = ReachedFrom(*from, arrows);
    QList<QStringList> rings;
    QSet<QString> done;
    for (auto from = reached.begin(); from != reached.end(); ++from) {
        if (done.contains(from.key()) || !from.value().contains(from.key())) continue;
        QStringList ring;
        for (const QString& name : from.value())
            if (name == from.key() || reached.value(name).contains(from.key())) ring += name;
        done += QSet<QString>(ring.begin(), ring.end());
        ring.sort();
        if (ring.size() > 1) rings += ring;
    }
    return rings;
}

} // namespace house
