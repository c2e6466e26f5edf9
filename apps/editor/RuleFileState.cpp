#include "editor/RuleFileState.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "store/RuleFile.h"
#include "store/WrappedFile.h"
#include "xml/Dom.h"

#include <QtCore/QByteArray>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr qint64 LargeSize = 8'000'000;

RuleFileState Unreadable(const CString& path, const xml::LoadReason& reason)
{
    return {path, RuleFileKind::Unreadable, reason.line, reason.column, reason.text};
}

RuleFileState ExamineBytes(const CString& path, const QByteArray& bytes)
{
    const xml::Document document = xml::Document::Create();
    if (document.LoadBytes(bytes)) {
        const bool isRules = !document.SelectSingleNode(store::RootName()).IsNull();
        return {path, isRules ? RuleFileKind::Rules : RuleFileKind::Foreign, 0, 0, {}};
    }
    if (store::ParseWrapped(bytes)) return {path, RuleFileKind::Wrapped, 0, 0, {}};
    return Unreadable(path, document.Reason());
}

} // namespace

CString RuleFileState::Name() const
{
    return platform::BeforeLastStop(platform::FileNameOf(path));
}

CString RuleFileState::Describe() const
{
    switch (kind) {
    case RuleFileKind::Missing:
        return u"还没有，配置时新建"_s;
    case RuleFileKind::Rules:
        return u"可用"_s;
    case RuleFileKind::Wrapped:
        return u"已写文件头，不能再编辑"_s;
    case RuleFileKind::Foreign:
        return u"不是规则文件：根元素不是“%1”"_s.arg(store::RootName());
    case RuleFileKind::Unreadable:
        break;
    }
    const CString place = line > 0 ? u"第 %1 行第 %2 列，"_s.arg(line).arg(column) : CString();
    return u"读不了：%1%2"_s.arg(place, reason);
}

RuleFileState ExamineRuleFile(const CString& path)
{
    if (!platform::Files().Exists(path)) return {path, RuleFileKind::Missing, 0, 0, {}};
    CString reason;
    const auto bytes = platform::Files().Read(path, &reason);
    return bytes ? ExamineBytes(path, *bytes) : Unreadable(path, {.line = 0, .column = 0, .text = reason});
}

qint64 FileSize(const CString& path)
{
    return QFileInfo(platform::ToNative(path)).size();
}

bool IsLarge(const CString& path)
{
    return FileSize(path) > LargeSize;
}

} // namespace editor
