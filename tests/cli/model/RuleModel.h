#pragma once

#include "cli/model/XmlTree.h"

#include <QtCore/QJsonArray>
#include <QtCore/QMap>
#include <QtCore/QStringList>

#include <set>
#include <vector>

// A second reading of how rules behave, on plain values: no pointers, no shared code with the rule tree.
// Where it and the program differ, one of them is wrong.
namespace test::model {

/// Values by field name, in the order of the file.
using Fields = QList<std::pair<QString, QString>>;

struct Quota
{
    int id = 0;
    Fields fields;
};

struct Bill
{
    int id = 0;
    int lastDe = 0;
    Fields fields;
    std::vector<Quota> quotas;
};

struct Condition
{
    int id = 0;
    bool equal = true;
    Fields fields; ///< the seven texts
};

struct Rule
{
    int id = 0;
    bool isDefault = false;
    int lastCondition = 0;
    int lastQd = 0;
    int lastDe = 0;
    std::vector<Condition> conditions;
    std::vector<Bill> bills;
    std::vector<Quota> quotas;
};

struct Small
{
    int id = 0;
    QString name;
    int lastConfig = 0;
    std::vector<Rule> rules;
};

struct Big
{
    int id = 0;
    QString name;
    std::vector<Small> smalls;
};

/// The categories of one specialty without rules: what the host says.
struct Tree
{
    int id = 0;
    QString name;
    std::vector<Big> bigs;
};

QStringList QdFieldNames();
QStringList DeFieldNames();
/// Values for all fields of a record, those of `given` or empty.
Fields FillFields(const QStringList& names, const QMap<QString, QString>& given);
/// A condition from the eight texts of a request.
Condition MakeCondition(const QStringList& texts);

/// Reads the specialty's element into a tree that holds the host's categories, completing the element on the
/// way as the program completes the document that it reads.
Tree ReadTree(XmlTree& element, const Tree& host);
/// Writes the tree into an element that already has "id" and "name".
void WriteTree(const Tree& tree, XmlTree& element);

/// Rules as an answer of the program holds them.
QJsonArray RulesJson(const std::vector<Rule>& rules);

} // namespace test::model
