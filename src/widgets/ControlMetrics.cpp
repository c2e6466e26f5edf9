#include "widgets/ControlMetrics.h"

#include "widgets/TextMetrics.h"

#include <QtGui/QFontMetrics>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

namespace widgets {

namespace {

// Large enough for every style to lay out its parts; what is left over beside the text is the style's share.
constexpr QRect ProbeRect{0, 0, 1000, 200};

constexpr int EditMargin = 2 * EditSideMargin + EditCursorWidth;

QSize BesideText(const QRect& inner)
{
    return ProbeRect.size() - inner.size();
}

// The height is that of a Chinese line, whatever the text.
QSize TextSize(const QWidget& control, const QString& text)
{
    const QFontMetrics metrics = control.fontMetrics();
    const int height = metrics.size(Qt::TextSingleLine, ChineseLine()).height();
    return {metrics.size(Qt::TextShowMnemonic | Qt::TextSingleLine, text).width(), height};
}

QSize NeededForButton(const QPushButton& button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    option.rect = ProbeRect;
    option.text = button.text();
    if (button.isDefault()) option.features |= QStyleOptionButton::DefaultButton;
    const QRect inner = button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button);
    return TextSize(button, button.text()) + BesideText(inner);
}

QSize NeededForEdit(const QLineEdit& edit, const QString& fits)
{
    QStyleOptionFrame option;
    option.initFrom(&edit);
    option.rect = ProbeRect;
    option.lineWidth = edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &edit);
    option.midLineWidth = 0;
    option.state |= QStyle::State_Sunken;
    const QRect inner = edit.style()->subElementRect(QStyle::SE_LineEditContents, &option, &edit);
    return TextSize(edit, fits) + BesideText(inner) + QSize(EditMargin, 0);
}

QSize NeededForCombo(const QComboBox& combo, const QString& fits)
{
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    option.rect = ProbeRect;
    option.editable = combo.isEditable();
    option.frame = combo.hasFrame();
    option.subControls = QStyle::SC_All;
    const QRect inner =
        combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
    const QSize needed = TextSize(combo, fits) + BesideText(inner) + QSize(EditMargin, 0);
    return needed.expandedTo({0, combo.sizeHint().height()});
}

} // namespace

QSize NeededSize(const QWidget& control, const CString& fits)
{
    if (const auto* button = qobject_cast<const QPushButton*>(&control)) return NeededForButton(*button);
    if (const auto* edit = qobject_cast<const QLineEdit*>(&control)) return NeededForEdit(*edit, fits);
    if (const auto* combo = qobject_cast<const QComboBox*>(&control)) return NeededForCombo(*combo, fits);
    if (const auto* box = qobject_cast<const QGroupBox*>(&control))
        return {box->minimumSizeHint().width(), 0};
    const bool isCaption = qobject_cast<const QLabel*>(&control) ||
                           qobject_cast<const QRadioButton*>(&control) ||
                           qobject_cast<const QCheckBox*>(&control);
    if (isCaption) return control.sizeHint();
    return {0, 0};
}

} // namespace widgets
