#pragma once

#include "cli/model/RuleModel.h"

#include <QtCore/QJsonObject>

#include <map>
#include <optional>

namespace test::model {

/// What stands around a store.
struct Surroundings
{
    Tree host;            ///< the current specialty's categories
    QString version;      ///< what every save stamps on the file
    XmlTree fileTemplate; ///< what a new file starts as
    QString currentPath;  ///< of the project's current configuration
};

/// Predicts what a batch answers and what it leaves on disk. Files are XML trees by path.
class StoreModel
{
public:
    /// Opens the current configuration. `files` are those on disk at that time.
    StoreModel(Surroundings surroundings, std::map<QString, XmlTree> files);

    /// Carries out one request and gives the answer, without the line. A raised error is the key "error" with
    /// an empty text.
    QJsonObject Run(const QJsonObject& request);

    const std::map<QString, XmlTree>& Files() const noexcept { return m_files; }
    /// The name of the current configuration; nothing while no operation has set it.
    const std::optional<QString>& CurrentName() const noexcept { return m_currentName; }
    /// For a generator that wants to hit what is there.
    const Tree& Rules() const noexcept { return m_tree; }

private:
    struct Answer
    {
        bool ok = false;
        bool error = false;
        std::optional<int> newId = {};
        std::optional<QStringList> indexes = {};
        std::optional<std::vector<Rule>> rules = {};
    };

    Small* FindSmall(const QJsonObject& path);
    Rule* FindRule(const QJsonObject& path);
    Bill* FindBill(const QJsonObject& path);

    Answer RunOnRules(const QString& op, const QJsonObject& request, Small& small);
    static Answer RunOnRule(const QString& op, const QJsonObject& request, Rule& rule);
    static bool RunOnConditions(const QString& op, const QJsonObject& request, Rule& rule);
    static bool RunOnBills(const QString& op, const QJsonObject& request, Rule& rule);
    static bool RunOnQuotas(const QString& op, const QJsonObject& request, Rule& rule);
    Answer RunOnFile(const QString& op, const QString& path);
    static Answer Move(Small& small, int id, int step);
    Answer DelDeInQdNode(const QJsonObject& request);

    void Save(const QString& path);
    bool ReLoad(const QString& path);
    /// The specialty's element of a file, added at the end when it is missing.
    XmlTree& SpecElement(XmlTree& root);
    XmlTree NewSpecElement() const;

    Surroundings m_surroundings;
    std::map<QString, XmlTree> m_files;
    QString m_bound;
    Tree m_tree;
    std::optional<QString> m_currentName;
};

} // namespace test::model
