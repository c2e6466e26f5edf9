#include "cli/model/StoreModel.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace test::model {

namespace {

template <typename Node>
Node* ById(std::vector<Node>& nodes, int id)
{
    const auto found =
        std::find_if(nodes.begin(), nodes.end(), [id](const Node& node) { return node.id == id; });
    return found == nodes.end() ? nullptr : &*found;
}

template <typename Node>
void EraseIds(std::vector<Node>& nodes, const QJsonArray& ids)
{
    std::erase_if(nodes, [&](const Node& node) { return ids.contains(node.id); });
}

Fields Record(const QJsonObject& record, const QStringList& names)
{
    QMap<QString, QString> given;
    for (auto entry = record.begin(); entry != record.end(); ++entry)
        given[entry.key()] = entry.value().toString();
    return FillFields(names, given);
}

QStringList Texts(const QJsonArray& array)
{
    QStringList texts;
    for (const auto& text : array)
        texts += text.toString();
    return texts;
}

int Int(const QJsonObject& path, const QString& key)
{
    return path.value(key).toInt();
}

Rule Copied(Rule rule)
{
    for (Condition& condition : rule.conditions)
        condition.id = 0;
    return rule;
}

} // namespace

StoreModel::StoreModel(Surroundings surroundings, std::map<QString, XmlTree> files)
    : m_surroundings(std::move(surroundings)), m_files(std::move(files)), m_bound(m_surroundings.currentPath)
{
    const bool missing = !m_files.contains(m_bound);
    XmlTree root = missing ? XmlTree() : m_files[m_bound];
    if (missing) {
        root.name = u"自动套清单定额配置信息"_s;
        root.attributes = {{u"Version"_s, m_surroundings.version}};
    }
    m_tree = ReadTree(SpecElement(root), m_surroundings.host);
    if (missing) m_files[m_bound] = root; // as reading has completed it
}

QJsonObject StoreModel::Run(const QJsonObject& request)
{
    const QString op = request.value(u"op"_s).toString();
    const QJsonObject path = request.value(u"path"_s).toObject();
    Answer answer;
    if (op == u"DelDeInQdNode") {
        answer = DelDeInQdNode(request);
    } else if (request.contains(u"file"_s) || op == u"Save") {
        answer = RunOnFile(op, request.value(u"file"_s).toString());
    } else if (Small* small = FindSmall(path)) {
        answer = RunOnRules(op, request, *small);
    }
    QJsonObject json{{u"op"_s, op}, {u"ok"_s, answer.ok}};
    if (answer.error) json.insert(u"error"_s, u""_s);
    if (answer.newId) json.insert(u"newId"_s, *answer.newId);
    if (answer.indexes) json.insert(u"indexes"_s, QJsonArray::fromStringList(*answer.indexes));
    if (answer.rules) json.insert(u"rules"_s, RulesJson(*answer.rules));
    return json;
}

Small* StoreModel::FindSmall(const QJsonObject& path)
{
    if (Int(path, u"specId"_s) != m_tree.id) return nullptr;
    Big* big = ById(m_tree.bigs, Int(path, u"lMemberId"_s));
    return big == nullptr ? nullptr : ById(big->smalls, Int(path, u"sMemberId"_s));
}

Rule* StoreModel::FindRule(const QJsonObject& path)
{
    Small* small = FindSmall(path);
    return small == nullptr ? nullptr : ById(small->rules, Int(path, u"configId"_s));
}

Bill* StoreModel::FindBill(const QJsonObject& path)
{
    Rule* rule = FindRule(path);
    return rule == nullptr ? nullptr : ById(rule->bills, Int(path, u"qdId"_s));
}

