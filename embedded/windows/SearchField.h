#pragma once

#include <QtWidgets/QLineEdit>

#include <functional>

namespace embedded {

/// The field in which words are typed that a list below it has to hold. Keys that move through a list go to
/// that list, so that a person types, moves and picks without leaving the field. Escape empties it first.
class SearchField : public QLineEdit
{
public:
    /// `list` takes the keys; it must outlive the field.
    explicit SearchField(QWidget& list, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget& m_list;
};

} // namespace embedded
