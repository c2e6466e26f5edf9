// An ini file that came from anywhere, and a value behind its first line.
#include "fuzz/FuzzSupport.h"

#include "platform/ProfileFile.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::World& world = fuzz::World::Fresh();
    const QByteArray bytes = fuzz::Bytes(data, size);
    const CString path = u"\\project\\SysRegedit.ini"_s;
    const qsizetype end = bytes.indexOf('\n');
    const CString value = CString::fromUtf8(end < 0 ? bytes : bytes.left(end));
    world.Files().Put(path, bytes.mid(end + 1));

    const platform::ProfileFile ini(path);
    const CString before = ini.Read(u"QdDeConfigInfo"_s, u"ConfigName"_s, CString(), 100);
    fuzz::Require(before.size() < 100, "a value is cut to the buffer");
    const CString other = ini.Read(u"Other"_s, u"Key"_s, u"none"_s, 4096);
    if (ini.Write(u"QdDeConfigInfo"_s, u"ConfigName"_s, value)) {
        const CString after = ini.Read(u"QdDeConfigInfo"_s, u"ConfigName"_s, CString(), 1 << 20);
        fuzz::Require(after == value, "what was written is read");
        fuzz::Require(ini.Read(u"Other"_s, u"Key"_s, u"none"_s, 4096) == other,
                      "another key keeps its value");
    } else {
        fuzz::Require(world.Files().Get(path) == bytes.mid(end + 1), "a refused write leaves the file");
    }
    return 0;
}
