#pragma once

#include <QtWidgets/QLabel>

#include <functional>
#include <utility>

namespace widgets {

/// A text that can be clicked like a link. The keyboard reaches it too: Tab gives it the focus, Space or
/// Enter clicks it. So does assistive technology, to which it is a link.
class NotifyingStatic : public QLabel
{
public:
    explicit NotifyingStatic(QWidget* parent);

    /// Runs `handler` at every click.
    void OnClicked(std::function<void()> handler) { m_clicked = std::move(handler); }
    /// Clicks it.
    void Click();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::function<void()> m_clicked;
};

} // namespace widgets
