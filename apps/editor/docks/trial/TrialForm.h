#pragma once

#include "editor/docks/trial/TrialFields.h"

#include <QtWidgets/QScrollArea>

#include <map>
#include <vector>

class QComboBox;
class QFormLayout;
class QToolButton;

namespace editor {

/// A field for each thing that a component may have: its values to choose from, or to be typed. Those that
/// neither condition nor formula asks for are folded away.
class TrialForm : public QScrollArea
{
    Q_OBJECT

public:
    using Values = std::map<CString, CString>; ///< by field; those that are filled in

    explicit TrialForm(QWidget* parent = nullptr);

    /// Shows these fields with these values; a value of another field is left out. Does not tell `Changed`.
    void Show(const std::vector<TrialField>& fields, const Values& values);
    const std::vector<TrialField>& Fields() const noexcept { return m_fields; }
    Values Filled() const;
    /// The fields come after this widget of the same window in the order of Tab, whenever they are made anew.
    void ComeAfter(QWidget& before) { m_before = &before; }
    /// Null when there is none.
    QWidget* FirstField() const;

signals:
    /// The user has filled in something else.
    void Changed();

private:
    void Build();
    void OrderTabs() const;
    void AddHeading(QFormLayout& form, const QString& text) const;
    void AddField(QFormLayout& form, const TrialField& field);
    void ShowOthers(bool shown);
    void Fill(const Values& values);

    std::vector<TrialField> m_fields;
    std::vector<QComboBox*> m_boxes; ///< beside the fields
    QWidget* m_before = nullptr;
    QToolButton* m_others = nullptr; ///< null where there are none
    bool m_othersShown = false;
};

} // namespace editor
