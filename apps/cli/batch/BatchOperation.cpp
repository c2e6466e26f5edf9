#include "cli/batch/BatchOperation.h"

#include <algorithm>

namespace cli {

namespace {

using Presenter = CQdDeConfigPresenter;
using Request = BatchRequest;

BatchResult Plain(bool ok)
{
    BatchResult result;
    result.ok = ok;
    return result;
}

/// Calls an operation that gives the id of a new rule.
template <typename Call>
BatchResult WithNewId(const Call& call)
{
    int newId = 0;
    BatchResult result = Plain(call(newId));
    if (result.ok) result.newId = newId;
    return result;
}

/// Calls an operation that gives the rules of the small category.
template <typename Call>
BatchResult WithRules(const Call& call)
{
    std::vector<ConfigNode*> rules;
    BatchResult result = Plain(call(rules));
    if (result.ok) result.rules = std::move(rules);
    return result;
}

/// With a rule in the path that one rule, else all rules of the small category.
BatchResult GetConfig(Presenter& presenter, const Request& request)
{
    return WithRules([&](std::vector<ConfigNode*>& rules) {
        if (request.path.configId == 0) return presenter.GetConfig(request.path, rules);
        ConfigNode* rule = presenter.GetConfig(request.path);
        if (rule != nullptr) rules = {rule};
        return rule != nullptr;
    });
}

BatchResult GetExistQdIndex(Presenter& presenter, const Request& request)
{
    std::vector<CString> indexes;
    BatchResult result = Plain(presenter.GetExistQdIndex(request.path, indexes));
    if (result.ok) result.indexes = std::move(indexes);
    return result;
}

/// Adds a rule with its conditions, or nothing at all.
BatchResult AddConfig(Presenter& presenter, const Request& request)
{
    return WithNewId([&](int& newId) {
        if (!presenter.AddConfig(request.path, newId)) return false;
        CPath path = request.path;
        path.configId = newId;
        const bool all =
            std::all_of(request.conditions.begin(), request.conditions.end(),
                        [&](const CStringArray& texts) { return presenter.AddCondition(path, texts); });
        if (!all) presenter.DelConfig(path);
        return all;
    });
}

BatchResult AddConfigByCopy(Presenter& presenter, const Request& request)
{
    return WithNewId([&](int& newId) { return presenter.AddConfigByCopy(request.path, newId); });
}

BatchResult DelCondition(Presenter& presenter, const Request& request)
{
    return WithRules([&](auto& rules) { return presenter.DelCondition(request.path, rules); });
}

BatchResult AddQd(Presenter& presenter, const Request& request)
{
    return WithRules([&](auto& rules) { return presenter.AddQd(request.qd, request.path, rules); });
}

BatchResult AddDe2QdNode(Presenter& presenter, const Request& request)
{
    return WithRules([&](auto& rules) { return presenter.AddDe2QdNode(request.de, request.path, rules); });
}

BatchResult AddDe2ConfigNode(Presenter& presenter, const Request& request)
{
    return WithRules(
        [&](auto& rules) { return presenter.AddDe2ConfigNode(request.de, request.path, rules); });
}

const std::vector<BatchOperation>& Operations()
{
    using enum BatchKey;
    using P = Presenter;
    using R = Request;
    static const std::vector<BatchOperation> operations{
        {u"AddConfig", {Path, Conditions}, AddConfig},
        {u"AddConfigByCopy", {Path}, AddConfigByCopy},
        {u"DelConfig", {Path}, [](P& p, const R& r) { return Plain(p.DelConfig(r.path)); }},
        {u"MoveUpConfig", {Path}, [](P& p, const R& r) { return Plain(p.MoveUpConfig(r.path)); }},
        {u"MoveDownConfig", {Path}, [](P& p, const R& r) { return Plain(p.MoveDownConfig(r.path)); }},
        {u"AddCondition",
         {Path, Array},
         [](P& p, const R& r) { return Plain(p.AddCondition(r.path, r.array)); }},
        {u"ResetCondition",
         {Path, Array},
         [](P& p, const R& r) { return Plain(p.ResetCondition(r.path, r.array)); }},
        {u"DelCondition", {Path}, DelCondition},
        {u"AddQd", {Path, Qd}, AddQd},
        {u"ResetQd", {Path, Qd}, [](P& p, const R& r) { return Plain(p.ResetQd(r.path, r.qd)); }},
        {u"DelQd", {Path, Ids}, [](P& p, const R& r) { return Plain(p.DelQd(r.path, r.ids)); }},
        {u"AddDe2QdNode", {Path, De}, AddDe2QdNode},
        {u"AddDe2ConfigNode", {Path, De}, AddDe2ConfigNode},
        {u"ResetDeToQd", {Path, De}, [](P& p, const R& r) { return Plain(p.ResetDeToQd(r.path, r.de)); }},
        {u"ResetDeToConfig",
         {Path, De},
         [](P& p, const R& r) { return Plain(p.ResetDeToConfig(r.path, r.de)); }},
        {u"DelDeInQdNode",
         {Path, DeIdsByQd},
         [](P& p, const R& r) { return Plain(p.DelDeInQdNode(r.path, r.deIdsByQd)); }},
        {u"DelDeInConfigNode",
         {Path, Ids},
         [](P& p, const R& r) { return Plain(p.DelDeInConfigNode(r.path, r.ids)); }},
        {u"GetConfig", {Path}, GetConfig},
        {u"GetExistQdIndex", {Path}, GetExistQdIndex},
        {u"Save", {}, [](P& p, const R&) { return Plain(p.Save()); }, embedded::BatchWrites::Open},
        {u"SaveAs",
         {File},
         [](P& p, const R& r) { return Plain(p.SaveAs(r.file)); },
         embedded::BatchWrites::Named,
         true},
        {u"ReLoad",
         {File},
         [](P& p, const R& r) { return Plain(p.ReLoad(r.file)); },
         embedded::BatchWrites::Both},
        {u"NewFile",
         {File},
         [](P& p, const R& r) { return Plain(p.NewFile(r.file)); },
         embedded::BatchWrites::Both,
         true},
    };
    return operations;
}

} // namespace

const BatchOperation* FindBatchOperation(const CString& name)
{
    const auto& operations = Operations();
    const auto found = std::find_if(operations.begin(), operations.end(),
                                    [&](const BatchOperation& operation) { return operation.name == name; });
    return found == operations.end() ? nullptr : &*found;
}

CStringArray BatchOperationNames()
{
    CStringArray names;
    for (const BatchOperation& operation : Operations())
        names += operation.name.toString();
    return names;
}

} // namespace cli
