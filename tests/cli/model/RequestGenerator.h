#pragma once

#include "cli/model/StoreModel.h"

#include <random>

namespace test::model {

/// Makes random requests, the same ones for the same seed. Most hit what is there, some miss at each level of
/// the path.
class RequestGenerator
{
public:
    /// `files` are the paths that requests about files name.
    RequestGenerator(unsigned seed, QStringList files) : m_random(seed), m_files(std::move(files)) {}

    /// The next request, given the rules as they stand.
    QJsonObject Next(const Tree& rules);

private:
    int Below(int limit);
    bool Chance(int percent) { return Below(100) < percent; }
    QString Text();
    /// An id of `nodes`, or sometimes one that is not there.
    template <typename Node>
    int SomeId(const std::vector<Node>& nodes);
    QJsonArray SomeIds(int highest);
    QJsonArray ConditionArray();
    QJsonObject Record(const QStringList& names);
    QJsonObject CategoryPath(const Tree& rules, const Small*& small);
    void CompletePath(const QString& op, const Small& small, QJsonObject& path);

    std::mt19937 m_random;
    QStringList m_files;
};

} // namespace test::model
