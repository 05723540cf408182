// Fuzz target for both directions of the codec. Any input is tried as a binary file and
// as XML text. Neither may crash; and what the codec itself writes must read back: XML
// made from a binary that the codec wrote, and every binary that it wrote.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "serz/codec.h"

namespace {

void Check(bool condition) {
    if (!condition) __builtin_trap();
}

void FromBinary(std::string_view input) {
    std::string xml, binary, again;
    if (ferrolund::serz::BinaryToXml(input, xml)) return;
    Check(!xml.empty());
    // Names the game never writes (with blanks or '<') give text that does not read
    // back; that is an error, not a crash.
    if (ferrolund::serz::XmlToBinary(xml, binary)) return;
    Check(!ferrolund::serz::BinaryToXml(binary, again));
}

void FromText(std::string_view input) {
    std::string binary, xml, binary2, xml2;
    if (ferrolund::serz::XmlToBinary(input, binary)) return;
    Check(!ferrolund::serz::BinaryToXml(binary, xml));
    Check(!ferrolund::serz::XmlToBinary(xml, binary2));
    Check(!ferrolund::serz::BinaryToXml(binary2, xml2));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    FromBinary(input);
    FromText(input);
    return 0;
}
