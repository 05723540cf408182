#include "services/scan_path.h"
#include "tools/text_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::services {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

// Everything one scan raised, in order.
struct Recorder {
    struct Event {
        bool folder;
        std::string name;
        std::string path;
    };
    std::vector<Event> events;
    std::vector<ScanDetails> details;

    void Attach(cScanPath& scan) {
        scan.DirMatch = [this](const std::string& n, const std::string& p) { events.push_back({true, n, p}); };
        scan.FileMatch = [this](const std::string& n, const std::string& p) { events.push_back({false, n, p}); };
        scan.DirMatchEx = [this](const ScanDetails& d, const std::string& n, const std::string& p) {
            events.push_back({true, n, p});
            details.push_back(d);
        };
        scan.FileMatchEx = [this](const ScanDetails& d, const std::string& n, const std::string& p) {
            events.push_back({false, n, p});
            details.push_back(d);
        };
    }
    Names Files() const {
        Names names;
        for (const auto& e : events) {
            if (!e.folder) names.insert(e.name);
        }
        return names;
    }
};

// A flat folder of the given names, each file holding its name.
void Flat(const testing::TempFolder& folder, std::initializer_list<const char*> names) {
    for (const char* name : names) folder.write(name, name);
}

Names ScanFlat(const testing::TempFolder& folder, const std::string& filter, bool wildcards,
               const std::function<void(cScanPath&)>& setUp = {}) {
    cScanPath scan;
    scan.Filter(filter);
    if (setUp) setUp(scan);
    Recorder recorder;
    recorder.Attach(scan);
    std::string path = folder.system();
    scan.StartScan(path, false, false, wildcards, false);
    return recorder.Files();
}

TEST(cScanPath, FilterWithAndWithoutWildcards) {
    testing::TempFolder folder;
    Flat(folder, {"x.AP", "MainContent.ap", "mAINcONTENT.AP", "a.bin", "b.BIN", "x.in", "y.n", "c.txt", "noext",
                  "d.binx"});
    struct Case {
        const char* filter;
        bool wildcards;
        Names expected;
    };
    const Case cases[] = {
        {"*.ap", true, {"x.AP", "MainContent.ap", "mAINcONTENT.AP"}},
        {"MainContent.ap", true, {"MainContent.ap", "mAINcONTENT.AP"}},
        {"*.BIN;*.txt", true, {"a.bin", "b.BIN", "c.txt"}},
        {"?.bin", true, {"a.bin", "b.BIN"}},
        // Without wildcards the extension plus ';' is looked for anywhere in the filter.
        {"bin", false, {"a.bin", "b.BIN", "x.in", "y.n"}},
        {"txt;ap", false, {"c.txt", "x.AP", "MainContent.ap", "mAINcONTENT.AP"}},
        {"", false, {"x.AP", "MainContent.ap", "mAINcONTENT.AP", "a.bin", "b.BIN", "x.in", "y.n", "c.txt", "noext", "d.binx"}},
        {"*.*", true, {"x.AP", "MainContent.ap", "mAINcONTENT.AP", "a.bin", "b.BIN", "x.in", "y.n", "c.txt", "noext", "d.binx"}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ScanFlat(folder, c.filter, c.wildcards), c.expected) << c.filter << (c.wildcards ? " with" : " without");
    }
}

TEST(cScanPath, FilterIsStoredTrimmedAndReadBackWithoutItsSemicolon) {
    testing::TempFolder folder;
    cScanPath scan;
    scan.Filter("  bin;txt  ");
    EXPECT_EQ(scan.Filter(), "bin;txt");
    std::string path = folder.system();
    scan.StartScan(path, false, false, false, false);
    EXPECT_EQ(scan.Filter(), "BIN;TXT");
    EXPECT_EQ(path, folder.system() + "\\") << "the caller's path gets its backslash";
}

