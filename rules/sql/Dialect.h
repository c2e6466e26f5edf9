#pragma once

#include "rules/sql/SqlOptions.h"

#include "platform/Text.h"

namespace rules {

/// How a dialect writes what the three write differently, and how it is safe with any text. All else of the
/// query is the same for all three: CASE, comparisons, and the functions replace, substr, length, ltrim,
/// rtrim and coalesce.
class Dialect
{
public:
    explicit Dialect(SqlDialect dialect) : m_dialect(dialect) {}

    /// Whether a text of the database can be this one: NUL and halves of surrogate pairs stand in none.
    static bool CanHold(QStringView text);
    /// The text in quotes; whatever it holds, the quotes end behind it. Needs a text that the database can
    /// hold.
    CString Literal(const CString& text) const;
    /// The text by the codes of its characters, none of which needs a surrogate pair: for characters that
    /// nobody sees and that do not survive every copying of a query.
    CString Codes(const CString& text) const;
    /// The name in quotes, as safe as texts.
    CString Name(const CString& name) const;
    /// Names of one form are one column: some dialects look at no letter case, others at no more than a
    /// number of bytes.
    CString NameForm(const CString& name) const;
    /// The name cut to what the dialect tells apart, with room for as many bytes behind it.
    CString CutName(const CString& name, qsizetype room) const;

    /// The column as a text, compared byte by byte whatever the table says.
    CString AsText(const CString& column) const;
    /// True for a text of characters that compatibility normalisation and reading of numbers leave as they
    /// are, as nearly all are; false now and then for another one, too.
    CString IsSettled(const CString& text) const;
    /// True when each character of `text` is one of those at its place in `places`. `text` is a column.
    CString Matches(const CString& text, const CStringArray& places) const;
    /// What ends a step so that the next one reads its columns instead of reckoning each of them wherever it
    /// is mentioned. The rows still pass from step to step one by one; nothing is stored.
    CString EndOfStep() const;

private:
    CString Pattern(const CStringArray& places) const;

    SqlDialect m_dialect;
};

} // namespace rules
