#include "cli/printing/WrappedText.h"

#include "cli/printing/TextTable.h"
#include "cli/reading/Failure.h"
#include "platform/Files.h"
#include "platform/Paths.h"

using namespace Qt::StringLiterals;

namespace cli {

CString DescribeWrapped(const store::WrappedFile& file)
{
    TextTable table;
    table.AddRow({u"格式"_s, file.format});
    table.AddRow({u"版本"_s, file.version});
    table.AddRow({u"模式"_s, file.mode});
    table.AddRow({u"清单库"_s, file.billFile.isEmpty() ? u"（无）"_s : file.billFile});
    table.AddRow({u"定额库"_s, file.quotaFile});
    table.AddRow({u"内容"_s, u"%1 字节"_s.arg(file.content.size())});
    return table.ToText(2);
}

store::WrappedFile ReadWrapped(const CString& path)
{
    CString reason;
    const QString native = platform::ToNative(path);
    const auto bytes = platform::Files().Read(path, &reason);
    if (!bytes) throw Refusal(u"文件读不了：%1：%2"_s.arg(native, reason));
    const auto file = store::ParseWrapped(*bytes, &reason);
    if (!file) throw Refusal(u"不是完整的封装文件：%1：%2"_s.arg(native, reason));
    return *file;
}

} // namespace cli
