#pragma once
// XML text taken to binary by the converter and back to XML, for the converter's tests.

#include <gtest/gtest.h>

#include <string>

#include "serz/codec.h"

namespace ferrolund::serz {

// The XML that comes back; a failure on either way is a test failure and gives "".
inline std::string RoundTripped(const std::string& xml) {
    std::string binary, back;
    if (auto failure = XmlToBinary(xml, binary)) {
        ADD_FAILURE() << failure->message << "\n" << xml;
        return {};
    }
    if (auto failure = BinaryToXml(binary, back)) {
        ADD_FAILURE() << failure->message;
        return {};
    }
    return back;
}

// XML in the converter's own form comes back the same.
inline void ExpectRoundTrip(const std::string& xml) { EXPECT_EQ(RoundTripped(xml), xml); }

}  // namespace ferrolund::serz
