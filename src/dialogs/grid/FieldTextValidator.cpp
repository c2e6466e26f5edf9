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
    if (state == Invalid || metrics.horizontalAdvance(input) <= limit) return state;
    QString cut = input;
    int end = position;
    while (end > 0 && metrics.horizontalAdvance(cut) > limit) {
        const int length = end > 1 && cut.at(end - 1).isLowSurrogate() ? 2 : 1;
        end -= length;
        cut.remove(end, length);
    }
    // Nothing of it fits: refused, which leaves the field what can be undone.
    if (cut == m_accepted || metrics.horizontalAdvance(cut) > limit) return Invalid;
    input = cut;
    position = end;
    return state;
}

int FieldTextValidator::Room() const
{
    const QMargins margins = m_field.textMargins();
    return m_field.contentsRect().width() - margins.left() - margins.right() - 2 * widgets::EditSideMargin -
           widgets::EditCursorWidth;
}
