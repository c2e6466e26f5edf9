#pragma once

#include "cli/batch/BatchOperation.h"
#include "cli/reading/Session.h"
#include "embedded/data/history/BatchHistory.h"
#include "embedded/data/history/KnownSpecialty.h"

#include <memory>

namespace cli {

/// The rule files of one batch. A batch may run for long and other programs may work on the same files
/// meanwhile, so each operation that writes has them to itself, looks at them first as the start did, keeps
/// copies, and is refused when it would write over what another program has saved in the same specialty.
class BatchFiles
{
public:
    /// Both must outlive this. `openFile` is the path text of the file that the batch opens.
    BatchFiles(Session& session, const CString& openFile);

    /// Opens the file, which is named or else the project's current one. Raises `Refusal` when it cannot be
    /// read, `embedded::Error` when another program holds it or no copy can be kept.
    std::unique_ptr<CQdDeConfigPresenter> Open(bool isNamed);

    /// Carries an operation out. Raises the same, also when it would write over another program's rules or
    /// put a rule file in the place of something else; nothing has been written then.
    BatchResult Run(const BatchOperation& operation, CQdDeConfigPresenter& presenter,
                    const BatchRequest& request);

private:
    void Check(const BatchOperation& operation, const CString& named) const;
    void RefuseOthersChange() const;
    void RefuseCopy(const BatchOperation& operation, const CString& named) const;
    void Learn();

    Session& m_session;
    CString m_open;
    embedded::BatchHistory m_history;
    embedded::KnownSpecialty m_known; ///< what the presenter's rules come from
};

} // namespace cli
