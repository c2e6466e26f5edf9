#pragma once

#include "rules/draft/RuleEdits.h"

#include <QtWidgets/QDialog>

#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace editor {

/// Asks into which categories rules are to be copied. What would not go with a category is told beside it
/// before anything is copied.
class CopyDialog : public QDialog
{
public:
    /// What of the rules does not go with a category, given its text.
    using MisfitsOf = std::function<std::vector<rules::Misfit>(const CString& category)>;

    /// `draft` must outlive this. `from` is the category that the rules are of.
    CopyDialog(const rules::Draft& draft, const CString& from, std::size_t count, MisfitsOf misfits,
               QWidget* parent);

    /// The texts of the checked categories, in the order of the list.
    CStringArray Chosen() const;

private:
    void Build(std::size_t count);
    void Fill(const rules::Draft& draft, const CString& from);
    void Filter(const QString& text);
    void ShowState();

    MisfitsOf m_misfits;
    QLineEdit* m_filter;
    QTreeWidget* m_tree;
    QLabel* m_told;
    QPushButton* m_accept;
};

} // namespace editor
