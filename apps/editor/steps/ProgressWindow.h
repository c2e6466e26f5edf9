#pragma once

#include "editor/steps/StepControl.h"

#include <QtWidgets/QDialog>

#include <chrono>

class QLabel;
class QProgressBar;
class QPushButton;

namespace editor {

/// A step that ends within this time shows no window, which would only flicker.
inline constexpr std::chrono::milliseconds QuietTime(300);

/// The modal window over a running step: a text, its progress and a button that cancels it. Closing it in any
/// way asks the step to stop; the window stays until whoever made it ends it.
class ProgressWindow : public QDialog
{
public:
    /// `control` must outlive this.
    ProgressWindow(QWidget* parent, const QString& text, StepControl& control);

    /// Says more about the step, above its progress. A path in it may be broken into lines anywhere.
    void Explain(const QString& text);
    /// Shows how far the step is, and whether it can still be cancelled.
    void ShowState();

protected:
    void reject() override;

private:
    StepControl& m_control;
    QLabel* m_text;
    QLabel* m_explanation;
    QProgressBar* m_bar;
    QPushButton* m_cancel;
};

} // namespace editor
