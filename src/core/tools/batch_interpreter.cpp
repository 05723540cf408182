#include "tools/batch_interpreter.h"

#include <algorithm>
#include <cctype>
#include <fstream>

#include "tools/batch_run.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::tools {

namespace batch {
namespace {

constexpr int kMaxCallDepth = 16;

std::string Trim(std::string_view text) {
    std::size_t a = 0, b = text.size();
    while (a < b && (text[a] == ' ' || text[a] == '\t')) ++a;
    while (b > a && (text[b - 1] == ' ' || text[b - 1] == '\t' || text[b - 1] == '\r')) --b;
    return std::string(text.substr(a, b - a));
}

// The first word of a line (quotes removed) and the rest behind it.
void FirstWord(std::string_view text, std::string& word, std::string& rest) {
    const std::string line = Trim(text);
    bool quoted = false;
    std::size_t i = 0;
    for (; i < line.size(); ++i) {
        if (line[i] == '"') quoted = !quoted;
        else if ((line[i] == ' ' || line[i] == '\t') && !quoted) break;
    }
    word.clear();
    for (char c : std::string_view(line).substr(0, i)) {
        if (c != '"') word += c;
    }
    rest = Trim(std::string_view(line).substr(i));
}

// The program a word names: its last element, lower case, without ".exe" or ".com".
std::string ProgramName(const std::string& word) {
    const std::size_t cut = word.find_last_of("\\/");
    std::string name = LowerCp1252(cut == std::string::npos ? word : word.substr(cut + 1));
    for (const char* ext : {".exe", ".com"}) {
        if (name.size() > 4 && name.ends_with(ext)) name.resize(name.size() - 4);
    }
    return name;
}

void RunLine(Run& run, const std::string& text);

void Pause(Run& run) {
    std::string shown = run.outcome.console + run.output;
    // The last lines of the console, as much as a box can show.
    std::size_t lines = 0, from = shown.size();
    while (from > 0 && lines < 40) {
        from = shown.rfind('\n', from - 1);
        if (from == std::string::npos) {
            from = 0;
            break;
        }
        ++lines;
    }
    shown = Trim(shown.substr(from));
    if (!shown.empty()) shown += "\r\n\r\n";
    if (run.ctx.ui) run.ctx.ui->message(shown + "Press any key to continue . . .", base::Icon::None);
}

void CallBatch(Run& run, const std::string& word, const std::string& rest) {
    if (!rest.empty()) {
        run.fail("Arguments to a called batch file are not used by this program's batch files: " + word + " " + rest);
        return;
    }
    if (run.depth >= kMaxCallDepth) {
        run.fail("Batch files call each other too deeply: " + word);
        return;
    }
    const std::string path = Resolve(run, word);
    if (!IsFile(path)) {
        run.fail(base::err::FileNotFound(path));
        return;
    }
    const std::size_t cut = path.find_last_of("\\/");
    Run inner{run.ctx, cut == std::string::npos ? run.folder : path.substr(0, cut), run.outcome, {}, run.depth + 1};
    const std::string text = ReadTextFile(path);
    std::size_t from = 0;
    while (from <= text.size() && !run.outcome.aborted) {
        std::size_t to = text.find('\n', from);
        if (to == std::string::npos) to = text.size();
        RunLine(inner, text.substr(from, to - from));
        from = to + 1;
    }
    run.output += inner.output;
}

// %%f, %%~dpf, %%~nxf, %%~nf, %%~xf, %%~ff and %%~f of one file in a "for" command.
std::string Substitute(const std::string& command, const std::string& variable, const std::string& file) {
    const std::size_t cut = file.rfind('\\');
    const std::string folder = cut == std::string::npos ? std::string() : file.substr(0, cut + 1);
    const std::string nameExt = cut == std::string::npos ? file : file.substr(cut + 1);
    const std::size_t dot = nameExt.rfind('.');
    const std::string name = dot == std::string::npos ? nameExt : nameExt.substr(0, dot);
    const std::string ext = dot == std::string::npos ? std::string() : nameExt.substr(dot);
    const std::pair<std::string, std::string> forms[] = {
        {"~dp", folder}, {"~nx", nameExt}, {"~n", name}, {"~x", ext}, {"~f", file}, {"~", file}, {"", file},
    };
    std::string out;
    std::size_t i = 0;
    while (i < command.size()) {
        const std::size_t percent = command.find('%', i);
        if (percent == std::string::npos) {
            out += command.substr(i);
            break;
        }
        out += command.substr(i, percent - i);
        std::size_t at = percent + 1;
        if (at < command.size() && command[at] == '%') ++at;
        bool replaced = false;
        for (const auto& [modifier, value] : forms) {
            if (command.compare(at, modifier.size() + variable.size(), modifier + variable) == 0) {
                out += value;
                i = at + modifier.size() + variable.size();
                replaced = true;
                break;
            }
        }
        if (!replaced) {
            out += '%';
            i = percent + 1;
        }
    }
    return out;
}

void For(Run& run, const std::string& rest) {
    // for [/r ["folder"]] %%v in (set) do command
    std::string text = rest, word, after;
    bool recurse = false;
    std::string root = run.folder;
    FirstWord(text, word, after);
    if (EqualsIgnoreCase(word, "/r")) {
        recurse = true;
        text = after;
        FirstWord(text, word, after);
        if (!word.starts_with('%')) {
            root = Resolve(run, word);
            text = after;
            FirstWord(text, word, after);
        }
    }
    std::string variable = word.starts_with("%%") ? word.substr(2) : word.starts_with('%') ? word.substr(1) : "";
    std::string inWord, setAndDo;
    FirstWord(after, inWord, setAndDo);
    const std::size_t open = setAndDo.find('(');
    const std::size_t close = setAndDo.find(')', open == std::string::npos ? 0 : open);
    std::string doWord, command;
    if (close != std::string::npos) FirstWord(setAndDo.substr(close + 1), doWord, command);
    if (variable.size() != 1 || !EqualsIgnoreCase(inWord, "in") || open != 0 || close == std::string::npos ||
        !EqualsIgnoreCase(doWord, "do") || command.empty()) {
        run.fail("A \"for\" command this program's batch files do not use: for " + rest);
        return;
    }
    std::vector<std::string> set;
    for (const Word& w : Words(setAndDo.substr(1, close - 1))) set.push_back(w.text);
    auto each = [&](const std::string& file, const std::string&, bool) {
        RunLine(run, Substitute(command, variable, file));
    };
    if (recurse) {
        Walk(run, root, set, true, false, each);
        return;
    }
    for (const auto& item : set) {
        if (!HasWildcards(item)) {
            each(item, item, false);
            continue;
        }
        std::string folder, mask;
        SplitMask(run, item, folder, mask);
        Walk(run, folder, {mask}, false, false, each);
    }
}

void RunLine(Run& run, const std::string& text) {
    std::string line = Trim(text);
    if (!line.empty() && line[0] == '@') line = Trim(line.substr(1));
    if (line.empty() || line.starts_with("::") || run.outcome.aborted) return;
    if (run.aborted()) return;
    // Output sent to a file: the last '>' outside quotes.
    std::string redirect;
    bool append = false;
    {
        bool quoted = false;
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (line[i] == '"') quoted = !quoted;
            if (line[i] == '>' && !quoted) {
                append = i + 1 < line.size() && line[i + 1] == '>';
                const std::vector<Word> target = Words(line.substr(i + (append ? 2 : 1)));
                redirect = target.empty() ? std::string() : Resolve(run, target[0].text);
                if (target.size() != 1) {
                    run.fail("A redirection this program's batch files do not use: " + line);
                    return;
                }
                line = Trim(line.substr(0, i));
                break;
            }
        }
    }
    std::string word, rest;
    FirstWord(line, word, rest);
    const std::string program = ProgramName(word);
    const std::string saved = std::move(run.output);
    run.output.clear();
    ++run.outcome.commands;
    if (program == "rem") {
    } else if (program == "echo") {
        if (!EqualsIgnoreCase(rest, "off") && !EqualsIgnoreCase(rest, "on")) run.print(rest);
    } else if (program == "chcp") {
        const std::vector<Word> args = Words(rest);
        if (args.size() != 1 || args[0].text.empty() ||
            !std::all_of(args[0].text.begin(), args[0].text.end(), ::isdigit)) {
            run.fail("Parameter format not correct - chcp " + rest);
        } else {
            run.print("Active code page: " + args[0].text);
        }
    } else if (program == "call") {
        if (rest.empty()) run.fail("The syntax of the command is incorrect: " + line);
        else RunLine(run, rest);
    } else if (program == "pause") {
        Pause(run);
    } else if (program == "for") {
        For(run, rest);
    } else if (program == "xcopy") {
        Xcopy(run, Words(rest));
    } else if (program == "copy") {
        Copy(run, Words(rest));
    } else if (program == "del" || program == "erase") {
        Del(run, Words(rest));
    } else if (program == "attrib") {
        Attrib(run, Words(rest));
    } else if (program == "7za" || program == "7z") {
        SevenZip(run, Words(rest));
    } else if (program == "serz") {
        Serz(run, Words(rest));
    } else if (program.ends_with(".bat") || program.ends_with(".cmd")) {
        CallBatch(run, word, rest);
    } else {
        run.fail("'" + word + "' is not a command that this program's batch files use: " + line);
    }
    std::string printed = std::move(run.output);
    run.output = saved;
    if (redirect.empty()) {
        run.output += printed;
        return;
    }
    std::ofstream out(HostPath(redirect), std::ios::binary | (append ? std::ios::app : std::ios::trunc));
    out << printed;
    if (!out) run.fail(base::err::PathFileAccess(redirect));
    ForgetPath(redirect);
}

}  // namespace

