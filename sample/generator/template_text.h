#pragma once
// The sources are XML (and other text) with names in double braces, filled in by the
// generator:
//   {{name}}        the value of a name given by the plan or an include line
//   {{name.alt}}    the value read as a number, as the converter's d:alt_encoding of a
//                   32-bit float; {{name.alt64}} the same for a 64-bit float
//   {{name.blob}}   a blob of made-up bytes, as many as the value says
//   {{name.dev}}    a GUID as text: the value itself when it is one, else one made from
//                   the value; {{name.u0}}, {{name.u1}} that GUID's two numbers
//   {{id}}          a fresh element id; {{key}} a fresh GUID as text
// A line that holds only {{@file name=value name=$other name="a value"}} is replaced by
// that source (the file may be given as $name too), filled with the names known here plus those given, each of its
// lines indented as the include line is. Ids and keys come from the output's own name, so the same output always gets
// the same ones.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "generator/sources.h"

namespace ferrolund::sample {

using Vars = std::map<std::string, std::string>;
// Empty means success; otherwise a message naming the source and its line.
using Failure = std::optional<std::string>;

struct SourceLine {
    const std::string* source;  // the source's name
    int line;
};

struct Expansion {
    std::string text;               // lines ended by CR LF
    std::vector<SourceLine> lines;  // where each line of `text` came from
};

// A GUID as the game writes it, from its two 64-bit halves.
std::string GuidText(std::uint64_t u0, std::uint64_t u1);
// The halves of GUID text; false when the text is no GUID.
bool ParseGuid(std::string_view text, std::uint64_t& u0, std::uint64_t& u1);
// A 64-bit FNV-1a hash; the generator's one source of made-up numbers.
std::uint64_t Hash64(std::string_view text, std::uint64_t basis = 0xcbf29ce484222325ULL);
// The lines of a text, without their LF or CR LF ends.
std::vector<std::string_view> Lines(std::string_view text);
// `size` bytes of made-up content that depend only on `seed`.
std::string MadeUpBytes(std::size_t size, std::uint64_t seed);

class Expander {
public:
    Expander(const SourceSet& sources, std::string_view outputName);

    Failure Expand(const std::string& sourceName, const Vars& vars, Expansion& out);
    // Turns a converter message "line N: reason" about the expanded text into one that
    // names the source file and its line.
    std::string Locate(const Expansion& expansion, const std::string& message) const;

private:
    Failure ExpandInto(const std::string& sourceName, const Vars& vars, const std::string& indent, int depth,
                       Expansion& out);
    Failure Substitute(std::string_view line, const Vars& vars, std::string& out);
    Failure Lookup(std::string_view name, const Vars& vars, std::string& out);

    const SourceSet& sources_;
    std::uint64_t seed_;
    std::uint32_t nextId_ = 0;
    std::uint32_t nextKey_ = 0;
};

}  // namespace ferrolund::sample
