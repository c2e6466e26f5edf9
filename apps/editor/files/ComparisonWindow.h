#pragma once

#include "editor/files/FileDialogs.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;

namespace editor {

class DifferenceView;

/// Shows what differs between two rule files, rule by rule or as XML. Changes nothing.
class ComparisonWindow : public QDialog
{
public:
    /// `files` to choose from; those of the path texts `before` and `after` are shown first.
    ComparisonWindow(QWidget* parent, const FileChoices& files, const CString& before, const CString& after);

private:
    void Build();
    QComboBox* MakeCombo(const FileChoices& files, const CString& chosen);
    /// A file that is none of the project's may be chosen, too.
    void ChooseOther(QComboBox& combo);
    void Swap();
    void ShowDifference();

    QComboBox* m_before;
    QComboBox* m_after;
    QCheckBox* m_asXml;
    DifferenceView* m_difference;
};

} // namespace editor
