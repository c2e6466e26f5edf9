#pragma once

#include "platform/Text.h"

#include <vector>

/// What the rules of a file as plain values do not show: how the file is built.
namespace rules {

/// Where in a rule file something stands.
enum class FileLevel {
    Root,          ///< beside the specialties
    Specialty,     ///< beside the big categories
    BigCategory,   ///< beside the small categories
    SmallCategory, ///< beside the container of the rules
    RuleList,
    Rule, ///< beside the three containers of a rule
    ConditionList,
    BillList,
    Bill, ///< beside the container of its quota items
    QuotaList,
};

/// Something that a reader passes over, or takes for something that it is not.
struct StructureNote
{
    enum class Kind {
        Repeated,    ///< a name or a container stands once more; only the first is read
        Unnamed,     ///< a category without a name, which is not read
        UnknownName, ///< an element whose name says that it does not belong there
        NoElement,   ///< a comment, an instruction or text in a list, which is read as an empty entry
        NoDefault,   ///< the list of a small category has no default rule
    };

    Kind kind = Kind::UnknownName;
    FileLevel level = FileLevel::Root; ///< what it stands in
    CString category;                  ///< as far as it is known there: names joined by backslashes
    CString element;                   ///< its tag, or its name where that is what is repeated
    int position = 0;                  ///< of the rule in its list, from 1; 0 above the rules
    int ruleId = 0;
    bool isRead = false; ///< whether readers take it for an entry of the list all the same
};

using FileStructure = std::vector<StructureNote>;

} // namespace rules
