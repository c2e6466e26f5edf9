#pragma once

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QFrame>

#include <functional>

class QLabel;
class QPushButton;

namespace editor {

/// Leads a new user through a window: a callout beside one widget after another says what it is for. The
/// window can be used meanwhile. The widget that is told of is framed; one that is not there or not to be
/// seen gets the callout in the middle of the window. Arrow keys turn, Esc ends.
class Tour : public QFrame
{
public:
    struct Step
    {
        /// Finds the widget when the step is shown; null for none.
        std::function<QWidget*()> widget;
        QString title;
        QString text;
    };

    /// `window` owns the callout, in which it is seen from `Start` on. There is at least one step. `ended` is
    /// called once when the user is through or has ended it.
    Tour(QWidget& window, QList<Step> steps, std::function<void()> ended = {});
    ~Tour() override;

    /// Shows the first step.
    void Start();
    /// Asks first whether to start, in the middle of the window; for the first start of the program. `ended`
    /// is called for a no, too.
    void Offer(const QString& title, const QString& text);

    /// The number of the step that is shown, from 0; -1 while none is.
    qsizetype Current() const noexcept { return m_current; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Frame;

    QPushButton* AddButton(const QString& text, const QString& tip, const std::function<void()>& step);
    void GoTo(qsizetype step);
    void Present(const QString& title, const QString& text, const QString& count);
    void Watch(QWidget* widget);
    void Place();
    void Colour();
    void End();

    QWidget& m_window;
    QList<Step> m_steps;
    std::function<void()> m_ended;
    qsizetype m_current = -1;
    QPointer<QWidget> m_told; ///< the widget that is told of
    Frame* m_frame;
    QLabel* m_title;
    QLabel* m_text;
    QLabel* m_count;
    QPushButton* m_back = nullptr;
    QPushButton* m_next = nullptr;
    QPushButton* m_end = nullptr;
};

} // namespace editor
