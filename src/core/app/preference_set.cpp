#include "app/preference_set.h"

#include <array>
#include <variant>

#include "app/value_reader.h"

namespace ferrolund::app {

namespace {

using Field = std::variant<std::int16_t PreferenceSet::*, bool PreferenceSet::*, std::string PreferenceSet::*>;

// The file's lines in order. Line 14 is handled apart: it has two homes.
constexpr int kAboutLine = 14;
const std::array<Field, kPreferenceCount> kLines = {
    &PreferenceSet::editorWidth,          &PreferenceSet::editorHeight,
    &PreferenceSet::editorLeft,           &PreferenceSet::editorTop,
    &PreferenceSet::graphicsEditorPath,   &PreferenceSet::viewerPath,
    &PreferenceSet::gameRoot,             &PreferenceSet::spareFlag1,
    &PreferenceSet::spareText1,           &PreferenceSet::pdfReaderPath,
    &PreferenceSet::rsBinToolPath,        &PreferenceSet::language,
    &PreferenceSet::backupPath,           &PreferenceSet::aboutFlag,
    &PreferenceSet::noAskOnExit,          &PreferenceSet::editorFontSize,
    &PreferenceSet::spareText2,           &PreferenceSet::editorWindowState,
    &PreferenceSet::scenarioEditorWidth,  &PreferenceSet::scenarioEditorHeight,
    &PreferenceSet::scenarioEditorLeft,   &PreferenceSet::scenarioEditorTop,
    &PreferenceSet::warnIfNotSaved,       &PreferenceSet::spareFlag2,
    &PreferenceSet::preLoadFolder,        &PreferenceSet::noNewVersionAdvice,
    &PreferenceSet::spareFlag3,           &PreferenceSet::reportWidth,
    &PreferenceSet::reportHeight,         &PreferenceSet::reportLeft,
    &PreferenceSet::reportTop,            &PreferenceSet::routesIndexed,
};

struct Geometry {
    std::int16_t PreferenceSet::*width;
    std::int16_t PreferenceSet::*height;
    std::int16_t PreferenceSet::*left;
    std::int16_t PreferenceSet::*top;
};
const std::array<Geometry, 3> kGeometries = {{
    {&PreferenceSet::editorWidth, &PreferenceSet::editorHeight, &PreferenceSet::editorLeft,
     &PreferenceSet::editorTop},
    {&PreferenceSet::scenarioEditorWidth, &PreferenceSet::scenarioEditorHeight,
     &PreferenceSet::scenarioEditorLeft, &PreferenceSet::scenarioEditorTop},
    {&PreferenceSet::reportWidth, &PreferenceSet::reportHeight, &PreferenceSet::reportLeft,
     &PreferenceSet::reportTop},
}};

}  // namespace

std::vector<base::RunError> ParsePreferences(const std::string& text, PreferenceSet& prefs, AboutHome home) {
    std::vector<base::RunError> errors;
    ValueReader reader(text);
    for (int line = 1; line <= kPreferenceCount; ++line) {
        const auto value = reader.next();
        if (!value) {
            errors.push_back(base::err::InputPastEnd());
            continue;
        }
        base::Status status;
        if (line == kAboutLine) {
            bool& target = home == AboutHome::Shadow ? prefs.aboutFlagShadow : prefs.aboutFlag;
            status = ToBool(*value, target);
        } else {
            std::visit(
                [&](auto member) {
                    auto& field = prefs.*member;
                    using T = std::decay_t<decltype(field)>;
                    if constexpr (std::is_same_v<T, std::int16_t>) {
                        status = ToInt16(*value, field);
                    } else if constexpr (std::is_same_v<T, bool>) {
                        status = ToBool(*value, field);
                    } else {
                        ToString(*value, field);
                    }
                },
                kLines[line - 1]);
        }
        if (status) errors.push_back(*status);
    }
    return errors;
}

std::string FormatPreferences(const PreferenceSet& prefs, AboutHome home) {
    auto boolText = [](bool b) { return std::string(b ? "#TRUE#" : "#FALSE#"); };
    std::string out;
    for (int line = 1; line <= kPreferenceCount; ++line) {
        if (line == kAboutLine) {
            out += boolText(home == AboutHome::Shadow ? prefs.aboutFlagShadow : prefs.aboutFlag);
        } else {
            std::visit(
                [&](auto member) {
                    const auto& field = prefs.*member;
                    using T = std::decay_t<decltype(field)>;
                    if constexpr (std::is_same_v<T, std::int16_t>) {
                        out += std::to_string(field);
                    } else if constexpr (std::is_same_v<T, bool>) {
                        out += boolText(field);
                    } else {
                        out += '"' + field + '"';
                    }
                },
                kLines[line - 1]);
        }
        out += "\r\n";
    }
    return out;
}

void ApplyGeometryDefaults(PreferenceSet& prefs) {
    for (const auto& g : kGeometries) {
        if (prefs.*g.width == 0) prefs.*g.width = 10000;
        if (prefs.*g.height == 0) prefs.*g.height = 8000;
        if (prefs.*g.left == 0) prefs.*g.left = 1000;
        if (prefs.*g.top == 0) prefs.*g.top = 1000;
    }
}

base::Status StoreTwips(std::int16_t& field, long value) {
    if (value < -32768 || value > 32767) return base::err::Overflow();
    field = static_cast<std::int16_t>(value);
    return std::nullopt;
}

}  // namespace ferrolund::app
