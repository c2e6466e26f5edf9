#pragma once

#include "rules/model/Configuration.h"
#include "rules/model/Facts.h"
#include "rules/sheet/SheetItems.h"

/// Rules as a table, one line a rule, so that many can be made in a workbook. docs/rule-sheets.md tells the
/// columns.
namespace rules {

/// A table in memory: what a workbook or a CSV file has.
struct RuleSheet
{
    CStringArray headings;
    struct Row
    {
        qint64 line = 0; ///< in the file, from 1; 0 for one that was not read
        CStringArray cells;
    };
    std::vector<Row> rows;
};

/// Why a line cannot be taken or a rule cannot be written.
struct SheetFault
{
    qint64 line = 0; ///< of the table; 0 for none
    CString text;
};

/// The rules of some categories as a table. Its columns are the category, the flag of default rules, the
/// attributes that `facts` know of the categories and behind them others that conditions name, bill items and
/// quota items. What heads a column is read back as what it is: an attribute without a name, or with that of
/// another column, has none. The default rule without items at the end of a category has no line. What no
/// cell can say is told in `faults`; the table is not to be used then.
RuleSheet MakeSheet(const std::vector<SmallCategoryPtr>& categories, const CatalogueFacts& facts,
                    const SheetItems& items, std::vector<SheetFault>& faults);

/// What `present` becomes when the lists of the categories that the table names are replaced by its lines. A
/// line that says what a rule says is that rule, with id and all that no cell shows; a category whose lines
/// have no default rule gets one without items at its end. `present` must have the categories that may be
/// named. Items that no library in use has are taken from other rules. What is wrong is told in `faults`, all
/// of it; the result is not to be used then.
Configuration ReadSheet(const RuleSheet& sheet, const Configuration& present, const CatalogueFacts& facts,
                        const SheetItems& items, std::vector<SheetFault>& faults);

} // namespace rules
