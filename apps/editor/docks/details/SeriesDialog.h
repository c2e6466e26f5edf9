#pragma once

#include "rules/draft/Series.h"
#include "rules/model/Facts.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace editor {

class WorkSession;

/// From one rule a rule for each value of an attribute, or for each range between neighbouring values. Shows
/// the rules to come as it is filled in, or the reason why they cannot come.
class SeriesDialog : public QDialog
{
    Q_OBJECT

public:
    /// The rule at `position` of the category is the pattern. `attribute` is the one to begin with; empty or
    /// unknown for one that suits.
    SeriesDialog(WorkSession& session, CString category, std::size_t position, const CString& attribute,
                 QWidget* parent);

    /// How many rules come.
    std::size_t Count() const noexcept { return m_count; }

    /// Puts the series into the draft, as one edit.
    void accept() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* MakeValues();
    QWidget* MakeForm();
    QWidget* MakePreview();
    void ShowAttribute();
    void ShowEnds();
    void ShowPreview();
    QListWidgetItem* AddValue(const CString& value, bool isChosen);
    void NewValue();
    void DeleteValues();
    void PasteValues();
    void ChooseAll(bool chosen);
    rules::SeriesPlan Plan() const;
    const rules::Rule& Pattern() const;
    const rules::AttributeFacts* Facts() const;

    WorkSession& m_session;
    CString m_category;
    std::size_t m_position;
    int m_ruleId;
    std::size_t m_count = 0;
    QComboBox* m_attribute;
    QComboBox* m_form;
    QCheckBox* m_openEnds;
    QCheckBox* m_rest;
    QCheckBox* m_replaces;
    QListWidget* m_values;
    QListWidget* m_preview;
    QLabel* m_hint;
    QLabel* m_fault;
    QPushButton* m_make;
};

/// The values that a text holds: one a line, or separated by blanks, tabs or commas of any kind; numbers in
/// full-width characters become ASCII. Each once.
CStringArray SplitValues(const CString& text);

} // namespace editor