bool Run::aborted() {
    if (ctx.ui) ctx.ui->pump();
    if (ctx.abortFlag) outcome.aborted = true;
    return outcome.aborted;
}

}  // namespace batch

base::Status BatchErrors(const BatchOutcome& outcome) {
    if (outcome.errors.empty()) return {};
    base::RunError summary = outcome.errors.front();
    for (std::size_t i = 1; i < outcome.errors.size() && i < 10; ++i) {
        summary.description += "\r\n" + outcome.errors[i].description;
    }
    if (outcome.errors.size() > 10) {
        summary.description += "\r\n(" + std::to_string(outcome.errors.size() - 10) + " more)";
    }
    return summary;
}

base::Status RunBatchText(base::RunContext& ctx, const std::string& text, const std::string& folder,
                         BatchOutcome& outcome) {
    batch::Run run{ctx, folder, outcome, {}, 0};
    const std::size_t before = outcome.errors.size();
    std::size_t from = 0;
    while (from <= text.size() && !outcome.aborted) {
        std::size_t to = text.find('\n', from);
        if (to == std::string::npos) to = text.size();
        batch::RunLine(run, text.substr(from, to - from));
        outcome.console += run.output;
        run.output.clear();
        from = to + 1;
    }
    if (outcome.errors.size() > before) return outcome.errors[before];
    return {};
}

base::Status RunBatchFile(base::RunContext& ctx, const std::string& path, BatchOutcome& outcome) {
    // A bare name is taken from the working folder.
    const bool bare = path.find_first_of("\\/") == std::string::npos;
    const std::string batchPath = bare && !ctx.workingFolder.empty() ? ctx.workingFolder + "\\" + path : path;
    if (!FileExists(batchPath)) {
        outcome.errors.push_back(base::err::FileNotFound(batchPath));
        return outcome.errors.back();
    }
    const std::size_t cut = batchPath.find_last_of("\\/");
    const std::string folder = cut == std::string::npos ? ctx.workingFolder : batchPath.substr(0, cut);
    return RunBatchText(ctx, ReadTextFile(batchPath), folder, outcome);
}

base::Status RunBatchFile(base::RunContext& ctx, const std::string& batchPath) {
    BatchOutcome outcome;
    return RunBatchFile(ctx, batchPath, outcome);
}

}  // namespace ferrolund::tools
