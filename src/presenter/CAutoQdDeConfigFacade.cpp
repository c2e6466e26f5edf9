#include "presenter/CAutoQdDeConfigFacade.h"

#include "host/NvKtDataMng.h"
#include "host/NvWindowsTool.h"
#include "platform/Files.h"
#include "store/RuleFile.h"
#include "store/RuleFileHead.h"
#include "store/WrappedFile.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// The size of the wrapped form's content is a signed 32-bit integer.
constexpr qsizetype LargestContent = std::numeric_limits<qint32>::max();

store::WrappedFile WrappedHead()
{
    const NvKtDataMng::CAtt att;
    const bool billMode = att.GetQdDeMode() == SQdDeInfo::BillMode;
    store::WrappedFile file;
    file.format = u"5"_s;
    file.version = store::VersionTextOrDefault();
    file.mode = billMode ? u"清单模式"_s : u"定额模式"_s;
    if (billMode) file.billFile = att.GetQdFileName() + u".mdb"_s;
    file.quotaFile = (billMode ? att.GetQdDeFileName() : att.GetDeFileName()) + u".mdb"_s;
    return file;
}

/// The former file; empty when it has gone in the meantime, as an opening that creates the file would find
/// it.
QByteArray ReadContent(const CString& path)
{
    if (!platform::Files().Exists(path)) return {};
    QByteArray content = platform::Files().ReadWhole(path);
    if (content.size() > LargestContent) throw platform::FileError(path, u"文件超过 2 GiB，不能包装"_s);
    return content;
}

void WriteFields(const CString& path, const std::vector<QByteArray>& fields)
{
    qsizetype size = 0;
    for (const QByteArray& field : fields)
        size += field.size();
    const auto file = platform::Files().OpenForWriting(path);
    file->Reserve(size);
    for (const QByteArray& field : fields) {
        file->Write(field);
        file->SeekToEnd();
    }
    file->Sync();
}

} // namespace

std::unique_ptr<CQdDeConfigPresenter> CAutoQdDeConfigFacade::GetQdDeConfigPresenter(const CString& filePath)
{
    return std::make_unique<CQdDeConfigPresenter>(filePath);
}

void CAutoQdDeConfigFacade::AttrConfig()
{
    CXmlAttrConfig store;
    store.Save();
}

void CAutoQdDeConfigFacade::WriteHead(const CString& filePath)
{
    {
        NvWindowsTool::MSXMLUtilityPtr document;
        if (!document.CreateDOMObj() || !document.OpenXml(filePath) ||
            !document.SelectNode(store::RootName()))
            return;
        for (const auto& [name, value] : store::HeadAttributes())
            document.SetAttribute(name, value);
        document.SaveXml(filePath);
    }
    CAutoQdDeConfigFacade().WrapFile(filePath);
}

void CAutoQdDeConfigFacade::WrapFile(const CString& path)
{
    store::WrappedFile file = WrappedHead();
    file.content = ReadContent(path);
    const std::vector<QByteArray> fields = store::ComposeFields(file);
    // A file that stays would keep its bytes below the new ones.
    if (!platform::Files().Remove(path) && platform::Files().Exists(path))
        throw platform::FileError(path, u"文件不能替换"_s);
    // From here to the end the content stands in memory only.
    try {
        WriteFields(path, fields);
    } catch (const platform::FileError&) {
        platform::Files().PutBack(path, file.content);
        throw;
    }
}
