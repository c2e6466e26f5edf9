#pragma once

#include "editor/docks/takeoff/BillPages.h"
#include "editor/docks/takeoff/TakeoffHits.h"

#include <QtWidgets/QWidget>

class QLabel;
class QPushButton;
class QTreeView;

namespace editor {

class BillModel;

/// The bill of quantities that the draft makes of the open take-off table: shown, written as a workbook or as
/// CSV, printed, and put into a PDF file.
class BillPanel : public QWidget
{
    Q_OBJECT

public:
    /// Both must outlive this.
    BillPanel(WorkSession& session, TakeoffHits& hits, QWidget* parent = nullptr);

    /// Writes the bill to a path text, as `ktqdde apply` does: a workbook, or CSV for a name that ends in
    /// ".csv". Shows how far it is when that takes a while. False when the user has cancelled it; what stood
    /// there is whole then. Raises `tables::TableError`, and `std::runtime_error` when there is no bill, or
    /// the table is another one than the bill was made of; what stood there is whole then, too.
    bool Export(const CString& path);
    /// Writes the bill as PDF, A4 upright. Raises `platform::FileError` with what stood there whole, and
    /// `std::runtime_error` when there is no bill.
    void WritePdf(const CString& path) const;

signals:
    /// The user wants to see what gives the bill or quota item of this number.
    void ItemWanted(const QString& number);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* BuildButtons();
    void Connect();
    void ShowBill();
    void ShowState();
    void AskForExport();
    void AskForPdf();
    void Print();
    TakeoffFiguresPtr Figures() const;
    BillPages::Titles Titles() const;
    QString ProposedFile(const QString& ending) const;

    WorkSession& m_session;
    TakeoffHits& m_hits;
    BillModel* m_model;
    QPushButton* m_export;
    QPushButton* m_pdf;
    QPushButton* m_print;
    QLabel* m_state;
    QTreeView* m_view;
    bool m_isStale = false; ///< another bill has come while the panel was hidden
};

} // namespace editor
