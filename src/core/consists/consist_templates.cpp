#include "consists/consist_templates.h"

#include <algorithm>
#include <utility>

#include "assets/blueprint.h"
#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/numbers.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"
#include "tools/xml_compare.h"

namespace ferrolund::consists {

namespace {

using tools::InStr;

// The template with each marker replaced by its value, in one pass: a value that happens
// to hold another marker's letters stays as it is.
std::string FillMarkers(std::string_view text, std::initializer_list<std::pair<std::string_view, std::string_view>> markers) {
    std::string out;
    out.reserve(text.size() + 64);
    std::size_t at = 0;
    while (at < text.size()) {
        bool replaced = false;
        for (const auto& [marker, value] : markers) {
            if (text.compare(at, marker.size(), marker) == 0) {
                out += value;
                at += marker.size();
                replaced = true;
                break;
            }
        }
        if (!replaced) out += text[at++];
    }
    return out;
}

// The text ahead of `end` (1-based, exclusive), cut back to the end of its last line.
std::string HeadBefore(std::string_view xml, long end) {
    std::string head(xml.substr(0, static_cast<std::size_t>(end - 1)));
    const std::size_t lineEnd = head.find_last_of('\n');
    if (lineEnd != std::string::npos && head.find_first_not_of(" \t", lineEnd + 1) == std::string::npos)
        head.resize(lineEnd + 1);
    return head;
}

// The text between the quotes of the first d:id="..." of the opening tag at `tag`.
std::string TagId(std::string_view xml, long tag) {
    const long close = InStr(tag, xml, ">");
    const long id = InStr(tag, xml, "d:id=\"");
    if (id == 0 || (close > 0 && id > close)) return {};
    const long from = id + 6;
    const long quote = InStr(from, xml, "\"");
    if (quote == 0) return {};
    return std::string(tools::Mid(xml, from, quote - from));
}

// The text between the first two double quotes after `tag`.
std::string FirstQuoted(std::string_view xml, long tag) {
    const long open = InStr(tag, xml, "\"");
    if (open == 0) return {};
    const long close = InStr(open + 1, xml, "\"");
    if (close == 0) return {};
    return std::string(tools::Mid(xml, open + 1, close - open - 1));
}

// The value of the next `tag` from `pos`, which moves on behind it; a missing tag leaves
// the value empty and `pos` where it was.
std::string NextValue(std::string_view text, long& pos, std::string_view tag) {
    std::string value;
    long at = pos;
    if (tools::GetDetail(text, at, tag, value) || at == 0) return {};
    pos = at;
    return value;
}

void ReadEntries(std::string_view element, const TemplateRow& consist, std::vector<TemplateRow>& rows) {
    constexpr std::string_view kEntry = "<cConsistTemplateEntry";
    long hit = InStr(element, kEntry);
    while (hit > 0) {
        const long next = InStr(hit + 1, element, kEntry);
        const std::string_view entry =
            element.substr(static_cast<std::size_t>(hit - 1),
                           next > 0 ? static_cast<std::size_t>(next - hit) : std::string_view::npos);
        TemplateRow row = consist;
        row.entryId = FirstQuoted(entry, static_cast<long>(kEntry.size()) + 1);
        long pos = 1;
        row.provider = NextValue(entry, pos, "Provider");
        row.product = NextValue(entry, pos, "Product");
        row.blueprintId = NextValue(entry, pos, "BlueprintID");
        row.flipped = NextValue(entry, pos, "Flipped");
        rows.push_back(std::move(row));
        hit = next;
    }
}

base::Status Fail(const std::string& text) { return base::RunError{base::err::kPathFileAccess, text}; }

}  // namespace

std::string ConsistTemplatesPath(const app::AppContext& ctx) {
    return ctx.gameRoot() + "\\Content\\ConsistTemplates.bin";
}

base::Status ReadTemplateTexts(const base::RunContext& ctx, TemplateTexts& texts) {
    const std::pair<const char*, std::string*> files[] = {
        {"ConsistHeader.txt", &texts.header},
        {"ConsistName.txt", &texts.name},
        {"ConsistTemplateEntry.txt", &texts.entry},
    };
    for (const auto& [name, text] : files) {
        const std::string path = ctx.appPath(std::string("Templates\\") + name);
        *text = tools::ReadTextFile(path);
        if (text->empty()) return base::RunError{base::err::kFileNotFound, "The template " + path + " is missing."};
    }
    return {};
}

std::string NewHead(const TemplateTexts& texts) {
    return FillMarkers(texts.header, {{"qqqqq", tools::NewDeltaId()}});
}

bool ParseConsistTemplates(std::string_view xml, TemplateFile& file) {
    file = {};
    constexpr std::string_view kOpen = "<cConsistTemplate d";
    constexpr std::string_view kClose = "</cConsistTemplate>";
    long start = InStr(xml, "<cConsistTemplate");
    if (start == 0) return false;
    file.head = HeadBefore(xml, start);
    while ((start = InStr(start, xml, kOpen)) > 0) {
        const long end = InStr(start, xml, kClose);
        if (end == 0) return false;
        const std::string_view element = tools::Mid(xml, start, end - start);
        TemplateRow consist;
        consist.consistId = TagId(xml, start);
        long at = InStr(element, "<Name>");
        if (at == 0) at = 1;
        tools::GetName(element, at, consist.name, "English");
        long keyAt = std::max(InStr(element, "<Name>"), 1L);
        consist.key = NextValue(element, keyAt, "Key");
        ReadEntries(element, consist, file.rows);
        start = end + static_cast<long>(kClose.size());
    }
    return true;
}

std::vector<ConsistSpan> ConsistSpans(const std::vector<TemplateRow>& rows) {
    std::vector<ConsistSpan> spans;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        if (r == 0 || !tools::EqualsIgnoreCase(rows[r].name, rows[r - 1].name)) spans.push_back({r, r});
        spans.back().end = r + 1;
    }
    return spans;
}

