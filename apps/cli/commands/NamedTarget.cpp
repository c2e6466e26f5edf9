#include "cli/commands/NamedTarget.h"

namespace cli {

NamedTarget::NamedTarget(const Arguments& arguments)
    : m_session(arguments),
      m_lock(
          LockRuleFiles(m_session.History(), {CurrentFile(), ConfigurationPath(arguments.Positional()[0])})),
      m_path(TargetConfiguration(arguments))
{
    KeepAndCheck(CurrentFile(), m_session.History());
    m_session.History().Keep(m_path);
    m_presenter.emplace(CString());
}

} // namespace cli
