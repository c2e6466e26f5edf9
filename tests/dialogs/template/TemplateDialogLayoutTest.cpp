// Measures every control of every template with the metrics of its own text.

#include "dialogs/template/DialogTemplates.h"
#include "dialogs/template/PlainDialog.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOption>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace dialogs;
using test::PlainDialog;

namespace {

struct Measured
{
    CString style;
    int points = 0;
};

void PrintTo(const Measured& measured, std::ostream* out)
{
    *out << measured.style.toStdString() << ' ' << measured.points << " pt";
}

/// A dialog of each template in one style and font size.
class TemplateDialogLayout : public ::testing::TestWithParam<Measured>
{
protected:
    TemplateDialogLayout() : m_style(QStyleFactory::create(GetParam().style))
    {
        QFont font = QApplication::font();
        font.setPointSize(GetParam().points);
        for (const DialogTemplate* layout : templates::All()) {
            auto& dialog = m_dialogs.emplace_back(std::make_unique<PlainDialog>(*layout, nullptr));
            dialog->setFont(font);
            dialog->Create();
            for (QWidget* widget : dialog->findChildren<QWidget*>())
                widget->setStyle(m_style.get());
            dialog->setStyle(m_style.get());
        }
    }

    std::unique_ptr<QStyle> m_style;
    std::vector<std::unique_ptr<PlainDialog>> m_dialogs;
};

QRect ButtonContents(const QPushButton& button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    option.text = button.text();
    return button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button);
}

QRect RadioContents(const QRadioButton& radio)
{
    QStyleOptionButton option;
    option.initFrom(&radio);
    option.text = radio.text();
    return radio.style()->subElementRect(QStyle::SE_RadioButtonContents, &option, &radio);
}

QRect EditContents(const QLineEdit& edit)
{
    QStyleOptionFrame option;
    option.initFrom(&edit);
    option.lineWidth = edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &edit);
    return edit.style()->subElementRect(QStyle::SE_LineEditContents, &option, &edit);
}

QRect ComboContents(const QComboBox& combo)
{
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    option.editable = combo.isEditable();
    option.subControls = QStyle::SC_All;
    return combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
}

/// Where the control draws its text; invalid for a control whose text is not the table's.
QRect RoomForText(const QWidget& control)
{
    if (const auto* button = qobject_cast<const QPushButton*>(&control)) return ButtonContents(*button);
    if (const auto* radio = qobject_cast<const QRadioButton*>(&control)) return RadioContents(*radio);
    if (const auto* edit = qobject_cast<const QLineEdit*>(&control)) return EditContents(*edit);
    if (const auto* combo = qobject_cast<const QComboBox*>(&control)) return ComboContents(*combo);
    if (const auto* label = qobject_cast<const QLabel*>(&control)) return label->contentsRect();
    if (const auto* box = qobject_cast<const QGroupBox*>(&control)) return box->rect().adjusted(0, 0, -10, 0);
    return {};
}

void ExpectFits(const ControlRow& row, const QWidget& control)
{
    const QRect room = RoomForText(control);
    if (!room.isValid()) return;
    const CString text = (row.caption.isEmpty() ? row.fits : row.caption).toString();
    const QFontMetrics metrics(control.font());
    const QSize needed = metrics.size(Qt::TextShowMnemonic | Qt::TextSingleLine, text);
    EXPECT_GE(room.width(), needed.width()) << row.id << ' ' << text.toStdString();
    EXPECT_GE(room.height(), std::max(needed.height(), metrics.height()))
        << row.id << ' ' << text.toStdString();
}

/// The table's rectangle with a combo's list closed, in dialog units.
QRect Closed(const ControlRow& row)
{
    const bool isCombo = row.kind == ControlKind::DropList || row.kind == ControlKind::EditableCombo;
    return {row.rect.x, row.rect.y, row.rect.width, isCombo ? 12 : row.rect.height};
}

/// The control of a row; rows without an id are found by their caption and kind.
const QWidget* ControlOf(const PlainDialog& dialog, const ControlRow& row)
{
    if (row.id != NoId) return dialog.GetDlgItem(row.id);
    for (const auto* box : dialog.findChildren<QGroupBox*>())
        if (row.kind == ControlKind::GroupBox && box->title() == row.caption) return box;
    for (const auto* label : dialog.findChildren<QLabel*>())
        if (row.kind == ControlKind::Static && label->text() == row.caption) return label;
    return nullptr;
}

} // namespace

TEST_P(TemplateDialogLayout, NoTextIsCutOff)
{
    for (std::size_t index = 0; index < m_dialogs.size(); ++index) {
        for (const ControlRow& row : templates::All().at(index)->rows) {
            const QWidget* control = ControlOf(*m_dialogs[index], row);
            ASSERT_NE(control, nullptr) << row.id;
            ExpectFits(row, *control);
        }
    }
}

TEST_P(TemplateDialogLayout, EveryControlLiesInsideTheDialog)
{
    for (std::size_t index = 0; index < m_dialogs.size(); ++index) {
        const QRect inside = m_dialogs[index]->Content()->rect();
        for (const ControlRow& row : templates::All().at(index)->rows)
            EXPECT_TRUE(inside.contains(ControlOf(*m_dialogs[index], row)->geometry())) << row.id;
    }
}

// A pixel is left to rounding.
TEST_P(TemplateDialogLayout, WhatTheTableKeepsApartStaysApart)
{
    for (std::size_t index = 0; index < m_dialogs.size(); ++index) {
        const auto rows = templates::All().at(index)->rows;
        for (const ControlRow& one : rows) {
            for (const ControlRow& other : rows) {
                if (&one == &other || Closed(one).intersects(Closed(other))) continue;
                const QRect first = ControlOf(*m_dialogs[index], one)->geometry();
                const QRect second = ControlOf(*m_dialogs[index], other)->geometry();
                const QRect common = first & second;
                EXPECT_LE(std::min(common.width(), common.height()), 1) << one.id << ' ' << other.id;
            }
        }
    }
}

TEST_P(TemplateDialogLayout, LargerFontGivesTheSameLayoutAsStartingWithIt)
{
    QFont larger = QApplication::font();
    larger.setPointSize(GetParam().points + 3);
    for (std::size_t index = 0; index < m_dialogs.size(); ++index) {
        PlainDialog fresh(*templates::All().at(index), nullptr);
        fresh.setFont(larger);
        fresh.Create();
        for (QWidget* widget : fresh.findChildren<QWidget*>())
            widget->setStyle(m_style.get());
        fresh.setStyle(m_style.get());
        m_dialogs[index]->setFont(larger);
        EXPECT_EQ(m_dialogs[index]->Content()->size(), fresh.Content()->size());
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, TemplateDialogLayout, ::testing::ValuesIn([] {
                             std::vector<Measured> all;
                             for (const CString& style : {u"Fusion"_s, u"Windows"_s})
                                 for (int points = 8; points <= 16; ++points)
                                     all.push_back({style, points});
                             return all;
                         }()));
