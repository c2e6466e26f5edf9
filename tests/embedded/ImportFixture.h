#pragma once

#include "embedded/ImportGround.h"
#include "embedded/data/exchange/TableImport.h"

#include <gtest/gtest.h>

namespace test {

inline const CString BillHeader = QStringLiteral("number,name,unit,section,section_title\n");

inline CString BillRow(int number)
{
    return QStringLiteral("%1,项目,m,09,自有\n").arg(900000000 + number);
}

/// A table of so many bill items.
inline CString BillRows(int count)
{
    CString text = BillHeader;
    for (int row = 0; row < count; ++row)
        text += BillRow(row);
    return text;
}

/// A project that takes tables in.
class ImportFixture : public ::testing::Test
{
protected:
    ImportFixture() { m_project.Put(m_ground->Options()); }

    embedded::ImportReport Import(embedded::TableKind kind, const CString& text,
                                  const embedded::ImportOptions& options = {},
                                  const embedded::Progress& progress = {}) const
    {
        return ImportBytes(kind, text.toUtf8(), options, progress);
    }
    embedded::ImportReport ImportBytes(embedded::TableKind kind, const QByteArray& bytes,
                                       const embedded::ImportOptions& options = {},
                                       const embedded::Progress& progress = {}) const
    {
        m_project.Temp().WriteFile(QStringLiteral("in.csv"), bytes);
        return embedded::Import(m_project.Folder(), kind, m_project.Temp().Native(QStringLiteral("in.csv")),
                                options, progress);
    }
    /// What an export writes, as text.
    CString Exported(embedded::TableKind kind) const
    {
        const QString file = m_project.Temp().Native(QStringLiteral("out.csv"));
        embedded::Export(m_project.Folder(), kind, file);
        return CString::fromUtf8(m_project.Temp().ReadFile(QStringLiteral("out.csv")));
    }
    /// The lines and reasons of what was refused, one a line of text.
    static CString Refusals(const embedded::ImportReport& report)
    {
        CString text;
        for (const embedded::RefusedRow& row : report.refused)
            text += CString::number(row.line) + u':' + row.reason + u'\n';
        return text;
    }

    /// Runs one statement on the catalogue into which imports go.
    void CatalogueSql(const CString& statement) const { m_ground->Sql(m_project, statement); }

    std::unique_ptr<ImportGround> m_ground = MakeImportGround();
    TestProject m_project;
};

} // namespace test
