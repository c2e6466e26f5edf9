#include "editor/files/OtherPrograms.h"

#include "editor/files/OpenMark.h"
#include "editor/messages/ErrorBox.h"

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace editor {

namespace {

/// A mark stands there before it says whose it is.
constexpr auto SettleTime = 300ms;
/// So often a mark without a signature is looked at again: for a minute.
constexpr int LooksForSignature = 200;

} // namespace

OtherPrograms::OtherPrograms(embedded::ProjectFolder project, Told told)
    : m_project(std::move(project)), m_told(std::move(told))
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(SettleTime);
    connect(&m_quiet, &QTimer::timeout, this, [this] { LookAgain(); });
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        m_looksLeft = LooksForSignature;
        m_quiet.start();
    });
    // Before the first look, so that a mark that is made meanwhile is heard of.
    m_watcher.addPath(MarkFolderOf(m_project));
    m_looksLeft = LooksForSignature;
    AwaitSignature();
    m_others = OtherProgramWithProject(m_project);
    m_told(m_others);
}

void OtherPrograms::Look()
{
    m_looksLeft = LooksForSignature;
    LookAgain();
}

/// A mark is signed in place, of which its folder says nothing. To be asked before whose the marks are: one
/// that is signed in between is seen then.
void OtherPrograms::AwaitSignature()
{
    if (m_looksLeft == 0 || !HasUnsignedMark(m_project)) return;
    --m_looksLeft;
    m_quiet.start();
}

void OtherPrograms::LookAgain()
{
    RunGuarded([this] {
        AwaitSignature();
        auto others = OtherProgramWithProject(m_project);
        if (others == m_others) return;
        m_others = std::move(others);
        m_told(m_others);
    });
}

} // namespace editor
