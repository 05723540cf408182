#include "routes/route_indexer.h"

#include <algorithm>
#include <filesystem>

#include "archives/make_batch.h"
#include "app/value_reader.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tags.h"
#include "tools/text_repair.h"

namespace ferrolund::routes {

namespace fs = std::filesystem;

const RouteIndexRule kIndexRouteProperties{
    {"English", "French", "German", "Italian", "Spanish", "Dutch", "Polish", "Russian"}, true, true, true};
const RouteIndexRule kExtractedRouteProperties{{"English", "French", "German"}, false, false, false};

namespace {

constexpr std::size_t kRowLimit = 240;

void RemoveAll(std::string& text, char c) { text.erase(std::remove(text.begin(), text.end(), c), text.end()); }

}  // namespace

std::vector<std::string> ListRouteFolders(const std::string& gameRoot) {
    std::vector<std::string> folders;
    std::error_code ec;
    for (fs::directory_iterator it(tools::HostPath(gameRoot + "\\Content\\Routes"), ec), end; !ec && it != end;
         it.increment(ec)) {
        if (it->is_directory(ec)) folders.push_back(tools::SystemPath(it->path().filename()));
    }
    std::sort(folders.begin(), folders.end(), [](const std::string& a, const std::string& b) {
        return tools::LowerCp1252(a) < tools::LowerCp1252(b);
    });
    return folders;
}

void ReadPropertiesName(const std::string& xml, const std::vector<std::string>& languages, std::string& name) {
    for (std::size_t l = 0; l < languages.size() && (l == 0 || name.empty()); ++l) {
        long pos = 1;
        tools::GetDetail(xml, pos, languages[l], name);
    }
    name = tools::FixEntitiesCopy(name);
}

std::string BuildRouteIndexText(const std::string& gameRoot, const RouteIndexRule& rule) {
    const std::string routesPath = gameRoot + "\\Content\\Routes";
    const std::vector<std::string> folders = ListRouteFolders(gameRoot);
    std::string out;
    // The name is not cleared between routes: a route whose file names none takes the
    // name of the route before it.
    std::string value;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const std::string properties = routesPath + "\\" + folders[i] + "\\RouteProperties.xml";
        if (!tools::FileExists(properties)) continue;
        ReadPropertiesName(tools::ReadTextFile(properties), rule.languages, value);
        if (value.empty() && rule.skipNameless) continue;
        std::string name = value;
        std::replace(name.begin(), name.end(), ',', '-');
        std::string row = name + "," + folders[i];
        if (rule.cutAt240) {
            RemoveAll(row, ':');
            if (row.size() + 1 + routesPath.size() > kRowLimit) row.resize(kRowLimit - routesPath.size());
            row += "," + std::to_string(i);
        } else {
            row += "," + std::to_string(i);
            RemoveAll(row, ':');
        }
        out += row + "\r\n";
    }
    return out + "\r\n";
}

RouteIndex ReloadRouteIndex(const std::string& fileText, const RouteIndexRule& rule, std::size_t arraySize) {
    RouteIndex index;
    std::size_t count = 0;
    if (rule.firstSlotEmpty && arraySize > 0) {
        index.routeName.emplace_back();
        index.routeFolder.emplace_back();
        index.routeSlot.emplace_back();
        count = 1;
    }
    const RouteIndex rows = ParseRouteIndex(fileText);
    for (int r = 0; r < rows.count() && count < arraySize; ++r, ++count) {
        index.routeName.push_back(rows.routeName[r]);
        index.routeFolder.push_back(rows.routeFolder[r]);
        index.routeSlot.push_back(rows.routeSlot[r]);
    }
    return index;
}

void IndexRouteProperties(app::AppContext& ctx) {
    ctx.currentRoutine = "IndexRouteProperties";
    if (ctx.ui) ctx.ui->busy(true);
    std::string indexFolder = ctx.appPath("IndexFiles");
    if (!tools::FolderExists(indexFolder)) tools::CreatePath(indexFolder);
    const std::string text = BuildRouteIndexText(ctx.gameRoot(), kIndexRouteProperties);
    const std::string file = ctx.appPath("IndexFiles\\RouteIndex.csv");
    tools::WriteTextFile(ctx, file, text);
    ctx.routeIndex = ReloadRouteIndex(tools::ReadTextFile(file), kIndexRouteProperties,
                                      ListRouteFolders(ctx.gameRoot()).size());
    if (ctx.ui) {
        ctx.ui->message("All RouteProperties.xml files have been indexed and\nRouteIndex.csv written to 'IndexFiles' folder",
                        base::Icon::Information);
    }
    ctx.prefs.routesIndexed = true;
    if (ctx.ui) ctx.ui->busy(false);
}

void ExtractAndIndexRoutes(app::AppContext& ctx, const RouteIndexRule& rule, bool tellOnCancel) {
    tools::BatchOutcome outcome;
    if (!archives::RunBulkExtraction(ctx, archives::BulkKind::RouteProperties, outcome)) {
        if (tellOnCancel) {
            ctx.ui->message("An Index of all RouteProperties.xml files will now\nbe compiled and written to "
                            "IndexFiles\\RouteIndex.csv",
                            base::Icon::Information);
        }
        return;
    }
    ctx.ui->busy(true);
    std::string indexFolder = ctx.appPath("IndexFiles");
    if (!tools::FolderExists(indexFolder)) tools::CreatePath(indexFolder);
    const std::string file = ctx.appPath("IndexFiles\\RouteIndex.csv");
    tools::WriteTextFile(ctx, file, BuildRouteIndexText(ctx.gameRoot(), rule));
    ctx.routeIndex = ReloadRouteIndex(tools::ReadTextFile(file), rule, ListRouteFolders(ctx.gameRoot()).size());
    ctx.ui->message("All RouteProperties.xml files have been extracted and\nRouteIndex.csv written to 'IndexFiles' folder",
                    base::Icon::Information);
    ctx.ui->busy(false);
}

bool LoadRouteIndexFile(const app::AppContext& ctx, RouteIndex& index) {
    index.clear();
    const std::string file = ctx.appPath("IndexFiles\\RouteIndex.csv");
    if (!tools::FileExists(file)) return false;
    index = ParseRouteIndex(tools::ReadTextFile(file));
    return true;
}

void getRouteProperties(app::AppContext& ctx) {
    ctx.currentRoutine = "getRouteProperties";
    ExtractAndIndexRoutes(ctx, kExtractedRouteProperties, true);
}

}  // namespace ferrolund::routes