std::string ConsistXml(const std::vector<TemplateRow>& rows, std::size_t first, std::size_t end,
                       const TemplateTexts& texts) {
    const TemplateRow& head = rows[first];
    std::string out = FillMarkers(texts.name, {{"zzzzz", head.consistId}, {"xxxxx", head.name}, {"yyyyy", head.key}});
    for (std::size_t r = first; r < end; ++r) {
        const TemplateRow& row = rows[r];
        out += FillMarkers(texts.entry, {{"aaaaa", row.entryId},
                                         {"bbbbb", row.provider},
                                         {"ccccc", row.product},
                                         {"ddddd", row.blueprintId},
                                         {"eeeee", row.flipped}});
        out += "\r\n";
    }
    out += kConsistClose;
    return out;
}

std::string ConsistTemplatesXml(const TemplateFile& file, const TemplateTexts& texts) {
    std::string out = file.head;
    for (const ConsistSpan& span : ConsistSpans(file.rows)) out += ConsistXml(file.rows, span.first, span.end, texts);
    out += kTemplatesTail;
    return out;
}

bool WithConsistAdded(const std::string* existing, const std::vector<TemplateRow>& rows, const TemplateTexts& texts,
                      std::string& xml) {
    if (existing) {
        const long record = InStr(*existing, "</Record");
        if (record == 0) return false;
        xml = HeadBefore(*existing, record);
    } else {
        xml = NewHead(texts);
    }
    if (!rows.empty()) xml += ConsistXml(rows, 0, rows.size(), texts);
    xml += kTemplatesTail;
    return true;
}

std::string StockFile(const std::string& gameRoot, const TemplateRow& row) {
    return assets::BlueprintFile(gameRoot, {row.provider, row.product, row.blueprintId});
}

bool StockMissing(const std::string& gameRoot, const TemplateRow& row) {
    const std::string file = StockFile(gameRoot, row);
    return !tools::FileExists(file) && !tools::FileExists(tools::FixEntitiesCopy(file));
}

