#include "cli/batch/BatchFiles.h"

#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "store/RuleFile.h"

#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using embedded::BatchWrites;

/// Whether two path texts lead to one file.
bool IsSameFile(const CString& left, const CString& right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0 ||
           QFileInfo(platform::ToNative(left)) == QFileInfo(platform::ToNative(right));
}

/// Whether the operation writes the rules that are open back to the file they come from.
bool Saves(const BatchOperation& operation, const CString& open, const CString& named)
{
    switch (operation.writes) {
    case BatchWrites::Open:
        return true;
    case BatchWrites::Named:
        return IsSameFile(open, named);
    case BatchWrites::Both:
        return open.compare(named, Qt::CaseInsensitive) != 0; // as the store compares
    case BatchWrites::Nothing:
        break;
    }
    return false;
}

} // namespace

BatchFiles::BatchFiles(Session& session, const CString& openFile)
    : m_session(session), m_open(openFile), m_history(session.History(), openFile)
{
}

std::unique_ptr<CQdDeConfigPresenter> BatchFiles::Open(bool isNamed)
{
    const auto lock = LockRuleFiles(m_session.History(), {m_open});
    KeepAndCheck(m_open, m_session.History());
    EnsureRuleFolderOf(m_open);
    auto presenter = std::make_unique<CQdDeConfigPresenter>(isNamed ? m_open : CString());
    Learn();
    return presenter;
}

BatchResult BatchFiles::Run(const BatchOperation& operation, CQdDeConfigPresenter& presenter,
                            const BatchRequest& request)
{
    if (operation.writes == BatchWrites::Nothing) return operation.run(presenter, request);
    const CString& named = request.file;
    const auto lock = LockRuleFiles(m_session.History(),
                                    named.isEmpty() ? CStringArray{m_open} : CStringArray{m_open, named});
    Check(operation, named);
    EnsureRuleFolderOf(named);
    m_history.Before(operation.writes, named);
    const bool saves = Saves(operation, m_open, named);
    BatchResult result;
    try {
        result = operation.run(presenter, request);
    } catch (...) {
        if (saves) Learn();
        throw;
    }
    if (result.ok) {
        m_history.After(operation.writes, named);
        if (operation.writes == BatchWrites::Both) m_open = named;
    }
    if (saves || operation.writes == BatchWrites::Both) Learn();
    if (!result.ok && operation.replaces) RefuseCopy(operation, named);
    return result;
}

/// The store takes a file that it cannot read for an empty one, and replaces whatever stands where it writes.
void BatchFiles::Check(const BatchOperation& operation, const CString& named) const
{
    if (operation.replaces) CheckReplaceable(named);
    const bool saves = Saves(operation, m_open, named);
    if (saves || operation.writes == BatchWrites::Named) CheckRuleFileIfThere(m_open);
    if (saves) RefuseOthersChange();
}

void BatchFiles::RefuseOthersChange() const
{
    if (!m_known.IsOtherIn(platform::Files().Read(m_open), m_session.Spec())) return;
    throw Refusal(
        u"%1：专业“%2”已被另一个程序改过，没有保存；请在它现在的内容上重新运行脚本，或者用 SaveAs 另存"_s.arg(
            platform::ToNative(m_open), m_session.Spec()));
}

/// What replaces a file begins with a copy of the open file, or of the template of new ones.
void BatchFiles::RefuseCopy(const BatchOperation& operation, const CString& named) const
{
    const CString from = operation.writes == BatchWrites::Named ? m_open : store::TemplatePath();
    const CString reason = WhyNotCopied(from, named);
    if (!reason.isEmpty()) throw Refusal(u"%1：%2"_s.arg(platform::ToNative(named), reason));
}

void BatchFiles::Learn()
{
    m_known.Know(platform::Files().Read(m_open));
}

} // namespace cli
