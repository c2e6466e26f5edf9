#include "tables/ZipReader.h"

#include "tables/TableError.h"

#include <minizip/unzip.h>

#include <algorithm>

namespace tables {

using namespace Qt::StringLiterals;

/// The file behind an archive. An error waits here until it is out of the archive library, which is no C++.
struct ZipReader::Source
{
    std::unique_ptr<platform::InputFile> file;
    qint64 position = 0;
    CString error{};
};

namespace {

constexpr int IgnoreCase = 2;

template <typename Source>
Source& SourceOf(voidpf opaque)
{
    return *static_cast<Source*>(opaque);
}

template <typename Source>
voidpf ZCALLBACK OpenSource(voidpf opaque, const void* /*name*/, int /*mode*/)
{
    return opaque;
}

template <typename Source>
uLong ZCALLBACK ReadSource(voidpf opaque, voidpf /*stream*/, void* to, uLong size)
{
    auto& source = SourceOf<Source>(opaque);
    try {
        source.file->Seek(source.position);
        const qint64 read = source.file->Read(static_cast<char*>(to), static_cast<qint64>(size));
        source.position += read;
        return static_cast<uLong>(read);
    } catch (const platform::FileError& error) {
        source.error = error.Reason();
        return 0;
    }
}

template <typename Source>
uLong ZCALLBACK WriteSource(voidpf /*opaque*/, voidpf /*stream*/, const void* /*from*/, uLong /*size*/)
{
    return 0;
}

template <typename Source>
ZPOS64_T ZCALLBACK TellSource(voidpf opaque, voidpf /*stream*/)
{
    return static_cast<ZPOS64_T>(SourceOf<Source>(opaque).position);
}

template <typename Source>
long ZCALLBACK SeekSource(voidpf opaque, voidpf /*stream*/, ZPOS64_T offset, int origin)
{
    auto& source = SourceOf<Source>(opaque);
    const qint64 size = source.file->Size();
    if (offset > static_cast<ZPOS64_T>(size)) return -1;
    qint64 base = 0;
    if (origin == ZLIB_FILEFUNC_SEEK_CUR) base = source.position;
    if (origin == ZLIB_FILEFUNC_SEEK_END) base = size;
    source.position = base + static_cast<qint64>(offset);
    return source.position <= size ? 0 : -1;
}

template <typename Source>
int ZCALLBACK CloseSource(voidpf /*opaque*/, voidpf /*stream*/)
{
    return 0;
}

template <typename Source>
int ZCALLBACK ErrorOfSource(voidpf opaque, voidpf /*stream*/)
{
    return SourceOf<Source>(opaque).error.isEmpty() ? 0 : 1;
}

template <typename Source>
zlib_filefunc64_def FunctionsOf(Source& source)
{
    zlib_filefunc64_def functions{};
    functions.zopen64_file = OpenSource<Source>;
    functions.zread_file = ReadSource<Source>;
    functions.zwrite_file = WriteSource<Source>;
    functions.ztell64_file = TellSource<Source>;
    functions.zseek64_file = SeekSource<Source>;
    functions.zclose_file = CloseSource<Source>;
    functions.zerror_file = ErrorOfSource<Source>;
    functions.opaque = &source;
    return functions;
}

} // namespace

ZipReader::ZipReader(std::unique_ptr<platform::InputFile> file, const CString& path)
    : m_path(path), m_source(std::make_unique<Source>(Source{std::move(file)}))
{
    zlib_filefunc64_def functions = FunctionsOf(*m_source);
    m_zip = unzOpen2_64("", &functions);
    if (m_zip == nullptr) {
        const CString& error = m_source->error;
        throw TableError(path, error.isEmpty() ? u"不是完整的工作簿：压缩包损坏或者被截断"_s : error);
    }
}

ZipReader::~ZipReader()
{
    if (m_isOpen) unzCloseCurrentFile(m_zip);
    unzClose(m_zip);
}

bool ZipReader::Find(const CString& part)
{
    if (m_isOpen) unzCloseCurrentFile(m_zip);
    m_isOpen = false;
    return unzLocateFile(m_zip, part.toUtf8().constData(), IgnoreCase) == UNZ_OK;
}

bool ZipReader::Has(const CString& part)
{
    return Find(part);
}

void ZipReader::Open(const CString& part)
{
    m_part = part;
    if (!Find(part)) FailPart(u"缺少部件“%1”"_s);
    unz_file_info64 info{};
    if (unzGetCurrentFileInfo64(m_zip, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK)
        FailPart(u"部件“%1”损坏"_s);
    if ((info.flag & 1) != 0) throw TableError(m_path, u"工作簿是加密的，请去掉密码再试"_s);
    if (unzOpenCurrentFile(m_zip) != UNZ_OK) FailPart(u"部件“%1”损坏"_s);
    m_isOpen = true;
    m_size = static_cast<qint64>(std::min<ZPOS64_T>(info.uncompressed_size, ZPOS64_T{1} << 60));
    m_read = 0;
}

qsizetype ZipReader::Read(char* to, qsizetype length)
{
    if (!m_isOpen) return 0;
    const int read = unzReadCurrentFile(m_zip, to, static_cast<unsigned>(length));
    if (read < 0) FailPart(u"部件“%1”损坏"_s);
    if (read == 0) {
        m_isOpen = false;
        if (unzCloseCurrentFile(m_zip) != UNZ_OK || m_read != m_size) FailPart(u"部件“%1”损坏"_s);
    }
    m_read += read;
    return read;
}

double ZipReader::Progress() const
{
    return static_cast<double>(m_read) / static_cast<double>(std::max(m_size, qint64{1}));
}

void ZipReader::FailPart(const CString& reason) const
{
    if (!m_source->error.isEmpty()) throw TableError(m_path, m_source->error);
    throw TableError(m_path, u"不是完整的工作簿："_s + reason.arg(m_part));
}

} // namespace tables
