#include "consists/named_consist.h"

#include "scenarios/scenario_reader.h"
#include "tools/files.h"
#include "tools/serz_convert.h"
#include "tools/text_repair.h"

namespace ferrolund::consists {

namespace {

// The consist's row as the Scenario Editor reads it; false when there is no such consist.
bool ReadScenarioConsist(std::string_view scenarioXml, int consist, std::string_view languageTag,
                         scenarios::ConsistRow& row) {
    if (consist < 0) return false;
    const std::vector<long> bounds = scenarios::ConsistBoundaries(scenarioXml);
    const auto k = static_cast<std::size_t>(consist);
    if (k + 1 >= bounds.size()) return false;
    row = scenarios::ReadConsistBlock(scenarioXml, bounds[k], bounds[k + 1], languageTag);
    return true;
}

}  // namespace

std::vector<TemplateRow> ScenarioConsistRows(std::string_view scenarioXml, int consist, const ConsistIdentity& identity,
                                             std::string_view languageTag) {
    std::vector<TemplateRow> rows;
    scenarios::ConsistRow read;
    if (!ReadScenarioConsist(scenarioXml, consist, languageTag, read)) return rows;
    for (const scenarios::VehicleRow& vehicle : read.vehicles) {
        if (vehicle.name.empty()) break;
        assets::AssetRow stock;
        stock.provider = vehicle.provider;
        stock.product = vehicle.product;
        stock.path = vehicle.blueprintID;
        TemplateRow row = EntryFor(stock, identity);
        row.flipped = vehicle.flipped;
        rows.push_back(std::move(row));
    }
    return rows;
}

SaveResult SaveNamedConsist(app::AppContext& ctx, std::string_view scenarioXml, int consist) {
    scenarios::ConsistRow read;
    if (!ReadScenarioConsist(scenarioXml, consist, ctx.languageTag(), read)) {
        ctx.ui->message(kNoConsistSelectedMessage, base::Icon::Exclamation);
        return {};
    }
    const std::optional<std::string> typed =
        ctx.ui->input(kNameTitle, kNamePrompt + tools::FixEntitiesCopy(read.serviceName), "");
    if (!typed) return {};
    const std::vector<TemplateRow> rows =
        ScenarioConsistRows(scenarioXml, consist, NewConsistIdentity(FileFormName(*typed)), ctx.languageTag());
    if (rows.empty()) {
        ctx.ui->message(kNoVehiclesMessage, base::Icon::Exclamation);
        return {};
    }
    TemplateTexts texts;
    if (base::Status failed = ReadTemplateTexts(ctx, texts)) {
        ctx.ui->message(std::string(kNotWrittenMessage) + "\n\n" + failed->description, base::Icon::Exclamation);
        return {};
    }
    const std::string target = ConsistTemplatesPath(ctx);
    std::string existing;
    const bool exists = tools::FileExists(target);
    std::string xml;
    if ((exists && tools::SerzReadXml(ctx, target, existing)) ||
        !WithConsistAdded(exists ? &existing : nullptr, rows, texts, xml)) {
        ctx.ui->message(kInvalidFileMessage, base::Icon::Critical);
        return {};
    }
    return WriteConsistTemplates(ctx, xml);
}

}  // namespace ferrolund::consists
