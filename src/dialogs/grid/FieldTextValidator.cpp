#include "dialogs/grid/FieldTextValidator.h"

#include "widgets/TextMetrics.h"

#include <QtWidgets/QLineEdit>

#include <algorithm>

FieldTextValidator::FieldTextValidator(QLineEdit& field)
    : GridTextValidator(&field), m_field(field), m_accepted(field.text())
{
    connect(&field, &QLineEdit::textChanged, this, [this](const QString& text) { m_accepted = text; });
}

QValidator::State FieldTextValidator::validate(QString& input, int& position) const
{
    const State state = GridTextValidator::validate(input, position);
    const QFontMetrics metrics = m_field.fontMetrics();
    const int limit = std::max(Room(), metrics.horizontalAdvance(m_accepted));
    return metrics.horizontalAdvance(input) <= limit ? state : Invalid;
}

int FieldTextValidator::Room() const
{
    const QMargins margins = m_field.textMargins();
    return m_field.contentsRect().width() - margins.left() - margins.right() - 2 * widgets::EditSideMargin -
           widgets::EditCursorWidth;
}