TEST(cScanPath, AttributeTests) {
    testing::TempFolder folder;
    Flat(folder, {"plain.bin", "locked.bin", ".hidden.bin"});
    fs::permissions(folder.path() / "locked.bin", fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    struct Case {
        const char* what;
        std::function<void(cScanPath&)> setUp;
        Names expected;
    };
    const Case cases[] = {
        {"defaults", {}, {"plain.bin", "locked.bin"}},
        {"hidden allowed", [](cScanPath& s) { s.Hidden = true; }, {"plain.bin", "locked.bin", ".hidden.bin"}},
        {"read-only refused", [](cScanPath& s) { s.ReadOnly = false; }, {"plain.bin"}},
        {"normal refused", [](cScanPath& s) { s.Normal = false; }, {"locked.bin"}},
        {"archive and system allowed change nothing", [](cScanPath& s) { s.Archive = s.System = true; },
         {"plain.bin", "locked.bin"}},
    };
    for (const auto& c : cases) EXPECT_EQ(ScanFlat(folder, "", false, c.setUp), c.expected) << c.what;
}

TEST(cScanPath, SizeAndDateBounds) {
    testing::TempFolder folder;
    for (const auto& [name, size] : std::map<std::string, std::size_t>{{"s0", 0}, {"s10", 10}, {"s100", 100}, {"s1000", 1000}}) {
        folder.write(name + ".bin", std::string(size, 'x'));
    }
    const auto year = [](int y) {
        return std::chrono::sys_days(std::chrono::year(y) / 1 / 1);
    };
    const auto fileTime = [&](int y) {
        return fs::file_time_type::clock::from_sys(std::chrono::system_clock::time_point(year(y)));
    };
    fs::last_write_time(folder.path() / "s0.bin", fileTime(2001));
    fs::last_write_time(folder.path() / "s10.bin", fileTime(2005));
    fs::last_write_time(folder.path() / "s100.bin", fileTime(2020));
    fs::last_write_time(folder.path() / "s1000.bin", fileTime(2021));
    struct Case {
        const char* what;
        std::function<void(cScanPath&)> setUp;
        Names expected;
    };
    const Case cases[] = {
        {"minimum", [](cScanPath& s) { s.MinimumSize = 10; }, {"s10.bin", "s100.bin", "s1000.bin"}},
        {"maximum", [](cScanPath& s) { s.MaximumSize = 100; }, {"s0.bin", "s10.bin", "s100.bin"}},
        {"both", [](cScanPath& s) { s.MinimumSize = 10, s.MaximumSize = 100; }, {"s10.bin", "s100.bin"}},
        {"below 1 is no bound", [](cScanPath& s) { s.MinimumSize = 0, s.MaximumSize = -5; },
         {"s0.bin", "s10.bin", "s100.bin", "s1000.bin"}},
        {"from", [&](cScanPath& s) { s.FromDate = year(2005); }, {"s10.bin", "s100.bin", "s1000.bin"}},
        {"to", [&](cScanPath& s) { s.ToDate = year(2020); }, {"s0.bin", "s10.bin", "s100.bin"}},
        {"between", [&](cScanPath& s) { s.FromDate = year(2002), s.ToDate = year(2020); }, {"s10.bin", "s100.bin"}},
        {"creation time", [&](cScanPath& s) { s.DateType = 1, s.ToDate = year(2010); }, {}},
    };
    for (const auto& c : cases) EXPECT_EQ(ScanFlat(folder, "bin", false, c.setUp), c.expected) << c.what;
}

// root: a.bin, B.bin, Sub1/{x.bin, Deep/{y.bin}}, Sub2/{z.bin}
void Tree(const testing::TempFolder& folder) {
    for (const char* name : {"a.bin", "B.bin", "Sub1/x.bin", "Sub1/Deep/y.bin", "Sub2/z.bin"}) folder.write(name, "x");
}

TEST(cScanPath, QueueWalkIsBreadthFirst) {
    testing::TempFolder folder;
    Tree(folder);
    cScanPath scan;
    scan.Folder = true;
    Recorder recorder;
    recorder.Attach(scan);
    std::string path = folder.system();
    scan.StartScan(path, true, false, false, false);
    const auto depth = [&](const std::string& p) { return std::count(p.begin() + static_cast<long>(path.size()), p.end(), '\\'); };
    std::vector<long> depths;
    Names all;
    for (const auto& e : recorder.events) {
        depths.push_back(depth(e.path));
        all.insert(e.path.substr(path.size()) + e.name);
    }
    EXPECT_TRUE(std::is_sorted(depths.begin(), depths.end())) << "a folder's entries come before its sub-folders'";
    EXPECT_EQ(all, (Names{"a.bin", "B.bin", "Sub1", "Sub2", "Sub1\\x.bin", "Sub1\\Deep", "Sub2\\z.bin", "Sub1\\Deep\\y.bin"}));
    EXPECT_EQ(scan.DirCount(), 3);
    EXPECT_EQ(scan.FileCount(), 5);
}

TEST(cScanPath, FoldersThatDoNotPassAreNotWalked) {
    testing::TempFolder folder;
    Tree(folder);
    cScanPath scan;  // Folder is false
    Recorder recorder;
    recorder.Attach(scan);
    std::string path = folder.system();
    scan.StartScan(path, true, false, false, false);
    EXPECT_EQ(recorder.Files(), (Names{"a.bin", "B.bin"}));
    EXPECT_EQ(scan.DirCount(), 0);
}

TEST(cScanPath, SortedWalkGivesFilesThenFoldersByNameDepthFirst) {
    testing::TempFolder folder;
    Tree(folder);
    folder.write("aFolder/p.bin", "x");
    for (bool recurse : {true, false}) {
        cScanPath scan;
        scan.Folder = true;
        Recorder recorder;
        recorder.Attach(scan);
        std::string path = folder.system();
        scan.StartScan(path, recurse, true, false, false);
        std::vector<std::string> order;
        for (const auto& e : recorder.events) order.push_back(e.path.substr(path.size()) + e.name);
        const std::vector<std::string> expected =
            recurse ? std::vector<std::string>{"a.bin", "B.bin", "aFolder", "aFolder\\p.bin", "Sub1", "Sub1\\x.bin",
                                               "Sub1\\Deep", "Sub1\\Deep\\y.bin", "Sub2", "Sub2\\z.bin"}
                    : std::vector<std::string>{"a.bin", "B.bin", "aFolder", "Sub1", "Sub2"};
        EXPECT_EQ(order, expected);
        // The sorted walk counts a folder only when it walks into it.
        EXPECT_EQ(scan.DirCount(), recurse ? 4 : 0);
        EXPECT_EQ(scan.FileCount(), recurse ? 6 : 2);
    }
}

TEST(cScanPath, StopFromAHandlerLetsUpToNineMoreEventsThrough) {
    testing::TempFolder folder;
    for (int i = 0; i < 50; ++i) folder.write("f" + std::to_string(i) + ".bin", "x");
    folder.write("Later/more.bin", "x");
    for (bool sorted : {false, true}) {
        for (int stopAt : {1, 4, 10}) {
            testing::ScriptedUi ui;
            cScanPath scan(&ui);
            scan.Folder = true;
            int events = 0;
            scan.FileMatch = [&](const std::string&, const std::string&) {
                if (++events == stopAt) scan.StopScan();
            };
            std::string path = folder.system();
            scan.StartScan(path, true, sorted, false, false);
            // The reading of a folder stops at the next tenth entry; the sorted walk
            // then raises nothing more at all.
            EXPECT_EQ(events, sorted ? stopAt : 10) << (sorted ? "sorted, " : "queue, ") << stopAt;
            EXPECT_EQ(ui.pumps, sorted ? 5 : 1);
        }
    }
}

TEST(cScanPath, PumpsEveryTenthEntryOfEachFolder) {
    testing::TempFolder folder;
    for (int i = 0; i < 25; ++i) folder.write("f" + std::to_string(i) + ".txt", "x");
    for (int i = 0; i < 14; ++i) folder.write("Sub/g" + std::to_string(i) + ".txt", "x");
    testing::ScriptedUi ui;
    cScanPath scan(&ui);
    scan.Folder = true;
    scan.Filter("bin");  // nothing matches, yet every entry is looked at
    std::string path = folder.system();
    scan.StartScan(path, true, false, false, false);
    EXPECT_EQ(ui.pumps, 2 + 1);  // 26 entries at the top, 14 below
    EXPECT_EQ(scan.FileCount(), 0);
    EXPECT_EQ(scan.DirCount(), 1);
}

TEST(cScanPath, DetailedEventsAndTheRawEntry) {
    testing::TempFolder folder;
    folder.write("Stra\xC3\x9F" "e.bin", std::string(1234, 'x'));
    fs::create_directory(folder.path() / "Dir");
    for (bool sorted : {false, true}) {
        cScanPath scan;
        scan.Folder = true;
        Recorder recorder;
        recorder.Attach(scan);
        std::vector<std::string> rawNames;
        scan.FileMatchEx = [&](const ScanDetails& d, const std::string& n, const std::string& p) {
            recorder.events.push_back({false, n, p});
            recorder.details.push_back(d);
            ASSERT_NE(scan.WFDPointer(), nullptr);
            rawNames.push_back(scan.WFDPointer()->name);
        };
        std::string path = folder.system();
        scan.StartScan(path, false, sorted, false, true);
        EXPECT_EQ(scan.WFDPointer(), nullptr);
        ASSERT_EQ(recorder.events.size(), 2u);
        for (std::size_t i = 0; i < 2; ++i) {
            const auto& e = recorder.events[i];
            const auto& d = recorder.details[i];
            if (e.folder) {
                EXPECT_EQ(e.name, "Dir");
                EXPECT_EQ(d.attributes, kAttrDirectory);
            } else {
                EXPECT_EQ(e.name, "Stra\xC3\x9F" "e.bin") << "names come as the disk holds them";
                EXPECT_EQ(d.attributes, kAttrNormal);
                EXPECT_EQ(d.size, 1234u);
            }
            EXPECT_EQ(e.path, path);
            for (const std::string* t : {&d.creationTime, &d.lastAccessTime, &d.lastWriteTime}) {
                ASSERT_EQ(t->size(), 16u) << *t;
                EXPECT_EQ((*t)[4], '-');
                EXPECT_EQ((*t)[10], ' ');
                EXPECT_EQ((*t)[13], ':');
            }
        }
        EXPECT_EQ(rawNames, std::vector<std::string>{"Stra\xC3\x9F" "e.bin"});
    }
}

TEST(cScanPath, MissingPathGivesNothing) {
    testing::TempFolder folder;
    for (bool sorted : {false, true}) {
        cScanPath scan;
        Recorder recorder;
        recorder.Attach(scan);
        std::string path = folder.system() + "\\nowhere";
        scan.StartScan(path, true, sorted, false, false);
        EXPECT_TRUE(recorder.events.empty());
        EXPECT_EQ(scan.DirCount() + scan.FileCount(), 0);
    }
}

TEST(cScanPath, CapStopsAFolderPast60000Entries) {
    testing::TempFolder folder;
    const fs::path big = folder.path() / "Big";
    fs::create_directory(big);
    for (int i = 0; i < 60015; ++i) {
        std::FILE* f = std::fopen((big / ("e" + std::to_string(i))).c_str(), "w");
        ASSERT_NE(f, nullptr);
        std::fclose(f);
    }
    for (bool cap : {true, false}) {
        ScanCapOn = cap;
        cScanPath scan;
        long events = 0;
        scan.FileMatch = [&](const std::string&, const std::string&) { ++events; };
        std::string path = folder.system() + "\\big";
        scan.StartScan(path, false, false, false, false);
        ScanCapOn = false;
        EXPECT_EQ(events, cap ? 60010 : 60015) << (cap ? "capped" : "free");
    }
}

TEST(WildcardMatch, Table) {
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"*.AP", "X.AP", true},   {"*.AP", "X.APX", false}, {"?.BIN", "A.BIN", true}, {"?.BIN", "AB.BIN", false},
        {"*", "", true},          {"A*B*C", "AXXBYYC", true}, {"A*B*C", "AXXBYY", false}, {"*.*", "NOEXT", false},
    };
    for (const auto& [mask, name, expected] : cases) EXPECT_EQ(tools::WildcardMatch(mask, name), expected) << mask << " " << name;
}

}  // namespace
}  // namespace ferrolund::services
