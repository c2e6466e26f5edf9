// A wrapped file that came from anywhere: what is taken apart goes together to the same bytes.
#include "fuzz/FuzzSupport.h"

#include "store/WrappedFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = fuzz::Bytes(data, size);
    CString reason;
    if (const auto file = store::ParseWrapped(bytes, &reason)) {
        QByteArray again;
        for (const QByteArray& field : store::ComposeFields(*file))
            again += field;
        fuzz::Require(again == bytes, "parsing and composing are inverse");
    } else {
        fuzz::Require(!reason.isEmpty(), "a refusal has a reason");
    }
    return 0;
}
