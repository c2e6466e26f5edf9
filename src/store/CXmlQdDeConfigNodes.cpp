#include "store/CXmlQdDeConfig.h"

// The operations that take a path: each resolves it and hands the work to a node class.

namespace {

/// The rules of the small category that holds `rule`.
std::vector<ConfigNode*> RulesBeside(const QdDeConfigNode* rule)
{
    return static_cast<const SMember*>(rule->GetParent())->GetAllConfig();
}

} // namespace

// These two are part of every look-up, and a call is a good part of what one costs.

inline LMember* CXmlQdDeConfig::GetLMember(const CPath& path) const
{
    return m_spec.GetId() == path.specId ? m_spec.GetLMember(path.lMemberId) : nullptr;
}

inline SMember* CXmlQdDeConfig::GetSMember(const CPath& path) const
{
    const LMember* big = GetLMember(path);
    return big == nullptr ? nullptr : big->GetSMember(path.sMemberId);
}

QdNode* CXmlQdDeConfig::GetQdNode(const CPath& path)
{
    const ConfigNode* rule = GetConfig(path);
    return rule == nullptr ? nullptr : rule->GetQd(path.qdId);
}

ConfigNode* CXmlQdDeConfig::GetConfig(const CPath& path)
{
    const SMember* small = GetSMember(path);
    return small == nullptr ? nullptr : small->GetConfig(path.configId);
}

bool CXmlQdDeConfig::GetConfig(const CPath& path, std::vector<ConfigNode*>& rules)
{
    const SMember* small = GetSMember(path);
    if (small == nullptr) return false;
    rules = small->GetAllConfig();
    return true;
}

bool CXmlQdDeConfig::GetExistQdIndex(const CPath& path, std::vector<CString>& indexes)
{
    const ConfigNode* rule = GetConfig(path);
    return rule != nullptr && rule->GetExistQdIndex(indexes);
}

bool CXmlQdDeConfig::AddConfig(const CPath& path, int& newId)
{
    SMember* small = GetSMember(path);
    return small != nullptr && small->AddConfig(path, newId);
}

bool CXmlQdDeConfig::MoveUpConfig(const CPath& path)
{
    SMember* small = GetSMember(path);
    return small != nullptr && small->MoveUpConfig(path);
}

bool CXmlQdDeConfig::MoveDownConfig(const CPath& path)
{
    SMember* small = GetSMember(path);
    return small != nullptr && small->MoveDownConfig(path);
}

bool CXmlQdDeConfig::AddConfigByCopy(const CPath& path, int& newId)
{
    SMember* small = GetSMember(path);
    return small != nullptr && small->AddConfigByCopy(path.configId, newId);
}

bool CXmlQdDeConfig::DelConfig(const CPath& path)
{
    SMember* small = GetSMember(path);
    return small != nullptr && small->DelConfig(path.configId);
}

bool CXmlQdDeConfig::AddCondition(const CPath& path, const ConditionNode& condition)
{
    ConfigNode* rule = GetConfig(path);
    return rule != nullptr && rule->AddCondition(condition);
}

bool CXmlQdDeConfig::ResetCondition(const CPath& path, const ConditionNode& condition)
{
    ConfigNode* rule = GetConfig(path);
    return rule != nullptr && rule->ResetCondition(path.conditionId, condition);
}

bool CXmlQdDeConfig::DelCondition(const CPath& path, std::vector<ConfigNode*>& rules)
{
    ConfigNode* rule = GetConfig(path);
    if (rule == nullptr) return false;
    rule->DelCondition(
        path.conditionId); // true also when the rule lacks it: callers want the list all the same
    rules = RulesBeside(rule);
    return true;
}

bool CXmlQdDeConfig::AddQd(const QdStruct& qd, const CPath& path, std::vector<ConfigNode*>& rules)
{
    ConfigNode* rule = GetConfig(path);
    if (rule == nullptr) return false;
    rules = RulesBeside(rule);
    return rule->AddQd(qd);
}

bool CXmlQdDeConfig::AddDe2QdNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules)
{
    QdNode* bill = GetQdNode(path);
    if (bill == nullptr) return false;
    rules = RulesBeside(bill->GetParent());
    return bill->AddDe(de);
}

bool CXmlQdDeConfig::AddDe2ConfigNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules)
{
    ConfigNode* rule = GetConfig(path);
    if (rule == nullptr) return false;
    rules = RulesBeside(rule);
    return rule->AddDe(de);
}

bool CXmlQdDeConfig::DelQd(const CPath& path, const std::set<int>& qdIds)
{
    ConfigNode* rule = GetConfig(path);
    return rule != nullptr && rule->DelQd(qdIds);
}

bool CXmlQdDeConfig::DelDeInQdNode(const CPath& path, const std::map<int, std::set<int>>& deIdsByQd)
{
    CPath billPath = path;
    for (const auto& [qdId, deIds] : deIdsByQd) {
        billPath.qdId = qdId;
        if (QdNode* bill = GetQdNode(billPath)) bill->DelDe(deIds);
    }
    return true;
}

bool CXmlQdDeConfig::DelDeInConfigNode(const CPath& path, const std::set<int>& deIds)
{
    ConfigNode* rule = GetConfig(path);
    return rule != nullptr && rule->DelDe(deIds);
}

bool CXmlQdDeConfig::ResetQd(const CPath& path, const QdStruct& qd)
{
    ConfigNode* rule = GetConfig(path);
    return rule != nullptr && rule->ResetQd(path.qdId, qd);
}

bool CXmlQdDeConfig::ResetDeToConfig(const CPath& path, const DeStruct& de)
{
    ConfigNode* rule = GetConfig(path);
    return rule != nullptr && rule->ResetDe(path.deId, de);
}

bool CXmlQdDeConfig::ResetDeToQd(const CPath& path, const DeStruct& de)
{
    QdNode* bill = GetQdNode(path);
    return bill != nullptr && bill->ReSetDe(path.deId, de);
}
