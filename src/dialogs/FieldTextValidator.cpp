#include "dialogs/FieldTextValidator.h"

#include <QtWidgets/QLineEdit>

#include <algorithm>

namespace {

/// The toolkit draws the text of a field that far from its sides.
constexpr int SideMargin = 2;
constexpr int CursorWidth = 1;

} // namespace

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
    return m_field.contentsRect().width() - margins.left() - margins.right() - 2 * SideMargin - CursorWidth;
}
