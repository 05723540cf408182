#pragma once
// RouteIndex: one row per installed route, as "IndexFiles\RouteIndex.csv" holds it.

#include <string>
#include <vector>

namespace ferrolund::routes {

struct RouteIndex {
    std::vector<std::string> routeName;
    std::vector<std::string> routeFolder;  // the key of a route
    std::vector<std::string> routeSlot;    // position in the folder listing when indexed
    int count() const { return static_cast<int>(routeFolder.size()); }
    void clear() {
        routeName.clear();
        routeFolder.clear();
        routeSlot.clear();
    }
};

// Reads the rows of the file's text: three comma-separated fields a row; an empty first
// field ends the data.
RouteIndex ParseRouteIndex(const std::string& fileText);

}  // namespace ferrolund::routes
