// A rule file that came from anywhere: what is taken as XML is XML for an independent parser, too; it comes
// back byte for byte; and a store built on it works.
#include "fuzz/FuzzSupport.h"

#include "store/CXmlQdDeConfig.h"
#include "support/StrictXml.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::World& world = fuzz::World::Fresh();
    const QByteArray bytes = fuzz::Bytes(data, size);
    const xml::Document document = xml::Document::Create();
    if (document.LoadBytes(bytes)) {
        const QByteArray saved = document.ToBytes();
        fuzz::RequireStrictXml(saved, "what is loaded is saved as XML");
        if (test::IsStrictXml(bytes)) {
            fuzz::Require(saved.startsWith(bytes), "an untouched document comes back byte for byte");
            fuzz::Require(bytes.endsWith('\n') || saved.size() <= bytes.size() + 4, "but for a line end");
        }
    } else {
        fuzz::Require(!document.Reason().text.isEmpty(), "a refusal has a reason");
    }
    world.Files().Put(fuzz::World::RuleFile(), bytes);
    CXmlQdDeConfig store(fuzz::World::RuleFile(), fuzz::World::Spec());
    fuzz::Require(world.Files().Get(fuzz::World::RuleFile()) == bytes,
                  "opening leaves a file that exists alone");
    return 0;
}
