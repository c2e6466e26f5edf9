#include "editor/steps/ProgressWindow.h"

#include "editor/messages/Boxes.h"
#include "widgets/ControlText.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr int BarSteps = 1000;
constexpr int BarWidth = 60; ///< in characters

} // namespace

ProgressWindow::ProgressWindow(QWidget* parent, const QString& text, StepControl& control)
    : QDialog(parent), m_control(control), m_text(new QLabel(text)), m_explanation(new QLabel),
      m_bar(new QProgressBar), m_cancel(new QPushButton(u"取消"_s))
{
    // Message boxes have the program's name alone; a list of windows must tell them apart.
    setWindowTitle(u"%1 - %2"_s.arg(text, ProgramName()));
    setWindowModality(Qt::ApplicationModal);
    auto* column = new QVBoxLayout(this);
    m_bar->setMinimumWidth(fontMetrics().averageCharWidth() * BarWidth);
    m_bar->setAccessibleName(u"进度"_s);
    m_explanation->setTextFormat(Qt::PlainText);
    m_explanation->setWordWrap(true);
    m_explanation->hide();
    column->addWidget(m_text);
    column->addWidget(m_explanation);
    column->addWidget(m_bar);
    column->addWidget(m_cancel, 0, Qt::AlignRight);
    m_cancel->setToolTip(u"停下来，回到开始前的样子（Esc）"_s);
    connect(m_cancel, &QPushButton::clicked, this, [this] { reject(); });
    ShowState();
}

void ProgressWindow::Explain(const QString& text)
{
    if (text == m_explanation->accessibleName()) return;
    m_explanation->setAccessibleName(text);
    m_explanation->setText(widgets::Breakable(text));
    m_explanation->show();
}

void ProgressWindow::ShowState()
{
    const qint64 total = m_control.Total();
    m_bar->setRange(0, total == 0 ? 0 : BarSteps);
    if (total != 0) m_bar->setValue(static_cast<int>(std::min(m_control.Done(), total) * BarSteps / total));
    if (!m_control.IsCommitted()) return;
    m_text->setText(u"正在写文件，不能再取消…"_s);
    m_cancel->setEnabled(false);
}

void ProgressWindow::reject()
{
    if (m_control.IsCommitted()) return;
    m_control.Cancel();
    m_text->setText(u"正在取消…"_s);
    m_cancel->setEnabled(false);
}

} // namespace editor
