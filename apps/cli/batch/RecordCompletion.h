#pragma once

#include "cli/batch/BatchRequest.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "shared/BillNumbers.h"

#include <optional>

namespace cli {

/// Completes the records of a batch: a dialog shows items of the libraries in use only, so that an item
/// without the code of a library would stand in the file and nowhere else.
class RecordCompletion
{
public:
    /// `host` must outlive this and be installed.
    explicit RecordCompletion(const embedded::EmbeddedHost& host) : m_host(host) {}

    /// Gives the fields that the request's line did not name what the dialogs give a picked item: the code of
    /// the library in use, and what that says about the number, or about the base of a bill number. A field
    /// that was named, if only with an empty text, stays; so do all but the code for an unknown number.
    /// Quota items come from the quota library of the project's mode.
    void Complete(BatchRequest& request) const;

private:
    void CompleteQd(BatchRequest& request) const;
    void CompleteDe(BatchRequest& request) const;
    const SQdInfo* FindBill(const CString& number) const;
    const SPickedDe* FindQuota(const CString& number) const;

    const embedded::EmbeddedHost& m_host;
    mutable std::optional<shared::BillNumbers> m_bills; ///< made when the first bill item is looked up
};

} // namespace cli
