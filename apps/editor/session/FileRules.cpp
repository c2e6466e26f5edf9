#include "editor/session/FileRules.h"

#include "editor/steps/WorkThread.h"
#include "platform/Files.h"
#include "rules/model/Snapshot.h"
#include "xml/Dom.h"

#include <stdexcept>
#include <utility>

namespace editor {

namespace {

/// Up to so many bytes are read sooner than a thread would tell of them.
constexpr qsizetype ReadAtOnce = 512 * 1024;

/// `all` with the category of that text as `known` has it.
rules::ConfigurationPtr WithKnown(const rules::Configuration& all, const rules::Configuration& known,
                                  const CString& category)
{
    return std::make_shared<const rules::Configuration>(
        all.With(known.Specialties(), [&](const auto& small) { return small->text == category; }));
}

} // namespace

/// What is to be read, and the thread that does so. It has a document of its own: one belongs to one thread,
/// and the first reading has completed the other one.
struct FileRules::Rest
{
    QByteArray bytes;
    CString first;
    rules::ConfigurationPtr known; ///< the first one with its rules
    rules::ConfigurationPtr rules{};
    rules::FileStructure structure{};
    std::unique_ptr<WorkThread> thread{}; ///< ends before the others

    void Read()
    {
        CString reason; // there is none: the bytes have been loaded once
        const rules::ConfigurationPtr all = rules::ReadRules(bytes, reason, &structure);
        if (!all) throw std::runtime_error(reason.toStdString());
        rules = WithKnown(*all, *known, first);
    }
};

FileRules::FileRules(const CString& path, const QByteArray& bytes)
{
    CString reason;
    m_rules = rules::ReadRules(bytes, reason, &m_structure);
    if (!m_rules) throw platform::FileError(path, reason);
}

FileRules::FileRules(const QByteArray& bytes, const xml::Document& document, CString first)
{
    CString reason;
    m_rules = rules::ReadCategory(document, first, reason);
    if (!m_rules) throw std::invalid_argument(reason.toStdString());
    m_rest = std::make_unique<Rest>(Rest{bytes, std::move(first), m_rules});
    if (bytes.size() <= ReadAtOnce) TakeRest();
}

void FileRules::ReadOthers(std::function<void()> come)
{
    if (!m_rest || m_rest->thread) return;
    m_rest->thread = std::make_unique<WorkThread>([rest = m_rest.get(), come = std::move(come)] {
        try {
            rest->Read();
        } catch (...) {
            come();
            throw;
        }
        come();
    });
}

FileRules::~FileRules() = default;

const rules::ConfigurationPtr& FileRules::Rules()
{
    TakeRest();
    return m_rules;
}

const rules::FileStructure& FileRules::Structure()
{
    TakeRest();
    return m_structure;
}

void FileRules::TakeRest()
{
    if (!m_rest) return;
    // A thread that failed is not asked again: the next call reads anew.
    if (const auto thread = std::move(m_rest->thread)) {
        thread->Wait(QDeadlineTimer::Forever);
        thread->Raise();
    } else {
        m_rest->Read();
    }
    m_rules = std::move(m_rest->rules);
    m_structure = std::move(m_rest->structure);
    m_rest.reset();
}

} // namespace editor
