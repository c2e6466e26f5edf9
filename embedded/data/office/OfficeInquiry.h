#pragma once

#include "embedded/data/office/Office.h"
#include "embedded/data/office/ProjectUses.h"

#include <future>
#include <memory>

class QThread;

namespace embedded {

/// A question to an office, asked on a thread of its own by a connection that ends with it: meanwhile one
/// reads, and a window is painted while one waits. Where the system gives no thread it is asked at once.
///
/// Also tells the office what the project uses, where that is not what the office knows and the user may tell
/// it.
class OfficeInquiry
{
public:
    /// Begins. A `use` that names no project tells nothing.
    explicit OfficeInquiry(const CString& office, ProjectUse use = {});
    /// Waits until it has ended.
    ~OfficeInquiry();
    OfficeInquiry(const OfficeInquiry&) = delete;
    OfficeInquiry& operator=(const OfficeInquiry&) = delete;

    /// Waits for the answer, and gives windows their turn if that takes a moment. Raises what `Office`
    /// raises. To be called once.
    OfficeAnswer Answer();

private:
    void Ask();

    CString m_office;
    ProjectUse m_use;
    std::promise<OfficeAnswer> m_promise;
    std::future<OfficeAnswer> m_answer;
    std::unique_ptr<QThread> m_thread;
};

} // namespace embedded
