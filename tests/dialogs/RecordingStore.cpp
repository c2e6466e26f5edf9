#include "dialogs/RecordingStore.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace test::autoconfig {

namespace {

CString RuleOf(const CPath& path)
{
    return u"rule %1"_s.arg(path.configId);
}

CString BillOf(const CPath& path)
{
    return RuleOf(path) + u" bill %1"_s.arg(path.qdId);
}

CString ConditionOf(const CPath& path)
{
    return RuleOf(path) + u" condition %1"_s.arg(path.conditionId);
}

CString Joined(const std::set<int>& ids)
{
    CStringArray texts;
    for (const int id : ids)
        texts.append(CString::number(id));
    return texts.join(u',');
}

CString FileOf(const CString& path)
{
    return path.section(u'\\', -1);
}

} // namespace

CStringArray RecordingStore::Log::Take()
{
    return std::exchange(notes, {});
}

RecordingStore::RecordingStore(std::unique_ptr<IQdDeConfigData> target, Log& log)
    : m_target(std::move(target)), m_log(log)
{
}

RecordingStore::~RecordingStore() = default;

bool RecordingStore::Note(const CString& operation, const CString& ids)
{
    m_log.notes.append(ids.isEmpty() ? operation : operation + u' ' + ids);
    return m_log.refused.count(operation) == 0;
}

bool RecordingStore::Save()
{
    return Note(u"Save"_s) && m_target->Save();
}
bool RecordingStore::SaveAs(const CString& path)
{
    return Note(u"SaveAs"_s, FileOf(path)) && m_target->SaveAs(path);
}
bool RecordingStore::ReLoad(const CString& path)
{
    return Note(u"ReLoad"_s, FileOf(path)) && m_target->ReLoad(path);
}
bool RecordingStore::NewFile(const CString& path)
{
    return Note(u"NewFile"_s, FileOf(path)) && m_target->NewFile(path);
}

ConfigNode* RecordingStore::GetConfig(const CPath& path)
{
    return Note(u"GetConfig"_s, RuleOf(path)) ? m_target->GetConfig(path) : nullptr;
}

bool RecordingStore::GetConfig(const CPath& path, std::vector<ConfigNode*>& rules)
{
    return Note(u"GetConfig"_s) && m_target->GetConfig(path, rules);
}

bool RecordingStore::GetExistQdIndex(const CPath& path, std::vector<CString>& indexes)
{
    return Note(u"GetExistQdIndex"_s, RuleOf(path)) && m_target->GetExistQdIndex(path, indexes);
}

bool RecordingStore::AddConfig(const CPath& path, int& newId)
{
    return Note(u"AddConfig"_s) && m_target->AddConfig(path, newId);
}
bool RecordingStore::MoveUpConfig(const CPath& path)
{
    return Note(u"MoveUpConfig"_s, RuleOf(path)) && m_target->MoveUpConfig(path);
}
bool RecordingStore::MoveDownConfig(const CPath& path)
{
    return Note(u"MoveDownConfig"_s, RuleOf(path)) && m_target->MoveDownConfig(path);
}
bool RecordingStore::AddConfigByCopy(const CPath& path, int& newId)
{
    return Note(u"AddConfigByCopy"_s, RuleOf(path)) && m_target->AddConfigByCopy(path, newId);
}
bool RecordingStore::DelConfig(const CPath& path)
{
    return Note(u"DelConfig"_s, RuleOf(path)) && m_target->DelConfig(path);
}

bool RecordingStore::AddCondition(const CPath& path, const ConditionNode& condition)
{
    return Note(u"AddCondition"_s, RuleOf(path)) && m_target->AddCondition(path, condition);
}

bool RecordingStore::ResetCondition(const CPath& path, const ConditionNode& condition)
{
    return Note(u"ResetCondition"_s, ConditionOf(path)) && m_target->ResetCondition(path, condition);
}

bool RecordingStore::DelCondition(const CPath& path, std::vector<ConfigNode*>& rules)
{
    return Note(u"DelCondition"_s, ConditionOf(path)) && m_target->DelCondition(path, rules);
}

bool RecordingStore::AddQd(const QdStruct& qd, const CPath& path, std::vector<ConfigNode*>& rules)
{
    return Note(u"AddQd"_s, RuleOf(path)) && m_target->AddQd(qd, path, rules);
}

bool RecordingStore::AddDe2QdNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules)
{
    return Note(u"AddDe2QdNode"_s, BillOf(path)) && m_target->AddDe2QdNode(de, path, rules);
}

bool RecordingStore::AddDe2ConfigNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules)
{
    return Note(u"AddDe2ConfigNode"_s, RuleOf(path)) && m_target->AddDe2ConfigNode(de, path, rules);
}

bool RecordingStore::DelQd(const CPath& path, const std::set<int>& qdIds)
{
    return Note(u"DelQd"_s, RuleOf(path) + u" bills "_s + Joined(qdIds)) && m_target->DelQd(path, qdIds);
}

bool RecordingStore::DelDeInQdNode(const CPath& path, const std::map<int, std::set<int>>& deIdsByQd)
{
    CString ids = RuleOf(path);
    for (const auto& [bill, quotas] : deIdsByQd)
        ids += u" bill %1 quotas %2"_s.arg(bill).arg(Joined(quotas));
    return Note(u"DelDeInQdNode"_s, ids) && m_target->DelDeInQdNode(path, deIdsByQd);
}

bool RecordingStore::DelDeInConfigNode(const CPath& path, const std::set<int>& deIds)
{
    return Note(u"DelDeInConfigNode"_s, RuleOf(path) + u" quotas "_s + Joined(deIds)) &&
           m_target->DelDeInConfigNode(path, deIds);
}

bool RecordingStore::ResetQd(const CPath& path, const QdStruct& qd)
{
    return Note(u"ResetQd"_s, BillOf(path)) && m_target->ResetQd(path, qd);
}

bool RecordingStore::ResetDeToConfig(const CPath& path, const DeStruct& de)
{
    return Note(u"ResetDeToConfig"_s, RuleOf(path) + u" quota %1"_s.arg(path.deId)) &&
           m_target->ResetDeToConfig(path, de);
}

bool RecordingStore::ResetDeToQd(const CPath& path, const DeStruct& de)
{
    return Note(u"ResetDeToQd"_s, BillOf(path) + u" quota %1"_s.arg(path.deId)) &&
           m_target->ResetDeToQd(path, de);
}

} // namespace test::autoconfig
