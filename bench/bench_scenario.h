#pragma once
// The installation the scenario benchmarks work on: the sample with its generated
// scenario grown to a chosen size, and nothing else generated; removed when done.

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "generator/make_sample.h"

namespace ferrolund::bench {

// The generated scenario's folder below the installation.
inline constexpr const char* kGeneratedScenario =
    "\\Content\\Routes\\3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10\\Scenarios\\c4e8a1b2-9d3f-4a5e-b6c7-d8e9f0a1b2c3";

class ScenarioInstallation {
public:
    // `megabytes` of the scenario's XML. `made()` is false, after a line on stderr, when the
    // sample could not be written.
    ScenarioInstallation(const std::string& name, int megabytes)
        : root_(std::filesystem::temp_directory_path() / ("ferrolund-" + name + "-" + std::to_string(::getpid()))) {
        std::error_code error;
        std::filesystem::remove_all(root_, error);
        sample::SampleOptions options;
        options.scenarioMegabytes = megabytes;
        options.tiles = options.assets = options.stock = 0;
        sample::SampleResult result;
        if (auto failure = sample::MakeSample(root_, options, result)) {
            std::fprintf(stderr, "%s: the sample could not be made: %s\n", name.c_str(), failure->c_str());
            return;
        }
        made_ = true;
    }
    ~ScenarioInstallation() {
        std::error_code error;
        std::filesystem::remove_all(root_, error);
    }
    ScenarioInstallation(const ScenarioInstallation&) = delete;
    ScenarioInstallation& operator=(const ScenarioInstallation&) = delete;

    bool made() const { return made_; }
    const std::filesystem::path& root() const { return root_; }
    // A context on the installation: the game, and the program's folder in it with the
    // shipped templates and languages of the build beside the benchmark.
    void bind(app::AppContext& ctx, base::Ui* ui) const {
        ctx.prefs.gameRoot = root_.string();
        ctx.appRoot = (root_ / "app").string();
        ctx.ui = ui;
        std::error_code error;
        const auto shipped = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
        std::filesystem::create_directories(root_ / "app", error);
        for (const char* data : {"Templates", "Language"}) {
            std::filesystem::copy(shipped / data, root_ / "app" / data, std::filesystem::copy_options::recursive, error);
        }
    }
    std::string scenarioFolder() const { return root_.string() + kGeneratedScenario; }

private:
    std::filesystem::path root_;
    bool made_ = false;
};

}  // namespace ferrolund::bench
