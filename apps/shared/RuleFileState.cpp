#include "shared/RuleFileState.h"

#include "embedded/data/project/Look.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "store/RuleFile.h"
#include "store/WrappedFile.h"

#include <QtCore/QByteArray>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

constexpr qint64 LargeSize = 8'000'000;

/// The elements of a rule file whose specialty already stands before them.
CArray<xml::Element> RepeatedSpecialties(const xml::Node& root)
{
    QSet<CString> seen;
    CArray<xml::Element> repeated;
    for (xml::Node child = root.FirstChild(); child; child = child.NextSibling()) {
        CString name;
        const xml::Element element = child.ToElement();
        if (element.IsNull() || !element.GetAttribute(u"name"_s, name)) continue;
        if (seen.contains(name)) repeated.append(element);
        seen.insert(name);
    }
    return repeated;
}

RuleFileState ExamineRules(const CString& path, const xml::Node& root)
{
    const CArray<xml::Element> repeated = RepeatedSpecialties(root);
    if (repeated.isEmpty()) return {path, RuleFileKind::Rules};
    CString name;
    repeated.first().GetAttribute(u"name"_s, name);
    const CString text = u"专业“%1”在文件中不止一段，只有第一段会被读到"_s.arg(name);
    return {path, RuleFileKind::Repeated, {.line = 0, .column = 0, .text = text}};
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
    case RuleFileKind::Repeated:
        return reason.text;
    case RuleFileKind::Unreadable:
        break;
    }
    const CString place =
        reason.line > 0 ? u"第 %1 行第 %2 列，"_s.arg(reason.line).arg(reason.column) : CString();
    return u"读不了：%1%2"_s.arg(place, reason.text);
}

RuleFileState ExamineRuleFile(const CString& path)
{
    if (!platform::Files().Exists(path)) return {path, RuleFileKind::Missing};
    const embedded::Look look;
    CString reason;
    const auto bytes = platform::Files().Read(path, &reason);
    if (bytes) return ExamineRuleBytes(path, *bytes);
    return {path, RuleFileKind::Unreadable, {.line = 0, .column = 0, .text = reason}};
}

RuleFileState ExamineRuleBytes(const CString& path, const QByteArray& bytes)
{
    const xml::Document document = xml::Document::Create();
    document.LoadBytes(bytes);
    return ExamineLoaded(path, bytes, document);
}

RuleFileState ExamineLoaded(const CString& path, const QByteArray& bytes, const xml::Document& document)
{
    if (document.FirstChild()) { // nothing stands in one that has refused
        if (const xml::Node root = document.SelectSingleNode(store::RootName()))
            return ExamineRules(path, root);
        const CString text = u"不是规则文件：根元素不是“%1”"_s.arg(store::RootName());
        return {path, RuleFileKind::Foreign, {.line = 0, .column = 0, .text = text}};
    }
    const RuleFileKind kind = store::ParseWrapped(bytes) ? RuleFileKind::Wrapped : RuleFileKind::Unreadable;
    return {path, kind, document.Reason()};
}

void KeepFirstSpecialties(const CString& path)
{
    const xml::Document document = xml::Document::Create();
    if (document.IsNull() || !document.Load(path)) throw xml::Error(document.Reason().ToString());
    const xml::Node root = document.FirstChild();
    for (const xml::Element& element : RepeatedSpecialties(root))
        root.RemoveChild(element);
    document.Save(path);
}

qint64 FileSize(const CString& path)
{
    return QFileInfo(platform::ToNative(path)).size();
}

bool IsLarge(const CString& path)
{
    return FileSize(path) > LargeSize;
}

} // namespace shared
