#include "editor/office/OfficeMark.h"

#include "editor/steps/BackgroundWork.h"
#include "embedded/data/office/ProjectOffice.h"
#include "widgets/FaultColour.h"

#include <QtGui/QGuiApplication>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Why an office does not answer, in words; empty when it does.
CString FaultOf(const CString& office)
{
    try {
        const embedded::Office open(office);
        return {};
    } catch (const embedded::Error& error) {
        return error.Message().simplified();
    }
}

CString TextOf(const embedded::ProjectOffice& office)
{
    if (!office.IsReached()) return u"办公室“%1”连不上，用上次的数据"_s.arg(office.Name());
    if (office.IsBehind()) return u"办公室“%1”有新数据，副本跟不上"_s.arg(office.Name());
    return u"办公室“%1”"_s.arg(office.Name());
}

} // namespace

OfficeMark::OfficeMark() : m_look(new BackgroundWork(this))
{
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) Look();
    });
}

OfficeMark::~OfficeMark() = default;

void OfficeMark::Follow(embedded::ProjectOffice* office)
{
    m_look->Leave();
    if (m_followed != nullptr) m_followed->OnChange({});
    m_followed = office;
    setVisible(office != nullptr);
    if (office == nullptr) return;
    office->OnChange([this] { ShowState(); });
    ShowState();
}

void OfficeMark::ShowState()
{
    setText(TextOf(*m_followed));
    setToolTip(m_followed->InWords());
    widgets::MarkAsFault(*this, !m_followed->IsReached() || m_followed->IsBehind());
}

void OfficeMark::Look()
{
    if (m_followed == nullptr) return;
    // A look that is under way may have found what is no longer so: it is taken anew.
    m_look->Start([this, office = m_followed->Name()](StepControl&) -> BackgroundWork::Outcome {
        return [this, fault = FaultOf(office)] {
            if (m_followed != nullptr) m_followed->Believe(fault);
        };
    });
}

} // namespace editor
