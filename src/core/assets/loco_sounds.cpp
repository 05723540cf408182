#include "assets/loco_sounds.h"

#include <memory>

#include "assets/blueprint_splice.h"
#include "assets/sound_text.h"
#include "assets/stock_templates.h"
#include "tools/numbers.h"
#include "tools/tags.h"
#include "tools/text_replace.h"

namespace ferrolund::assets {

using tools::InStr;
using tools::InStrRev;
using Verdict = TransformResult::Verdict;

namespace {

constexpr std::string_view kControlClose = "</cControlContainerBlueprint-cControlValue>";
constexpr std::string_view kModernBogie = "Kuju\\RailSimulator\\Audio\\RailNetwork\\Bogies\\BG_Modern";

// One sound child entry filled from the class's template.
struct SoundChild {
    std::string_view childName;
    std::string_view blueprint;
    std::string_view height;  // "dddddd"
    std::string_view length;  // "eeeeee"
};

struct ClassSettings {
    std::string_view routine;
    std::string_view modifiedMark;  // found only in a loco already done
    std::string_view engineSound;   // the new children follow this one's entry
    std::string_view childTemplate;
    std::string_view bellTemplate;
    std::string_view bellTest;      // a loco whose text holds this has its bell
    std::vector<std::string> horn;  // the first values of the horn's matrix
    bool bogieEverywhere;           // the modern bogie is replaced wherever it stands
    std::string_view bogie;
    std::vector<SoundChild> children;
};

const ClassSettings& Settings(DieselClass which) {
    static const ClassSettings k37{
        "mnuSnd37_Click", "Class 37 Engine Sound 2", "Class 37 Engine Sound", "ChildAudio37.txt", "Bell37.txt",
        ">Bell<", {"4.9533", "9.4107", "1"}, false, "AP\\C37P\\Audio\\RailNetwork\\Class 37 Bogie",
        {{"EngineSound2", "Audio\\RailVehicles\\Diesel\\Class37\\Class 37 Engine Sound 2.xml", "2.50444", "-1.03766"}}};
    static const ClassSettings k47{
        "mnuCL47_Click", "Class 47 Engine Sound 2", "Class 47 Engine Sound", "ChildAudio.txt", "BellControl.txt",
        "Bell", {"9.7"}, true, "AP\\C47P\\Audio\\RailNetwork\\Class 47 Bogie",
        {{"EngineSound2", "Audio\\RailVehicles\\Diesel\\Class 47\\Class 47 Engine Sound 2.xml", "0", "0"},
         {"EngineSound3", "Audio\\RailVehicles\\Diesel\\Class 47\\Class 47 Engine Sound 3.xml", "0", "0"},
         {"EngineCabSound", "Audio\\RailVehicles\\Diesel\\Class 47\\Class 47 Engine Cab Sound.xml", "2.6865",
          "-8.95135"}}};
    return which == DieselClass::Class37 ? k37 : k47;
}

std::string FillChild(std::string_view templateText, const SoundChild& child) {
    return FillMarkers(std::string(WithoutLastLineEnd(templateText)),
                       {{"aaaaaa", tools::NewDeltaId()},
                        {"pppppp", tools::NewDeltaId()},
                        {"qqqqqq", tools::NewDeltaId()},
                        {"bbbbbb", std::string(child.childName)},
                        {"cccccc", std::string(child.blueprint)},
                        {"dddddd", std::string(child.height)},
                        {"eeeeee", std::string(child.length)}});
}

// Puts the bell control behind the horn's control.
void AddBell(std::string& text, std::string_view bell) {
    const long controls = InStr(text, "<ControlValues>");
    const long horn = controls == 0 ? 0 : InStr(controls, text, "Horn");
    const long close = horn == 0 ? 0 : InStr(horn, text, kControlClose);
    if (close == 0) return;
    InsertBehind(text, close + static_cast<long>(kControlClose.size()) - 1,
                 "\r\n" + std::string(WithoutLastLineEnd(bell)));
}

TransformResult Changed(std::string_view before, std::string after) {
    if (after == before) return TransformResult::Skip(Verdict::Nothing, "Nothing in this item needed changing.");
    return TransformResult::Changed(std::move(after));
}

}  // namespace

std::vector<std::string_view> ClassSoundTemplateNames(DieselClass which) {
    const ClassSettings& s = Settings(which);
    return {s.childTemplate, s.bellTemplate};
}

TransformResult UpdateClassSounds(std::string_view text, DieselClass which, const ClassSoundTemplates& templates) {
    const ClassSettings& s = Settings(which);
    if (InStr(text, s.modifiedMark) > 0) return TransformResult::Skip(Verdict::Nothing, std::string(kAlreadyModified));
    if (InStr(text, s.engineSound) == 0) {
        return TransformResult::Skip(Verdict::Unfit, "This Loco does not use the " + std::string(s.engineSound) + ".");
    }
    for (const auto& [name, body] :
         {std::pair{s.childTemplate, &templates.child}, std::pair{s.bellTemplate, &templates.bell}}) {
        if (tools::TrimBlanks(*body).empty()) return TransformResult::Skip(Verdict::Unfit, MissingTemplateMessage(name));
    }
    std::string out(text);
    if (const long remappers = InStr(out, "<IntermediateRemapper"); remappers > 0) {
        long pos = remappers;
        tools::PutDetail(out, pos, "ExpertRemapper", "TwoTone_Expert");
    }
    if (s.bogieEverywhere) tools::ReplaceAll(out, kModernBogie, s.bogie);
    else SetBogieAudio(out, s.bogie);
    if (const long horn = InStr(out, "Horn Sound.xml"); horn > 0) {
        if (const long matrix = InStr(horn, out, "<Element"); matrix > 0) SetMatrixValues(out, matrix, s.horn);
    }
    if (InStr(out, s.bellTest) == 0) AddBell(out, templates.bell);
    const long engine = InStr(out, s.engineSound);
    if (const long close = InStr(engine, out, kChildClose); close > 0) {
        std::string children;
        for (const SoundChild& child : s.children) children += "\r\n" + FillChild(templates.child, child);
        InsertBehind(out, close + static_cast<long>(kChildClose.size()) - 1, children);
    }
    for (std::string_view control : {"Regulator", "Reverser"}) SetControlDetail(out, control, "ApplyToConsist", "eTrue");
    return Changed(text, std::move(out));
}

TransformOutcome ClassSounds(app::AppContext& ctx, const std::vector<AssetRow>& selected, DieselClass which) {
    auto templates = std::make_shared<ClassSoundTemplates>();
    TransformCommand command(std::string(Settings(which).routine), TransformFile::Blueprint,
                             [which, templates](app::AppContext&, TransformRow&, std::string_view text) {
                                 return UpdateClassSounds(text, which, *templates);
                             });
    command.prepare = [which, templates](app::AppContext& c, const std::vector<AssetRow>&) {
        const ClassSettings& s = Settings(which);
        templates->child = StockTemplate(c, s.childTemplate);
        templates->bell = StockTemplate(c, s.bellTemplate);
        return true;
    };
    return RunTransform(ctx, selected, command);
}

// --- Class 43/HST ---

TransformResult UpdateHstSounds(std::string_view text, std::string_view controls) {
    using tools::ReplaceAll;
    std::string out(text);
    while (ReplaceAll(out, "MTU MTU", "MTU") > 0) {
    }
    ReplaceAll(out, "Audio\\RailVehicles\\Diesel\\RA_Class 43_MTU\\Class 43 Engine Sound MTU.xml</",
               "Audio\\RailVehicles\\Diesel\\AP_Class 43_MTU\\Class 43 Engine Sound MTU.xml</");
    ReplaceAll(out, kModernBogie, "AP\\C43MTUP\\Audio\\RailNetwork\\Bogies\\Class 43 Bogie");
    ReplaceAll(out, "Class 43 Engine Sound.xml", "Class 43 Engine Sound MTU.xml");
    ReplaceAll(out, "Class 43 Cab Sound New.xml", "Class 43 Cab Sound MTU.xml");
    ReplaceAll(out, "Class 43 Cab Sound.xml", "Class 43 Cab Sound MTU.xml");
    ReplaceAll(out, "2.54521", "0");
    ReplaceAll(out, "7.80187", "0");
    if (long at = InStr(out, "Class 43 Horn Sound"); at > 0) {
        for (int step = 0; step < 3 && at > 0; ++step) {
            at = InStr(at, out, "</e>");
            if (at > 0) ++at;
        }
        if (const long nought = at == 0 ? 0 : InStr(at, out, ">0<"); nought > 0) {
            out.replace(static_cast<std::size_t>(nought - 1), 3, ">8.8<");
        }
    }
    ReplaceAll(out, "RailVehicles\\Diesel\\HST\\Default\\Simulation\\HST Engine Simulation.xml",
               "RailVehicles\\Diesel\\HST\\FGW\\Simulation\\HST Engine Simulation.xml");
    if (InStr(out, "GuardSignal") == 0) {
        if (tools::TrimBlanks(controls).empty()) {
            return TransformResult::Skip(Verdict::Unfit, MissingTemplateMessage(kHstControlsTemplate));
        }
        const long end = InStr(out, "</ControlValues>");
        const long last = end == 0 ? 0 : InStrRev(out, ">", end);
        if (last > 0) InsertBehind(out, last, "\r\n" + std::string(WithoutLastLineEnd(controls)));
    }
    return Changed(text, std::move(out));
}

TransformOutcome HstSounds(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    auto controls = std::make_shared<std::string>();
    TransformCommand command("mnuHST_Click", TransformFile::Blueprint,
                             [controls](app::AppContext& c, TransformRow&, std::string_view text) {
                                 TransformResult result = UpdateHstSounds(text, *controls);
                                 // The only row it cannot do is one that needs the missing template.
                                 if (result.verdict == Verdict::Unfit && c.ui) {
                                     c.ui->message(result.reason, base::Icon::Exclamation);
                                 }
                                 return result;
                             });
    command.prepare = [controls](app::AppContext& c, const std::vector<AssetRow>&) {
        *controls = StockTemplate(c, kHstControlsTemplate);
        return true;
    };
    return RunTransform(ctx, selected, command);
}

}  // namespace ferrolund::assets
