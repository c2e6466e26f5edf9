#pragma once

#include "editor/steps/StepControl.h"

#include <QtCore/QObject>

#include <functional>
#include <memory>

namespace editor {

class WorkThread;

/// Work behind the windows, one piece at a time and for the newest state only: a piece that is asked for
/// while another one runs takes its place, and what that one would have come to does not count. To be used on
/// the thread of the windows, which never waits for it but at the end of this object.
class BackgroundWork : public QObject
{
public:
    /// What a piece of work has come to, to be taken over on the thread of the windows.
    using Outcome = std::function<void()>;
    /// The work, on a thread of its own. It must own all that it looks at. Between its pieces it may ask
    /// whether it still counts: `StepControl::Check` ends it when it does not. Whatever else it raises is
    /// shown to the user.
    using Work = std::function<Outcome(StepControl&)>;

    explicit BackgroundWork(QObject* parent = nullptr);
    /// Leaves the work and waits until it has ended.
    ~BackgroundWork() override;

    /// Does that from now on, in place of what is being done.
    void Start(Work work);
    /// Does nothing any more. Nothing of what was begun comes from then on.
    void Leave();
    /// Whether something is being done that still counts.
    bool IsBusy() const noexcept { return m_wanted; }
    /// How far it is, from 0 to 1; 0 when nothing is known.
    double Progress() const;

private:
    void Begin();
    void TakeOver();

    Work m_next;           ///< asked for while another one runs; empty for none
    bool m_wanted = false; ///< whether the work that runs, or the next one, counts
    Outcome m_outcome;     ///< of the work that runs; set by its thread
    std::unique_ptr<StepControl> m_control;
    std::unique_ptr<WorkThread> m_thread; ///< null when nothing runs
};

} // namespace editor
