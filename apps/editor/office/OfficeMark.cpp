#include "editor/office/OfficeMark.h"

#include "editor/steps/BackgroundWork.h"
#include "embedded/data/office/ProjectOffice.h"
#include "widgets/FaultColour.h"

#include <QtGui/QGuiApplication>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// What an office says to a look at it: the revision of its catalogue, or why it does not answer, in words.
struct Answer
{
    qint64 revision = 0;
    CString fault;
};

Answer AnswerOf(const CString& office)
{
    try {
        return {embedded::Office(office).First().revision, {}};
    } catch (const embedded::Error& error) {
        return {0, error.Message().simplified()};
    }
}

CString TextOf(const embedded::ProjectOffice& office)
{
    if (!office.IsReached()) return u"办公室“%1”连不上，用上次的数据"_s.arg(office.Name());
    if (office.IsBehind()) return u"办公室“%1”有新数据，副本跟不上"_s.arg(office.Name());
    if (office.HasNews()) return u"办公室“%1”有新数据，重新打开工程就用"_s.arg(office.Name());
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
    const int since = m_followed->Hearings();
    m_look->Start([this, since, office = m_followed->Name()](StepControl&) -> BackgroundWork::Outcome {
        return [this, since, answer = AnswerOf(office)] {
            if (m_followed == nullptr) return;
            answer.fault.isEmpty() ? m_followed->Believe(since, answer.revision)
                                   : m_followed->Believe(since, answer.fault);
        };
    });
}

} // namespace editor
