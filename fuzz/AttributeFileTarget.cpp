// An attribute file and the parameters beside it; the first byte says where the one ends.
#include "fuzz/FuzzSupport.h"

#include "store/CXmlAttrConfig.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::World& world = fuzz::World::Fresh();
    const QByteArray bytes = fuzz::Bytes(data, size);
    const qsizetype cut = bytes.isEmpty() ? 0 : bytes.size() * static_cast<unsigned char>(bytes[0]) / 255;
    world.Files().Put(fuzz::World::AttributeFile(), bytes.mid(1, cut));
    world.Files().Put(fuzz::World::ParameterFile(), bytes.mid(1 + cut));
    try {
        const CXmlAttrConfig bound(fuzz::World::Spec());
        AttrConfig config;
        bound.GetAttConfig(QStringLiteral("给排水\\管道\\给水管材质"), config);
        CXmlAttrConfig unbound;
        if (unbound.Save()) {
            const QByteArray saved = world.Files().Get(fuzz::World::AttributeFile());
            fuzz::RequireStrictXml(saved, "a rebuilt attribute file is XML");
            fuzz::Require(CXmlAttrConfig().Save(), "rebuilding works twice");
            fuzz::Require(world.Files().Get(fuzz::World::AttributeFile()) == saved,
                          "and gives the same file");
        }
    } catch (const xml::Error&) {
        // another document element, or no parameters: told, not caught inside
    }
    return 0;
}
