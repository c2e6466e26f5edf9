#include "tables/CsvReader.h"
#include "tables/TableError.h"
#include "tables/WorkbookReader.h"
#include "tables/ZipReader.h"

#include <algorithm>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

/// How far the word is looked for that tells an encrypted workbook from an old one.
constexpr qint64 SearchedHead = qint64{1} << 24;

bool IsArchive(const QByteArray& head)
{
    return head.startsWith("PK\x03\x04") || head.startsWith("PK\x05\x06");
}

/// Whether it is the container of older office programs, in which newer ones put what they encrypt.
bool IsOldContainer(const QByteArray& head)
{
    return head.startsWith("\xD0\xCF\x11\xE0");
}

bool HasWorkbookName(const CString& path)
{
    for (const CString& ending : {u".xlsx"_s, u".xlsm"_s, u".ods"_s, u".xls"_s, u".xlsb"_s}) {
        if (path.endsWith(ending, Qt::CaseInsensitive)) return true;
    }
    return false;
}

[[noreturn]] void RefuseOldContainer(platform::InputFile& file, const CString& path)
{
    file.Seek(0);
    QByteArray bytes(std::min(file.Size(), SearchedHead), '\0');
    bytes.resize(file.Read(bytes.data(), bytes.size()));
    const CString word = u"EncryptedPackage"_s;
    const QByteArray utf16(reinterpret_cast<const char*>(word.utf16()), word.size() * 2);
    if (bytes.contains(utf16)) throw TableError(path, u"工作簿是加密的，请去掉密码再试"_s);
    throw TableError(path, u"是旧格式的工作簿（.xls），请用表格软件另存为 .xlsx"_s);
}

bool IsOds(ZipReader& zip)
{
    constexpr QByteArrayView Type = "application/vnd.oasis.opendocument.spreadsheet";
    if (!zip.Has(u"mimetype"_s) || !zip.Has(u"content.xml"_s)) return false;
    QByteArray bytes(Type.size(), '\0');
    zip.Open(u"mimetype"_s);
    return zip.Read(bytes.data(), bytes.size()) == Type.size() && bytes == Type;
}

std::unique_ptr<TableReader> OpenWorkbook(std::unique_ptr<platform::InputFile> file, const CString& path,
                                          const ReadOptions& options)
{
    auto zip = std::make_unique<ZipReader>(std::move(file), path);
    if (IsOds(*zip)) return OpenOds(std::move(zip), options);
    if (zip->Has(u"_rels/.rels"_s)) return OpenXlsx(std::move(zip), options);
    throw TableError(path, u"不是工作簿，是别的压缩文件"_s);
}

std::unique_ptr<TableReader> OpenFile(const CString& path, const ReadOptions& options)
{
    std::unique_ptr<platform::InputFile> file = platform::Files().OpenForReading(path);
    QByteArray head(8, '\0');
    head.resize(file->Read(head.data(), head.size()));
    if (IsOldContainer(head)) RefuseOldContainer(*file, path);
    file->Seek(0);
    if (IsArchive(head)) return OpenWorkbook(std::move(file), path, options);
    if (HasWorkbookName(path)) throw TableError(path, u"不是工作簿，内容与扩展名不符"_s);
    if (!options.sheet.isEmpty()) throw TableError(path, u"是 CSV 文件，没有工作表"_s);
    return std::make_unique<CsvReader>(std::move(file), path);
}

} // namespace

std::unique_ptr<TableReader> OpenTable(const CString& path, const ReadOptions& options)
{
    try {
        return OpenFile(path, options);
    } catch (const platform::FileError& error) {
        throw TableError(path, error.Reason());
    }
}

} // namespace tables
