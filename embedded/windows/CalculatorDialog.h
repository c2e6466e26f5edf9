#pragma once

#include "embedded/windows/KnownNames.h"

#include <QtWidgets/QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace embedded {

/// The modal calculator: a formula, checked as it is typed, over the calculation items of a small category.
/// A formula that was there and is faulty stays as it is until the user changes it; only a good or a blank
/// one can be accepted.
class CalculatorDialog : public QDialog
{
public:
    /// `rules` outlives this.
    CalculatorDialog(host::ICalculationRules& rules, const CString& categoryText, const CString& formula,
                     QWidget* parent);
    ~CalculatorDialog() override;

    /// The formula as it stands in the field.
    CString Formula() const;

private:
    QWidget* MakeOperators();
    void MakeItemTable();
    void FillItemTable();
    void LayOut(const CString& categoryText);
    void Check();
    void Insert(const CString& text);
    void InsertItem();

    KnownNames m_names;
    QLineEdit* m_formula;
    QLabel* m_message;
    QTableWidget* m_items;
    QPushButton* m_insert;
    QPushButton* m_ok;
};

} // namespace embedded
