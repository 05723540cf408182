#include "tools/xml_compare.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace ferrolund::tools {

namespace {

// Numbers of a float-typed element, or nothing when the text is not all numbers.
bool Numbers(std::string_view text, std::vector<double>& values) {
    values.clear();
    std::string copy(text);
    const char* at = copy.c_str();
    while (true) {
        while (*at == ' ' || *at == '\t' || *at == '\r' || *at == '\n') ++at;
        if (*at == '\0') return !values.empty();
        char* end = nullptr;
        const double value = std::strtod(at, &end);
        if (end == at) return false;
        values.push_back(value);
        at = end;
    }
}

bool FloatTyped(const pugi::xml_node& node) {
    const std::string type = node.attribute("d:type").value();
    const std::string elementType = node.attribute("d:elementType").value();
    return type == "sFloat32" || type == "sFloat64" || elementType == "sFloat32" || elementType == "sFloat64";
}

bool SameNumbers(std::string_view a, std::string_view b) {
    std::vector<double> x, y;
    if (!Numbers(a, x) || !Numbers(b, y) || x.size() != y.size()) return false;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double scale = std::max(std::fabs(x[i]), std::fabs(y[i]));
        if (std::fabs(x[i] - y[i]) > 1e-5 * scale + 1e-6) return false;
    }
    return true;
}

std::string WithoutBlanks(std::string_view text) {
    std::string out;
    for (char c : text)
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n') out += c;
    return out;
}

bool SameValue(const pugi::xml_node& a, const pugi::xml_node& b) {
    const std::string_view x = a.text().get(), y = b.text().get();
    if (x == y) return true;
    if (std::string_view(a.name()) == "d:blob") return WithoutBlanks(x) == WithoutBlanks(y);
    return FloatTyped(a) && SameNumbers(x, y);
}

bool SameAttributes(const pugi::xml_node& a, const pugi::xml_node& b) {
    auto next = [](pugi::xml_attribute at) {
        while (at && std::string_view(at.name()) == "d:alt_encoding") at = at.next_attribute();
        return at;
    };
    pugi::xml_attribute x = next(a.first_attribute()), y = next(b.first_attribute());
    for (; x && y; x = next(x.next_attribute()), y = next(y.next_attribute())) {
        if (std::string_view(x.name()) != y.name() || std::string_view(x.value()) != y.value()) return false;
    }
    return !x && !y;
}

bool SameElement(const pugi::xml_node& a, const pugi::xml_node& b) {
    if (std::string_view(a.name()) != b.name() || !SameAttributes(a, b) || !SameValue(a, b)) return false;
    pugi::xml_node x = a.first_child(), y = b.first_child();
    auto element = [](pugi::xml_node n) {
        while (n && n.type() != pugi::node_element) n = n.next_sibling();
        return n;
    };
    for (x = element(x), y = element(y); x && y; x = element(x.next_sibling()), y = element(y.next_sibling())) {
        if (!SameElement(x, y)) return false;
    }
    return !x && !y;
}

}  // namespace

bool SameXmlContent(std::string_view intended, std::string_view readBack) {
    pugi::xml_document a, b;
    constexpr unsigned kOptions = pugi::parse_default;
    if (!a.load_buffer(intended.data(), intended.size(), kOptions, pugi::encoding_utf8)) return false;
    if (!b.load_buffer(readBack.data(), readBack.size(), kOptions, pugi::encoding_utf8)) return false;
    const pugi::xml_node x = a.document_element(), y = b.document_element();
    return x && y && SameElement(x, y);
}

}  // namespace ferrolund::tools
