#pragma once
// The track marker index of a route: AppRoot\Index\<route id>.txt, one line per track
// ribbon that carries markers or portals: the ribbon's DevString, a comma, and the names
// joined by " - ". It is made once per route from Networks\Tracks.bin and read by the
// Scenario Details screen to name where a consist starts.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "base/run_error.h"

namespace ferrolund::scenarios {

inline constexpr const char* kIndexTracksQuestion =
    "About to index this route's tracks.bin file.\n"
    "This may take some time.";

// The two tables of the index, in file order.
struct MarkerIndex {
    std::vector<std::string> devStrings;
    std::vector<std::string> markers;

    // The markers of a ribbon (DevString compared without regard to case); false when
    // the ribbon is not in the index.
    bool find(std::string_view devString, std::string& names) const;
};

// AppRoot\Index\<route id>.txt
std::string MarkerIndexPath(const base::RunContext& ctx, const std::string& routeId);

// The index lines (CR LF ends) of a route's Tracks XML, parsed as a tree. `ctx` is asked
// to pump events and its abort flag is tested once per ribbon; an abort or broken XML is
// an error value, with `lines` empty.
base::Status MarkerLinesFromXml(base::RunContext& ctx, std::string_view tracksXml, std::string& lines);

// The tables of an index text: each line cut at its first comma.
MarkerIndex ParseMarkerIndex(std::string_view text);

// The route's index, made first when it is missing: the user is asked (OK/Cancel), and
// Cancel gives `cancelled` true with nothing made. The route's Tracks.bin is converted to
// AppRoot\TempFiles\Tracks.xml. A missing or unreadable Tracks.bin, or an abort, leaves
// no index file and gives an error value. `routeId` is the route's folder name.
base::Status LoadMarkerIndex(app::AppContext& ctx, const std::string& routeId, MarkerIndex& index,
                             bool& cancelled);

}  // namespace ferrolund::scenarios
