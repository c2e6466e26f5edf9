#pragma once

#include "cli/batch/BatchRequest.h"
#include "embedded/data/history/BatchHistory.h"
#include "presenter/CQdDeConfigPresenter.h"

#include <optional>
#include <vector>

namespace cli {

/// What an operation of the presenter answered.
struct BatchResult
{
    bool ok = false;
    std::optional<int> newId;
    std::optional<std::vector<CString>> indexes;
    std::optional<std::vector<ConfigNode*>> rules; ///< the presenter's
};

/// One operation that a batch can name: the presenter's operation of the same name.
struct BatchOperation
{
    QStringView name;
    std::set<BatchKey> keys; ///< what it takes
    BatchResult (*run)(CQdDeConfigPresenter&, const BatchRequest&);
    embedded::BatchWrites writes = embedded::BatchWrites::Nothing;
    bool replaces = false; ///< whatever stands at the path that the request names
};

/// The operation of that name, or null.
const BatchOperation* FindBatchOperation(const CString& name);

/// The names of all operations.
CStringArray BatchOperationNames();

} // namespace cli
