#include "dialogs/secondary/wizard/COnlineAutoConfigDlg.h"

#include "dialogs/AutoConfigIds.h"
#include "platform/Messages.h"
#include "widgets/CutTextTips.h"
#include "widgets/ReadableColour.h"

#include <QtCore/QEvent>
#include <QtWidgets/QLineEdit>

#include <initializer_list>

using namespace Qt::StringLiterals;
using dialogs::DialogEvent;
using namespace dialogs::autoconfig;

namespace {

/// Red and blue by which the warning and the link are known. On the dark palettes of today pure blue is
/// nearly invisible, so it is lightened there; pure red can still be read on most of them and then stays.
constexpr QColor WarningColour(255, 0, 0);
constexpr QColor LinkColour(0, 0, 255);

enum Outcome : int { Back = -1, Cancelled = 0, Next = 1 };

} // namespace

COnlineAutoConfigDlg::COnlineAutoConfigDlg(const CString& configFile, const CString& billFile,
                                           const CString& quotaFile, const CString& note, bool allowBack,
                                           CWnd* parent)
    : CAutoConfigDlg(configFile, parent), m_billFile(billFile), m_quotaFile(quotaFile), m_note(note),
      m_allowBack(allowBack)
{
    EnterEvents();
}

COnlineAutoConfigDlg::~COnlineAutoConfigDlg() = default;

void COnlineAutoConfigDlg::EnterEvents()
{
    On(DialogEvent::Command, NextStepButton, &COnlineAutoConfigDlg::OnNextStep);
    On(DialogEvent::Command, PreviousStepButton, &COnlineAutoConfigDlg::OnPreviousStep);
    On(DialogEvent::Command, CancelStepButton, &COnlineAutoConfigDlg::OnCancelStep);
    On(DialogEvent::Command, NoteLink, &COnlineAutoConfigDlg::OnNote);
}

void COnlineAutoConfigDlg::OnInitDialog()
{
    CAutoConfigDlg::OnInitDialog();
    ShowWizardControls(true);
    ShowLibrary(BillLibrary, m_billFile);
    ShowLibrary(QuotaLibrary, m_quotaFile);
    // Only the file commands would bring the main dialog's title back, and they are hidden here.
    setWindowTitle(u"自动套-云模板"_s);
    UnderlineLink();
    ColourControls();
}

void COnlineAutoConfigDlg::ShowWizardControls(bool show)
{
    GetDlgItem(PreviousStepButton)->setVisible(show);
    GetDlgItem(PreviousStepButton)->setEnabled(m_allowBack);
    for (const int id : {NextStepButton, CancelStepButton, StepWarning, BillLibraryLabel, BillLibrary,
                         QuotaLibraryLabel, QuotaLibrary})
        GetDlgItem(id)->setVisible(show);
    for (const int id : {NewFileButton, SaveAsButton, LoadFileButton, NetDiskButton})
        GetDlgItem(id)->setVisible(!show);
    if (m_note.isEmpty()) return;
    GetDlgItem(NoteLink)->setVisible(show);
    GetDlgItem(NoteLink)->setEnabled(show);
}

// The edit shows the beginning of a name that is too long for it; the tip has the rest.
void COnlineAutoConfigDlg::ShowLibrary(int id, const CString& file)
{
    auto& edit = Item<QLineEdit>(id);
    const auto end = file.indexOf(u".mdb"_s);
    edit.setText(end < 0 ? file : file.left(end));
    edit.setCursorPosition(0);
    widgets::ShowTipOfCutText(edit);
}

// Only the underline is set, so that everything else goes on following the font of the dialog.
void COnlineAutoConfigDlg::UnderlineLink()
{
    QWidget& link = *GetDlgItem(NoteLink);
    m_linkFont = QFont();
    m_linkFont.setUnderline(true);
    link.setFont(m_linkFont);
}

void COnlineAutoConfigDlg::OnNextStep()
{
    EndStep(Next);
}

void COnlineAutoConfigDlg::OnPreviousStep()
{
    EndStep(Back);
}

// A save that raises leaves the dialog open with the edits. It must not leave the result, too: the user may
// go by the close box next, and the host would take that for the step. The pickers are not hidden; they end
// with the dialog.
void COnlineAutoConfigDlg::EndStep(int outcome)
{
    FlushAndSave();
    m_stepResult = outcome;
    OnOK();
}

void COnlineAutoConfigDlg::OnCancelStep()
{
    m_stepResult = Cancelled;
    OnCancel();
}

void COnlineAutoConfigDlg::OnNote()
{
    platform::Show({platform::MessageKind::Plain, m_note, platform::MessageCaption()});
}

QPalette COnlineAutoConfigDlg::OnControlColour(int id, const QPalette& base) const
{
    QPalette colours;
    const QColor background = base.color(QPalette::Active, QPalette::Window);
    if (id == NoteLink) colours.setColor(QPalette::WindowText, widgets::ReadableOn(background, LinkColour));
    if (id == StepWarning)
        colours.setColor(QPalette::WindowText, widgets::ReadableOn(background, WarningColour));
    return colours;
}

// The toolkit asks nobody for colours when it draws; what it draws with is set whenever it changes.
void COnlineAutoConfigDlg::ColourControls()
{
    for (const int id : {NoteLink, StepWarning})
        GetDlgItem(id)->setPalette(OnControlColour(id, palette()));
}

void COnlineAutoConfigDlg::changeEvent(QEvent* event)
{
    CAutoConfigDlg::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && GetDlgItem(NoteLink) != nullptr) ColourControls();
}
