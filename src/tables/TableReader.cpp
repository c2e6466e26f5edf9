#include "tables/TableReader.h"

namespace tables {

TableReader::TableReader() = default;
TableReader::~TableReader() = default;

} // namespace tables
