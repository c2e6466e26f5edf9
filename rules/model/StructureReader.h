#pragma once

#include "rules/model/Structure.h"
#include "xml/Dom.h"

namespace rules {

/// What is odd about the build of a rule file, in the order of the file, given its document element. To be
/// asked before anything else reads the document: readers add what is missing.
FileStructure ReadStructure(const IXMLDOMNode& root);

} // namespace rules
