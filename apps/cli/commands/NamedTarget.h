#pragma once

#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "presenter/CQdDeConfigPresenter.h"

#include <optional>

namespace cli {

/// The current configuration, open for a command that writes the configuration which its first argument
/// names. Both files are locked for as long as this lives, and what they hold is kept in the history.
class NamedTarget
{
public:
    /// Raises as `Session`, `LockRuleFiles`, `TargetConfiguration` and `KeepAndCheck` do, all before anything
    /// is written.
    explicit NamedTarget(const Arguments& arguments);

    /// The path text of the configuration's rule file.
    const CString& Path() const noexcept { return m_path; }
    CQdDeConfigPresenter& Presenter() { return *m_presenter; }

private:
    Session m_session;
    embedded::RuleFileLock m_lock;
    CString m_path;
    std::optional<CQdDeConfigPresenter> m_presenter; ///< empty only while its file is being checked
};

} // namespace cli
