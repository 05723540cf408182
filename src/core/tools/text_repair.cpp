#include "tools/text_repair.h"

#include <span>

#include "tools/codepage.h"
#include "tools/text_search.h"

namespace ferrolund::tools {

namespace {

constexpr long kLastPosition = 32767;

// An '&' that stands before one of these (compared without regard to case) is left alone.
enum class Spare { Nothing, Apo, ApoOrQuo };

struct Pass {
    std::string_view find;
    std::string_view replace;
    long step = 0;  // from the hit to the next search; 0: the next search starts at the start
    Spare spare = Spare::Nothing;
};

// File form to screen form; every search ignores case and starts again at the start.
constexpr Pass kFixPasses[] = {
    {"&amp;apos;", "'"},        {"&apos;", "'"},            {"&amp;", "&"},
    {"&quot;", "'"},            {"\xC3\x9F", "\xDF"},       {"\xC3\xBC", "\xFC"},
    {"\xC3\xA4", "\xE4"},       {"\xC3\x84", "\xC4"},       {"\xC3\x96", "\xD6"},
    {"\xC3\x9C", "\xDC"},       {"\xC3\xA4", "\xE4"},       {"\xC3\xB6", "\xF6"},
    {"\xC3\xBC", "\xFC"},       {"\xC3\x9F", "\xDF"},       {"\xC3\xA6", "\xE6"},
    {"\xC3\xB1", "\xF1"},       {"\xC3\xB6", "\xF6"},       {"\xC3\xA7", "\xE7"},
    {"\xC3\xA8", "\xE8"},       {"\xC3\xA9", "\xE9"},       {"\xC3\xA0", "\xE0"},
    {"\xC3\xF9", "\xF9"},       {"\xEF\xBF\x9F", "\xDF"},   {"\xEF\xBF\xBC", "\xFC"},
    {"\xEF\xBF\xA4", "\xE4"},   {"\xEF\xBF\x84", "\xC4"},   {"\xEF\xBF\x96", "\xD6"},
    {"\xEF\xBF\x9C", "\xDC"},   {"\xEF\xBF\xA4", "\xE4"},   {"\xEF\xBF\xB6", "\xF6"},
    {"\xEF\xBF\xBC", "\xFC"},   {"\xEF\xBF\x9F", "\xDF"},   {"\xEF\xBF\xA6", "\xE6"},
    {"\xEF\xBF\xB1", "\xF1"},   {"\xEF\xBF\xB6", "\xF6"},   {"\xEF\xBF\xA7", "\xE7"},
    {"\xEF\xBF\xA8", "\xE8"},   {"\xEF\xBF\xA9", "\xE9"},   {"\xEF\xBF\xA0", "\xE0"},
    {"\xEF\xBF\xF9", "\xF9"},   {"\xEF\xBF\xA1", "\xE1"},   {"\xEF\xBE\xBD", "\xBD"},
    {"\xC3\xAA", "\xEA"},       {"\xC3\xA5", "\xE5"},       {"\xC3\xBD", "\xFD"},
    {"\xC3\xAD", "\xED"},       {"\xC3\xA1", "\xE1"},
};
static_assert(std::size(kFixPasses) == 47);

// Screen form to file form, first variant; exact searches, stepping on from each hit.
constexpr Pass kReplaceAposPasses[] = {
    {"&", "&amp;", 5, Spare::ApoOrQuo}, {"'", "&quot;", 6},
    {"\xDF", "\xEF\xBF\x9F", 3},        {"\xFC", "\xEF\xBF\xBC", 3},
    {"\xE4", "\xEF\xBF\xA4", 3},        {"\xE1", "\xEF\xBF\xA1", 3},
    {"\xC4", "\xC3\x84", 3},            {"\xD6", "\xC3\x96", 3},
    {"\xDC", "\xC3\x9C", 3},            {"\xE4", "\xC3\xA4", 3},
    {"\xF6", "\xC3\xB6", 3},            {"\xFC", "\xC3\xBC", 1},
    {"\xDF", "\xC3\x9F", 3},            {"\xFD", "\xC3\xBD", 3},
    {"\xED", "\xC3\xAD", 3},            {"\xE1", "\xC3\xA1", 3},
    {"\xE6", "\xEF\xBF\xA6", 3},        {"\xF6", "\xEF\xBF\xB6", 3},
    {"\xF1", "\xC3\xB1", 2},            {"\xE7", "\xC3\xA7", 2},
    {"\xE8", "\xC3\xA8", 2},            {"\xE9", "\xC3\xA9", 2},
    {"\xE0", "\xC3\xA0", 2},            {"\xF9", "\xC3\xF9", 2},
    {"\xBD", "\xC2\xBD", 2},            {"\xEA", "\xC3\xEA", 1},
    {"\xE5", "\xC3\xA5", 2},
};
static_assert(std::size(kReplaceAposPasses) == 27);

// Screen form to file form, second variant: every letter goes to its two-byte pair.
constexpr Pass kReplaceApos2Passes[] = {
    {"'", "&apos;", 6},          {"&", "&amp;", 5, Spare::Apo},
    {"\xDF", "\xC3\x9F", 3},     {"\xFC", "\xC3\xBC", 3},
    {"\xE4", "\xC3\xA4", 3},     {"\xC4", "\xC3\x84", 3},
    {"\xD6", "\xC3\x96", 3},     {"\xDC", "\xC3\x9C", 3},
    {"\xE4", "\xC3\xA4", 3},     {"\xF6", "\xC3\xB6", 3},
    {"\xFC", "\xC3\xBC", 1},     {"\xDF", "\xC3\x9F", 3},
    {"\xE6", "\xC3\x9F", 3},     {"\xF1", "\xC3\xB1", 2},
    {"\xFD", "\xC3\xBD", 3},     {"\xED", "\xC3\xAD", 3},
    {"\xE1", "\xC3\xA1", 3},     {"\xE7", "\xC3\xA7", 2},
    {"\xE8", "\xC3\xA8", 2},     {"\xE9", "\xC3\xA9", 2},
    {"\xE0", "\xC3\xA0", 1},     {"\xF9", "\xC3\xF9", 1},
    {"\xEA", "\xC3\xEA", 1},     {"\xE5", "\xC3\xA5", 2},
};
static_assert(std::size(kReplaceApos2Passes) == 24);

bool Spared(const std::string& text, long hit, Spare spare) {
    if (spare == Spare::Nothing) return false;
    const std::string_view next = Mid(text, hit + 1, 3);
    return EqualsIgnoreCase(next, "apo") || (spare == Spare::ApoOrQuo && EqualsIgnoreCase(next, "quo"));
}

// Runs the passes in order; the first overflow is kept as the routine's error.
base::Status RunPasses(std::string& text, std::span<const Pass> passes, CaseRule rule) {
    base::Status overflow;
    for (const Pass& pass : passes) {
        long hit = InStr(1, text, pass.find, rule);
        while (hit > 0) {
            if (hit > kLastPosition) {
                if (!overflow) overflow = base::err::Overflow();
                break;
            }
            if (!Spared(text, hit, pass.spare)) {
                text.replace(static_cast<std::size_t>(hit - 1), pass.find.size(), pass.replace);
            }
            hit = InStr(pass.step == 0 ? 1 : hit + pass.step, text, pass.find, rule);
        }
    }
    return overflow;
}

bool HoldsFileForm(std::string_view text) {
    return InStr(text, "&") > 0 || InStr(text, "\xC3") > 0 || InStr(text, "\xEF") > 0;
}

}  // namespace

base::Status FixEntities(std::string& text, base::Ui* ui) {
    if (!HoldsFileForm(text)) return std::nullopt;
    base::Status overflow = RunPasses(text, kFixPasses, CaseRule::Ignore);
    if (ui != nullptr) ui->pump();
    return overflow;
}

std::string FixEntitiesCopy(std::string_view text, base::Status& overflow) {
    std::string copy(text);
    overflow = HoldsFileForm(copy) ? RunPasses(copy, kFixPasses, CaseRule::Ignore) : std::nullopt;
    return copy;
}

std::string FixEntitiesCopy(std::string_view text) {
    base::Status ignored;
    return FixEntitiesCopy(text, ignored);
}

base::Status ReplaceApos(std::string& text) { return RunPasses(text, kReplaceAposPasses, CaseRule::Exact); }

base::Status ReplaceApos2(std::string& text) { return RunPasses(text, kReplaceApos2Passes, CaseRule::Exact); }

}  // namespace ferrolund::tools
