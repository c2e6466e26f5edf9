#pragma once

#include "host/Records.h"

#include <QtCore/QHash>

#include <vector>

namespace embedded {

/// A small category with everything that hangs on it.
struct SmallCategory
{
    SNvKtSmallCategoryId id;
    CString name;
    CString fullName; ///< specialty, big and small category joined by backslashes
    int attType = 0;
    CString indexPath;       ///< places in bill libraries, separated by bars
    CStringArray attributes; ///< four texts per attribute: group, display name, drop list, code
    CStringArray units;      ///< of the attributes' numbers, one each; empty for none
    CStringArray mainItems;  ///< calculation items that the category is measured by
    CStringArray otherItems; ///< calculation items that go with it
};

struct BigCategory
{
    SNvKtBigCategoryId id;
    CString name;
    CString fullName;
    std::vector<SmallCategory> smallCategories;
};

struct Specialty
{
    SNvKtSpecId id;
    CString name;
    std::vector<BigCategory> bigCategories;
};

/// Where the values of an attribute code come from.
struct CellSource
{
    int kind = 0;
    CStringArray values;
};

/// One value list of an attribute code.
struct DropList
{
    CString name;
    CStringArray values;
};

/// The catalogue in memory, without its libraries. Loaded once and never changed, so that parts of it may be
/// pointed at.
struct CatalogueData
{
    std::vector<Specialty> specialties;
    QHash<CString, CellSource> cells;            ///< by attribute code
    QHash<CString, std::vector<DropList>> lists; ///< by attribute code, in their own order
    QHash<CString, RuleCodeStruct> rules;        ///< by calculation item
};

} // namespace embedded
