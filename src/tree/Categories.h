#pragma once

#include "platform/Text.h"
#include "xml/Dom.h"

#include <map>

/// What the category levels share among themselves; not part of the public face.
namespace tree {

/// The children of `node` by their attribute `name`. Of equal names the first child counts; a child without
/// a name stands under the empty text, which no category has.
std::map<CString, IXMLDOMNode> ChildrenByName(const IXMLDOMNode& node);

} // namespace tree
