#pragma once

#include "tree/CPath.h"
#include "tree/QdDeRecords.h"

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>

#include <map>
#include <set>
#include <stdexcept>
#include <vector>

namespace cli {

/// A line of a batch is no request. The text is the reason.
class BadLine : public std::runtime_error
{
public:
    explicit BadLine(const CString& reason) : std::runtime_error(reason.toStdString()) {}
};

/// What a line of a batch may hold besides `op`.
enum class BatchKey { Path, Array, Conditions, Qd, De, Ids, DeIdsByQd, File };

/// The arguments of one operation, checked: every text can stand in an XML file, every number is a 32-bit
/// integer.
struct BatchRequest
{
    std::set<BatchKey> keys; ///< what the operation takes
    CPath path{};
    CStringArray array;
    std::vector<CStringArray> conditions; ///< may be missing from a line that may have them
    QdStruct qd;
    DeStruct de;
    std::set<CString> named; ///< the fields of the record that the line names
    std::set<int> ids;
    std::map<int, std::set<int>> deIdsByQd;
    CString file; ///< path text
};

/// The JSON object of a line. Raises `BadLine` for bytes that are no UTF-8, no JSON or no object.
QJsonObject ParseBatchLine(const QByteArray& line);

/// The name of the operation. Raises `BadLine` when there is none.
CString BatchOperationName(const QJsonObject& line);

/// Reads the arguments of an operation that takes `keys`, all of which but the conditions must be there.
/// Raises `BadLine` for a missing, unknown or superfluous key, a wrong type, a number out of range, an
/// unknown category and a text that no XML file can hold. A path may stand in every line.
BatchRequest ReadBatchRequest(const QJsonObject& line, const std::set<BatchKey>& keys);

} // namespace cli
