#pragma once

#include "platform/Text.h"

#include <QtGui/QValidator>
#include <QtWidgets/QComboBox>

/// Drops the characters that no rule file can hold as they are typed or pasted, and takes everything else.
class GridTextValidator : public QValidator
{
    Q_OBJECT

public:
    using QValidator::QValidator;
    State validate(QString& input, int& position) const override;
};

/// The choice list of a cell: lies over the cell, shows its text even when the list does not have it, and
/// opens its list at once. Ends with `Finished`, after `Chosen` if an entry was chosen.
class GridChoiceEditor : public QComboBox
{
    Q_OBJECT

public:
    GridChoiceEditor(const CStringArray& options, const CString& text, QWidget* parent);

    void hidePopup() override;
    /// From a text outside the list the down key comes to the first entry.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void Chosen(const QString& text);
    void Finished();

protected:
    void showEvent(QShowEvent* event) override;
    /// A typed key never chooses by itself; it searches the open list.
    void keyPressEvent(QKeyEvent* event) override;
    /// The wheel never chooses by itself.
    void wheelEvent(QWheelEvent* event) override;

private:
    void Finish();
    bool m_finished = false;
};