StoreModel::Answer StoreModel::RunOnRules(const QString& op, const QJsonObject& request, Small& small)
{
    const QJsonObject path = request.value(u"path"_s).toObject();
    const int id = Int(path, u"configId"_s);
    Rule* rule = ById(small.rules, id);
    if (op == u"AddConfig") {
        if (small.rules.empty()) return {.error = true};
        Rule added;
        added.id = ++small.lastConfig;
        small.rules.insert(small.rules.end() - 1, added);
        return {.ok = true, .newId = added.id};
    }
    if (op == u"AddConfigByCopy") {
        if (rule == nullptr) return {};
        Rule copy = Copied(*rule);
        copy.id = ++small.lastConfig;
        small.rules.insert(small.rules.end() - 1, copy);
        return {.ok = true, .newId = copy.id};
    }
    if (op == u"DelConfig") {
        if (rule != nullptr) small.rules.erase(small.rules.begin() + (rule - small.rules.data()));
        return {.ok = true};
    }
    if (op == u"MoveUpConfig") return Move(small, id, -1);
    if (op == u"MoveDownConfig") return Move(small, id, 1);
    if (op == u"GetConfig" && path.value(u"configId"_s).toInt() == 0)
        return {.ok = true, .rules = small.rules};
    if (rule == nullptr) return {};
    Answer answer = RunOnRule(op, request, *rule);
    const QStringList givingRules{u"DelCondition"_s, u"AddQd"_s, u"AddDe2QdNode"_s, u"AddDe2ConfigNode"_s};
    if (answer.ok && givingRules.contains(op)) answer.rules = small.rules;
    return answer;
}

StoreModel::Answer StoreModel::Move(Small& small, int id, int step)
{
    const int size = static_cast<int>(small.rules.size());
    const Rule* rule = ById(small.rules, id);
    const int index = rule == nullptr ? size : static_cast<int>(rule - small.rules.data());
    if (step > 0 && size < 2) return {.error = true};
    const int lastThatMoves = step > 0 ? size - 3 : size - 2;
    if (index + step < 0 || index > lastThatMoves) return {};
    std::swap(small.rules[static_cast<std::size_t>(index)],
              small.rules[static_cast<std::size_t>(index + step)]);
    return {.ok = true};
}

StoreModel::Answer StoreModel::RunOnFile(const QString& op, const QString& path)
{
    if (op == u"Save") {
        Save(m_bound);
        return {.ok = true};
    }
    if (op == u"SaveAs") {
        if (path != m_bound) m_files[path] = m_files[m_bound];
        Save(path);
        return {.ok = true};
    }
    if (op == u"NewFile") m_files[path] = m_surroundings.fileTemplate;
    if (!ReLoad(path)) return {};
    const QString fileName = path.section(u'/', -1);
    m_currentName = fileName.left(fileName.lastIndexOf(u'.'));
    return {.ok = true};
}

void StoreModel::Save(const QString& path)
{
    XmlTree& root = m_files[path];
    const auto old = std::find_if(root.children.begin(), root.children.end(), [&](const XmlTree& child) {
        return child.Attribute(u"name"_s) == m_tree.name;
    });
    if (old != root.children.end()) root.children.erase(old);
    root.children.append(NewSpecElement());
    WriteTree(m_tree, root.children.last());
    root.SetAttribute(u"Version"_s, m_surroundings.version);
}

bool StoreModel::ReLoad(const QString& path)
{
    if (path != m_bound) Save(m_bound);
    const auto file = m_files.find(path);
    if (file == m_files.end()) return false;
    XmlTree root = file->second; // what reading completes does not reach the disk
    m_tree = ReadTree(SpecElement(root), m_surroundings.host);
    m_bound = path;
    return true;
}

XmlTree& StoreModel::SpecElement(XmlTree& root)
{
    for (XmlTree& child : root.children)
        if (child.Attribute(u"name"_s) == m_surroundings.host.name) return child;
    root.children.append(NewSpecElement());
    return root.children.last();
}

XmlTree StoreModel::NewSpecElement() const
{
    XmlTree element;
    element.name = m_surroundings.host.name;
    element.attributes = {{u"id"_s, QString::number(m_surroundings.host.id)},
                          {u"name"_s, m_surroundings.host.name}};
    return element;
}