std::string FileFormName(std::string_view typed) {
    std::string out;
    out.reserve(typed.size());
    for (const char c : typed) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            case '\'': out += "&apos;"; break;
            default: out += c;
        }
    }
    return out;
}

LoadedTemplates LoadConsistTemplates(app::AppContext& ctx, bool suppressMissing) {
    LoadedTemplates out;
    const std::string path = ConsistTemplatesPath(ctx);
    if (!tools::FileExists(path)) {
        const base::Answer answer = ctx.ui->ask(std::string(kNoSavedConsistsMessage) + "\n" + kCreateQuestion,
                                                base::Buttons::YesNo, base::Icon::Question);
        if (answer != base::Answer::Yes) {
            out.state = LoadState::Declined;
            return out;
        }
        TemplateTexts texts;
        if (base::Status failed = ReadTemplateTexts(ctx, texts)) {
            ctx.ui->message(failed->description, base::Icon::Critical);
            return out;
        }
        out.file.head = NewHead(texts);
        out.state = LoadState::New;
        return out;
    }
    std::string xml;
    if (tools::SerzReadXml(ctx, path, xml) || !ParseConsistTemplates(xml, out.file)) {
        out.file = {};
        ctx.ui->message(kInvalidFileMessage, base::Icon::Critical);
        return out;
    }
    out.state = LoadState::Loaded;
    out.missing.reserve(out.file.rows.size());
    for (const TemplateRow& row : out.file.rows) {
        const bool missing = StockMissing(ctx.gameRoot(), row);
        out.missing.push_back(missing);
        if (missing && !suppressMissing) {
            ctx.ui->message(std::string(kMissingStockMessage) + "\n" + StockFile(ctx.gameRoot(), row),
                            base::Icon::Exclamation, kMissingStockTitle);
        }
    }
    return out;
}

SaveResult WriteConsistTemplates(app::AppContext& ctx, const std::string& xml) {
    SaveResult out;
    const std::string temp = ctx.appPath("TempFiles");
    tools::CreatePath(temp);
    const std::string source = temp + "\\ConsistTemplates.xml";
    const std::string made = temp + "\\ConsistTemplates.bin";
    const std::string target = ConsistTemplatesPath(ctx);

    base::Status failed;
    if (!tools::WriteTextFile(ctx, source, xml)) failed = Fail("Could not write " + source);
    if (!failed) failed = tools::SerzConvert(ctx, source, made, tools::SerzDirection::ToBinary);
    if (!failed && tools::FileLength(made) <= 0) failed = Fail(made + " has no length.");
    if (!failed) {
        // The new file must say what was meant before it may replace the old one.
        std::string back;
        failed = tools::SerzReadXml(ctx, made, back);
        if (!failed && !tools::SameXmlContent(xml, back)) failed = Fail(made + " does not read back as written.");
    }
    if (!failed) {
        if (tools::FileExists(target)) {
            failed = tools::ReplaceWithBackup(made, target, tools::kScenarioBackupRule, out.backup);
        } else {
            failed = tools::CopyFileReplacing(made, target);
        }
    }
    if (failed) {
        out.backup.clear();
        ctx.ui->message(std::string(kNotWrittenMessage) + "\n\n" + failed->description, base::Icon::Exclamation);
        return out;
    }
    out.written = true;
    ctx.ui->message(kReadyMessage, base::Icon::Information);
    return out;
}

SaveResult SaveConsistTemplates(app::AppContext& ctx, const TemplateFile& file) {
    if (file.rows.empty()) {
        ctx.ui->message(kNothingToSaveMessage, base::Icon::Exclamation);
        return {};
    }
    TemplateTexts texts;
    if (base::Status failed = ReadTemplateTexts(ctx, texts)) {
        ctx.ui->message(std::string(kNotWrittenMessage) + "\n\n" + failed->description, base::Icon::Exclamation);
        return {};
    }
    return WriteConsistTemplates(ctx, ConsistTemplatesXml(file, texts));
}

}  // namespace ferrolund::consists
