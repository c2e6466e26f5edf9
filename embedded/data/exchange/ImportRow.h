#pragma once

#include "tables/Record.h"

#include <QtCore/QHash>

#include <stdexcept>

namespace embedded {

/// A row does not fit. The text is the reason.
class RowRefused : public std::runtime_error
{
public:
    explicit RowRefused(const CString& reason);
    ~RowRefused() override;
    CString Reason() const;
};

/// A column of a table's CSV form.
struct ImportColumn
{
    CString name;
    CString label; ///< the Chinese name, which an export writes
    bool required = false;
    bool isKey = false; ///< whether it is one of those by which a row is known
};

/// The header of a CSV file: which field belongs to which column.
class ImportHeader
{
public:
    /// Names and labels count alike, without regard to letter case and blanks around them. Raises
    /// `RowRefused` for an unknown, repeated or missing column, and for control characters.
    ImportHeader(const CArray<ImportColumn>& columns, const tables::Record& record);

    qsizetype Fields() const noexcept { return m_fields; }
    /// The field of a column; -1 when the file has no such column.
    qsizetype FieldOf(const CString& column) const { return m_fieldOf.value(column, -1); }
    /// The column of a field, which is one of those in the file.
    CString ColumnOf(qsizetype field) const { return m_fieldOf.key(field); }
    CString LabelOf(const CString& column) const { return m_labels.value(column); }

private:
    qsizetype m_fields;
    QHash<CString, qsizetype> m_fieldOf;
    QHash<CString, CString> m_labels;
};

/// A row of a CSV file, asked by column. Operations raise `RowRefused`, naming the column.
class ImportRow
{
public:
    /// `header` and `record` must outlive this. Raises `RowRefused` for quotes that do not fit, another
    /// number of fields than the header's, and characters that no XML file can hold.
    ImportRow(const ImportHeader& header, const tables::Record& record);

    int Line() const noexcept { return m_record.line; }
    /// The field as it stands; `absent` when the file has no such column. A control character, of which line
    /// breaks are some, is refused.
    CString Text(const CString& column, const CString& absent = {}) const;
    /// The same, without blanks and line breaks around it, which are not refused.
    CString Word(const CString& column, const CString& absent = {}) const;
    /// A word that may not be empty.
    CString Key(const CString& column) const;
    /// A whole number from `least` to `most` in its shortest form; `absent` when the file has no such column,
    /// `empty` when the field is empty.
    CString Number(const CString& column, int least, int most, const CString& absent,
                   const CString& empty) const;
    /// Of the words that stand for the same value the first: `choices` lists such words for each value. An
    /// empty field is the value `empty`.
    CString Choice(const CString& column, const CArray<CStringArray>& choices, const CString& absent,
                   const CString& empty) const;

    [[noreturn]] void Refuse(const CString& column, const CString& reason) const;

private:
    void RefuseControl(const CString& column, const CString& text) const;

    const ImportHeader& m_header;
    const tables::Record& m_record;
};

} // namespace embedded