StoreModel::Answer StoreModel::DelDeInQdNode(const QJsonObject& request)
{
    QJsonObject path = request.value(u"path"_s).toObject();
    const QJsonObject byBill = request.value(u"deIdsByQd"_s).toObject();
    for (auto entry = byBill.begin(); entry != byBill.end(); ++entry) {
        path.insert(u"qdId"_s, entry.key().toInt());
        if (Bill* bill = FindBill(path)) EraseIds(bill->quotas, entry.value().toArray());
    }
    return {.ok = true};
}

StoreModel::Answer StoreModel::RunOnRule(const QString& op, const QJsonObject& request, Rule& rule)
{
    if (op == u"GetConfig") return {.ok = true, .rules = std::vector<Rule>{rule}};
    if (op == u"GetExistQdIndex") {
        QStringList indexes;
        for (const Bill& entry : rule.bills)
            indexes += entry.fields[0].second;
        return {.ok = true, .indexes = indexes};
    }
    if (op.endsWith(u"Condition")) return {.ok = RunOnConditions(op, request, rule)};
    if (op.endsWith(u"Qd"))
        return {.ok = op == u"ResetDeToQd" ? RunOnQuotas(op, request, rule) : RunOnBills(op, request, rule)};
    return {.ok = RunOnQuotas(op, request, rule)};
}

bool StoreModel::RunOnConditions(const QString& op, const QJsonObject& request, Rule& rule)
{
    const QStringList array = Texts(request.value(u"array"_s).toArray());
    Condition* condition = ById(rule.conditions, Int(request.value(u"path"_s).toObject(), u"conditionId"_s));
    if (op == u"DelCondition") {
        if (condition != nullptr)
            rule.conditions.erase(rule.conditions.begin() + (condition - rule.conditions.data()));
        return true;
    }
    if (array.size() < 8 || (op == u"ResetCondition" && condition == nullptr)) return false;
    Condition made = MakeCondition(array);
    made.id = op == u"AddCondition" ? ++rule.lastCondition : condition->id;
    if (op == u"AddCondition") {
        rule.conditions.push_back(made);
    } else {
        *condition = made;
    }
    return true;
}

bool StoreModel::RunOnBills(const QString& op, const QJsonObject& request, Rule& rule)
{
    const Fields fields = Record(request.value(u"qd"_s).toObject(), QdFieldNames());
    Bill* bill = ById(rule.bills, Int(request.value(u"path"_s).toObject(), u"qdId"_s));
    if (op == u"AddQd") rule.bills.push_back({++rule.lastQd, 0, fields, {}});
    if (op == u"DelQd") EraseIds(rule.bills, request.value(u"ids"_s).toArray());
    if (op == u"ResetQd" && bill == nullptr) return false;
    if (op == u"ResetQd") bill->fields = fields;
    return true;
}

bool StoreModel::RunOnQuotas(const QString& op, const QJsonObject& request, Rule& rule)
{
    const QJsonObject path = request.value(u"path"_s).toObject();
    const Fields fields = Record(request.value(u"de"_s).toObject(), DeFieldNames());
    Bill* bill = ById(rule.bills, Int(path, u"qdId"_s));
    const bool underBill = op == u"AddDe2QdNode" || op == u"ResetDeToQd";
    if (underBill && bill == nullptr) return false;
    std::vector<Quota>& quotas = underBill ? bill->quotas : rule.quotas;
    if (op == u"AddDe2QdNode") quotas.push_back({++bill->lastDe, fields});
    if (op == u"AddDe2ConfigNode") quotas.push_back({++rule.lastDe, fields});
    if (op == u"DelDeInConfigNode") EraseIds(quotas, request.value(u"ids"_s).toArray());
    Quota* quota = ById(quotas, Int(path, u"deId"_s));
    if (op.startsWith(u"ResetDe") && quota == nullptr) return false;
    if (op.startsWith(u"ResetDe")) quota->fields = fields;
    return true;
}

} // namespace test::model
