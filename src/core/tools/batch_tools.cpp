// The lines of the batch interpreter that other parts of the program serve: serz by
// SerzConvert, 7za by the archive layer.
#include "tools/batch_run.h"
#include "tools/codepage.h"
#include "tools/serz_convert.h"

namespace ferrolund::tools::batch {

namespace {
LineCommand gSevenZip = nullptr;
}  // namespace

void SetSevenZipCommand(LineCommand command) { gSevenZip = command; }

void SevenZip(Run& run, const std::vector<Word>& words) {
    if (gSevenZip == nullptr) {
        run.fail("'7za' cannot be run: this program was started without its archive access");
        return;
    }
    gSevenZip(run, words);
}

void Serz(Run& run, const std::vector<Word>& words) {
    if (words.empty() || words.size() > 2) {
        run.fail("serz takes a source and a target: serz \"<source>\" xml:\"<target>\"");
        return;
    }
    const std::string source = Resolve(run, words[0].text);
    std::string target;
    SerzDirection direction = SerzDirection::ToXml;
    if (words.size() == 2) {
        std::string targetWord = words[1].text;
        if (targetWord.starts_with('/')) targetWord.erase(0, 1);
        const std::string lower = LowerCp1252(targetWord.substr(0, 4));
        if (lower != "xml:" && lower != "bin:") {
            run.fail("serz: the target must start with xml: or bin: - " + words[1].text);
            return;
        }
        direction = lower == "xml:" ? SerzDirection::ToXml : SerzDirection::ToBinary;
        target = Resolve(run, targetWord.substr(4));
    } else {
        const std::string tail = LowerCp1252(source.size() >= 3 ? source.substr(source.size() - 3) : source);
        if (tail != "bin" && tail != "xml") {
            run.fail("serz: the source must end in bin or xml - " + source);
            return;
        }
        direction = tail == "bin" ? SerzDirection::ToXml : SerzDirection::ToBinary;
        target = source.substr(0, source.size() - 3) + (tail == "bin" ? "xml" : "bin");
    }
    if (base::Status s = SerzConvert(run.ctx, source, target, direction)) run.fail(*s);
}

}  // namespace ferrolund::tools::batch
