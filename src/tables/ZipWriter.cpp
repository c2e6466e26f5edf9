#include "tables/ZipWriter.h"

#include <zlib.h>

#include <array>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tables {

namespace {

/// Fast packing: two fifths of the time of the usual level for 3 % more bytes of a sheet.
constexpr int Level = 3;
constexpr int RawWindow = -15; ///< the largest one, without a head of its own
constexpr int UsualMemory = 8;
constexpr qsizetype PackedAtOnce = qsizetype{1} << 16;

constexpr quint32 LocalHead = 0x04034B50;
constexpr quint32 Descriptor = 0x08074B50;
constexpr quint32 CentralHead = 0x02014B50;
constexpr quint32 CentralEnd = 0x06054B50;
constexpr quint16 Version = 20; ///< the oldest that knows packed parts
constexpr quint16 SizesBehind = 1U << 3;
constexpr quint16 Deflated = 8;
/// The earliest date that archives know, 1 January 1980, so that the same table gives the same bytes.
constexpr quint16 Midnight = 0;
constexpr quint16 FirstDay = 0x0021;

struct Part
{
    QByteArray name;
    quint32 checksum = 0;
    quint64 packed = 0;
    quint64 size = 0;
    quint64 position = 0;
};

/// Appends numbers as archives have them, the lowest byte first.
template <typename Number>
void Put(QByteArray& to, Number number)
{
    for (std::size_t byte = 0; byte < sizeof(Number); ++byte)
        to += static_cast<char>(static_cast<quint64>(number) >> (8 * byte));
}

quint32 Short(quint64 number)
{
    if (number >= std::numeric_limits<quint32>::max()) throw std::length_error("the archive gets too large");
    return static_cast<quint32>(number);
}

} // namespace

/// The stream that packs, what has come of it, and the list of parts.
struct ZipWriter::Packer
{
    z_stream stream{};
    QByteArray bytes;
    quint64 taken = 0;
    std::vector<Part> parts;
    bool isOpen = false;

    Packer()
    {
        if (deflateInit2(&stream, Level, Z_DEFLATED, RawWindow, UsualMemory, Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    ~Packer() { deflateEnd(&stream); }
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;

    quint64 Position() const { return taken + static_cast<quint64>(bytes.size()); }

    void Pack(const QByteArray& text, int flush)
    {
        std::array<char, PackedAtOnce> piece;
        stream.next_in = reinterpret_cast<const Bytef*>(text.constData());
        stream.avail_in = static_cast<uInt>(text.size());
        do {
            stream.next_out = reinterpret_cast<Bytef*>(piece.data());
            stream.avail_out = static_cast<uInt>(piece.size());
            deflate(&stream, flush);
            bytes.append(piece.data(), static_cast<qsizetype>(piece.size() - stream.avail_out));
        } while (stream.avail_out == 0);
    }

    /// What a part's head and its line in the list have in common.
    void PutFacts(const Part& part, quint32 checksum, quint32 packed, quint32 size)
    {
        Put(bytes, Version);
        Put(bytes, SizesBehind);
        Put(bytes, Deflated);
        Put(bytes, Midnight);
        Put(bytes, FirstDay);
        Put(bytes, checksum);
        Put(bytes, packed);
        Put(bytes, size);
        Put(bytes, static_cast<quint16>(part.name.size()));
        Put(bytes, quint16{0}); // more fields
    }

    void PutListed(const Part& part)
    {
        Put(bytes, CentralHead);
        Put(bytes, Version);
        PutFacts(part, part.checksum, Short(part.packed), Short(part.size));
        Put(bytes, quint16{0}); // comment
        Put(bytes, quint16{0}); // disk
        Put(bytes, quint16{0}); // kind of content
        Put(bytes, quint32{0}); // attributes
        Put(bytes, Short(part.position));
        bytes += part.name;
    }
};

ZipWriter::ZipWriter() : m_packer(std::make_unique<Packer>()) {}

ZipWriter::~ZipWriter() = default;

void ZipWriter::Begin(const char* part)
{
    EndPart();
    Packer& packer = *m_packer;
    packer.parts.push_back({part, static_cast<quint32>(crc32(0, nullptr, 0)), 0, 0, packer.Position()});
    Put(packer.bytes, LocalHead);
    packer.PutFacts(packer.parts.back(), 0, 0, 0);
    packer.bytes += packer.parts.back().name;
    packer.parts.back().packed = packer.Position(); // where its bytes begin, until it ends
    deflateReset(&packer.stream);
    packer.isOpen = true;
}

void ZipWriter::Write(const QByteArray& bytes)
{
    Part& part = m_packer->parts.back();
    part.size += static_cast<quint64>(bytes.size());
    part.checksum = static_cast<quint32>(crc32(
        part.checksum, reinterpret_cast<const Bytef*>(bytes.constData()), static_cast<uInt>(bytes.size())));
    m_packer->Pack(bytes, Z_NO_FLUSH);
}

void ZipWriter::EndPart()
{
    Packer& packer = *m_packer;
    if (!std::exchange(packer.isOpen, false)) return;
    packer.Pack({}, Z_FINISH);
    Part& part = packer.parts.back();
    part.packed = packer.Position() - part.packed;
    Put(packer.bytes, Descriptor);
    Put(packer.bytes, part.checksum);
    Put(packer.bytes, Short(part.packed));
    Put(packer.bytes, Short(part.size));
}

QByteArray ZipWriter::Take()
{
    m_packer->taken += static_cast<quint64>(m_packer->bytes.size());
    return std::exchange(m_packer->bytes, {});
}

QByteArray ZipWriter::Finish()
{
    EndPart();
    Packer& packer = *m_packer;
    const quint64 begin = packer.Position();
    for (const Part& part : packer.parts)
        packer.PutListed(part);
    const quint64 end = packer.Position();
    const auto count = static_cast<quint16>(packer.parts.size());
    Put(packer.bytes, CentralEnd);
    Put(packer.bytes, quint16{0}); // this disk
    Put(packer.bytes, quint16{0}); // the disk of the list
    Put(packer.bytes, count);
    Put(packer.bytes, count);
    Put(packer.bytes, Short(end - begin));
    Put(packer.bytes, Short(begin));
    Put(packer.bytes, quint16{0}); // comment
    return Take();
}

} // namespace tables
