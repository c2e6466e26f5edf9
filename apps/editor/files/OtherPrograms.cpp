#include "editor/files/OtherPrograms.h"

#include "editor/files/OpenMark.h"
#include "editor/messages/Guard.h"

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace editor {

namespace {

/// A mark stands there before it says whose it is.
constexpr auto QuietTime = 300ms;

} // namespace

OtherPrograms::OtherPrograms(embedded::ProjectFolder project, Told told)
    : m_project(std::move(project)), m_told(std::move(told)), m_others(OtherProgramWithProject(m_project))
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(QuietTime);
    connect(&m_quiet, &QTimer::timeout, this, [this] { Look(); });
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] { m_quiet.start(); });
    m_watcher.addPath(MarkFolderOf(m_project));
    m_told(m_others);
}

void OtherPrograms::Look()
{
    RunGuarded([this] {
        auto others = OtherProgramWithProject(m_project);
        if (others == m_others) return;
        m_others = std::move(others);
        m_told(m_others);
    });
}

} // namespace editor
