#pragma once
// The plan (sources/plan.txt) says what the sample holds, one output a line, fields
// separated by tabs:
//   set       name=value ...                  names known to every later line
//   text      TARGET  SOURCE  name=value ...  a text file (XML, curves, scripts), CR LF
//   bin       TARGET  SOURCE  name=value ...  the source compiled to the game's binary form
//   texture   TARGET  FORMAT  WIDTH  HEIGHT  MIPS  name=value ...
//   bytes     TARGET  SIZE  [prefix=TEXT]     made-up content (sounds, compiled scripts)
//   md5       TARGET                          TARGET.MD5 beside the file just written
//   archive   TARGET / end                    what stands between goes into that .ap
//   assets    FOLDER  COUNT                   COUNT generated scenery blueprints
//   tiles     ROUTE  COUNT  name=value ...    COUNT generated scenery tiles using them
//   stock     FOLDER  COUNT                   COUNT generated assets of every kind the asset
//                                             list tells apart, some broken, under
//                                             Assets\PROVIDER (see stock.cpp)
//   scenario  FOLDER  MEGABYTES  name=value   a scenario folder whose Scenario.bin holds
//                                             at least MEGABYTES of XML in consists of
//                                             every kind (see scenario_sample.cpp), with
//                                             its properties and a CurrentSave.bin
// The counts and the size can be changed by the options.

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "generator/make_sample.h"
#include "generator/sample_writer.h"

namespace ferrolund::sample {

// A Provider, Product, BlueprintID triple met in a written file.
struct Reference {
    std::string provider, product, blueprintId;
    std::string usedBy;  // the first file that names it (an archive's member: archive|member)
};

class PlanRunner {
public:
    PlanRunner(const SourceSet& sources, SampleWriter& writer, const SampleOptions& options, SampleResult& result);

    Failure Run();

    const std::vector<Reference>& References() const { return references_; }
    struct Described {
        std::string kind;  // a scenario's ScenarioClass
        std::string name;  // the first language that has a text, entities resolved
    };
    // Scenario folder (system path) to its class and name.
    const std::map<std::string, Described>& Scenarios() const { return scenarios_; }
    // Route folder name to its name, as its RouteProperties.xml gives it.
    const std::map<std::string, std::string>& RouteNames() const { return routeNames_; }
    int AssetCount() const { return assetCount_; }
    // A generated asset and what the asset list should show for it.
    struct StockItem {
        std::string path;   // below the installation, as written
        std::string kind;   // engine, wagon, coach, tender, scenery, preload, loft, track, reskin, broken, empty
        std::string category, inScene, classWord, name;
    };
    const std::vector<StockItem>& Stock() const { return stock_; }
    int TileCount() const { return tileCount_; }

private:
    Failure Line(const std::vector<std::string>& fields);
    // `keepBytes` below the binary's size writes the binary cut off there.
    Failure Produce(const std::string& target, const std::string& source, const Vars& vars, bool compile,
                    std::size_t keepBytes = static_cast<std::size_t>(-1));
    Failure Texture(const std::vector<std::string>& fields, const Vars& vars);
    Failure Bytes(const std::string& target, const std::string& size, const Vars& vars);
    Failure Assets(const std::string& folder, int count);
    Failure Tiles(const std::string& route, int count, const Vars& vars);
    Failure MakeStock(const std::string& folder, int count);
    Failure MakeScenario(const std::string& folder, int megabytes, const Vars& vars);
    Failure Put(const std::string& target, std::string bytes);
    void Scan(const std::string& target, const std::string& text);

    const SourceSet& sources_;
    SampleWriter& writer_;
    const SampleOptions& options_;
    SampleResult& result_;
    Vars globals_;
    std::string lastTarget_, lastBytes_;
    std::string assetFolder_, assetProvider_, assetProduct_;
    int assetCount_ = 0;
    int tileCount_ = 0;
    std::vector<Reference> references_;
    std::vector<StockItem> stock_;
    std::map<std::string, std::size_t> referenceIndex_;
    std::map<std::string, Described> scenarios_;
    std::map<std::string, std::string> routeNames_;
};

}  // namespace ferrolund::sample
