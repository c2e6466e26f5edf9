#include "dialogs/secondary/wizard/OnlineAutoConfigFixture.h"

#include "widgets/ReadableColour.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>

using namespace test::autoconfig;

// Colours and font of the wizard form.

namespace {

const QColor Red(255, 0, 0);
const QColor Blue(0, 0, 255);
const QPalette Light(QColor(239, 239, 239), QColor(239, 239, 239));
const QPalette Dark(QColor(53, 53, 53), QColor(45, 45, 45));

class OnlineAutoConfigColours : public OnlineAutoConfigTest
{
protected:
    OnlineAutoConfigColours() { QApplication::setPalette(Light); }
    ~OnlineAutoConfigColours() override
    {
        QApplication::setPalette(m_palette);
        QApplication::setFont(m_font);
    }
    static void UsePalette(const QPalette& palette)
    {
        QApplication::setPalette(palette);
        QCoreApplication::processEvents();
    }
    QColor Ink(ControlId id) const { return m_wizard->GetDlgItem(id)->palette().color(QPalette::WindowText); }
    QColor Paper(ControlId id) const { return m_wizard->GetDlgItem(id)->palette().color(QPalette::Window); }

private:
    QPalette m_palette = QApplication::palette();
    QFont m_font = QApplication::font();
};

} // namespace

TEST_F(OnlineAutoConfigColours, WarningIsRedAndTheLinkBlue)
{
    OpenWizard();
    EXPECT_EQ(Ink(StepWarning), Red);
    EXPECT_EQ(Ink(NoteLink), Blue);
}

TEST_F(OnlineAutoConfigColours, OtherControlsAndBackgroundsKeepTheDialogsColours)
{
    OpenWizard();
    EXPECT_EQ(Ink(BillLibraryLabel), Light.color(QPalette::WindowText));
    EXPECT_EQ(Paper(NoteLink), Light.color(QPalette::Window));
    EXPECT_EQ(Paper(StepWarning), Light.color(QPalette::Window));
}

TEST_F(OnlineAutoConfigColours, DarkPaletteLightensTheLinkAndKeepsTheRedThatCanBeRead)
{
    UsePalette(Dark);
    OpenWizard();
    EXPECT_EQ(Ink(StepWarning), Red);
    EXPECT_EQ(Ink(NoteLink).hslHue(), Blue.hslHue());
    EXPECT_GE(widgets::Contrast(Ink(NoteLink), Dark.color(QPalette::Window)), 4.5);
}

TEST_F(OnlineAutoConfigColours, ColoursFollowThePaletteWhileTheDialogIsOpen)
{
    OpenWizard();
    UsePalette(Dark);
    EXPECT_NE(Ink(NoteLink), Blue);
    EXPECT_EQ(Paper(NoteLink), Dark.color(QPalette::Window));
    UsePalette(Light);
    EXPECT_EQ(Ink(NoteLink), Blue);
    EXPECT_EQ(Ink(StepWarning), Red);
}

TEST_F(OnlineAutoConfigColours, LinkAloneIsUnderlined)
{
    OpenWizard();
    EXPECT_TRUE(m_wizard->GetDlgItem(NoteLink)->font().underline());
    EXPECT_FALSE(m_wizard->GetDlgItem(BillLibraryLabel)->font().underline());
    QFont plain = m_wizard->GetDlgItem(NoteLink)->font();
    plain.setUnderline(false);
    EXPECT_EQ(plain, m_wizard->font());
}

TEST_F(OnlineAutoConfigColours, UnderlinedLinkFollowsTheFont)
{
    OpenWizard();
    QFont larger = QApplication::font();
    larger.setPointSize(larger.pointSize() + 7);
    QApplication::setFont(larger);
    QCoreApplication::processEvents();
    const QWidget& link = *m_wizard->GetDlgItem(NoteLink);
    EXPECT_EQ(link.font().pointSize(), larger.pointSize());
    EXPECT_TRUE(link.font().underline());
    EXPECT_GE(link.width(), link.sizeHint().width());
}
