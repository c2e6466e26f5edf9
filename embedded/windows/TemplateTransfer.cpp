#include "embedded/windows/TemplateTransfer.h"

#include "embedded/data/project/CurrentConfiguration.h"
#include "host/RuleFilePlaces.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

CString FreeBackupPath(const CString& path)
{
    const CString dated = path + u'.' + QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
    CString backup = dated + u".bak"_s;
    for (int number = 2; platform::Files().Exists(backup); ++number)
        backup = dated + u"-%1.bak"_s.arg(number);
    return backup;
}

/// Writes a file of which `former` are the bytes until now; gives why it failed.
CString Write(const CString& path, const QByteArray& bytes, const std::optional<QByteArray>& former)
{
    try {
        platform::Files().WriteInPlace(path, bytes);
        return {};
    } catch (const platform::FileError& error) {
        if (former)
            platform::Files().PutBack(path, *former);
        else
            platform::Files().Remove(path);
        return error.Message();
    }
}

TransferOutcome Failed(const CString& fault)
{
    TransferOutcome outcome;
    outcome.fault = fault;
    return outcome;
}

TransferOutcome Overwrite(const CString& folder, const CString& name, const QByteArray& bytes,
                          const QByteArray& former)
{
    const CString path = host::RuleFileIn(folder, name);
    const CString backup = FreeBackupPath(path);
    CString fault = Write(backup, former, std::nullopt);
    if (!fault.isEmpty()) return Failed(u"原文件不能备份，没有覆盖："_s + fault);
    fault = Write(path, bytes, former);
    if (!fault.isEmpty()) return Failed(fault);
    return {true, name, platform::FileNameOf(backup), {}};
}

} // namespace

CString TemplateNameFault(const CString& name)
{
    const auto isForbidden = [](QChar c) {
        return platform::IsForbiddenInFileNames(c) || c.category() == QChar::Other_Control;
    };
    if (name.trimmed().isEmpty()) return u"请输入名称"_s;
    if (std::any_of(name.begin(), name.end(), isForbidden) || !name.isValidUtf16())
        return u"名称不能包含下列任何字符: \\ / : * ? \" < > |"_s;
    if (platform::IsDeviceName(name)) return u"名称不能使用系统保留的设备名"_s;
    if (name.back() == u'.' || name.back().isSpace() || name.front().isSpace())
        return u"名称的开头和结尾不能是空格，结尾不能是句点"_s;
    if (name.size() > CurrentConfiguration::LongestName || platform::IsTooLongFileName(name + u".xml"_s))
        return u"名称过长"_s;
    return {};
}

bool HasTemplate(const CString& folder, const CString& name)
{
    return platform::Files().Exists(host::RuleFileIn(folder, name));
}

CString FreeTemplateName(const CString& folder, const CString& name)
{
    CString free = name;
    for (int number = 2; HasTemplate(folder, free); ++number)
        free = name + u" (%1)"_s.arg(number);
    return free;
}

TransferOutcome TransferTemplate(const CString& source, const CString& folder, const CString& name,
                                 const ConflictQuestion& ask)
{
    CString reason;
    const std::optional<QByteArray> bytes = platform::Files().Read(source, &reason);
    if (!bytes) return Failed(source + u"："_s + reason);
    CString target = name;
    while (HasTemplate(folder, target)) {
        const std::optional<QByteArray> former =
            platform::Files().Read(host::RuleFileIn(folder, target), &reason);
        if (former == bytes) return {true, target, {}, {}};
        const ConflictDecision decision = ask(folder, target);
        if (decision.action == ConflictDecision::Cancel) return {};
        if (decision.action == ConflictDecision::Overwrite) {
            if (!former) return Failed(host::RuleFileIn(folder, target) + u"："_s + reason);
            return Overwrite(folder, target, *bytes, *former);
        }
        target = decision.name;
    }
    const CString fault = TemplateNameFault(target);
    if (!fault.isEmpty()) return Failed(fault);
    const CString failure = Write(host::RuleFileIn(folder, target), *bytes, std::nullopt);
    return failure.isEmpty() ? TransferOutcome{true, target, {}, {}} : Failed(failure);
}

} // namespace embedded
