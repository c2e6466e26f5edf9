#pragma once

#include "platform/Text.h"
#include "xml/Dom.h"

#include <map>

class QdDeConfigNode;

/// What the category levels share among themselves; not part of the public face.
namespace tree {

/// The children of `node` by their attribute `name`. Of equal names the first child counts; a child without
/// a name stands under the empty text, which no category has.
std::map<CString, IXMLDOMNode> ChildrenByName(const IXMLDOMNode& node);

/// The name of the specialty that is the parent of a big category; empty for a null one. Only the specialty
/// knows what it is, so Spec.cpp defines this.
CString SpecNameOf(const QdDeConfigNode* spec);

} // namespace tree
