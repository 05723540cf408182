#include "routes/route_index.h"

#include "app/value_reader.h"

namespace ferrolund::routes {

RouteIndex ParseRouteIndex(const std::string& fileText) {
    RouteIndex index;
    app::ValueReader reader(fileText);
    while (true) {
        const auto name = reader.next();
        if (!name || name->text.empty()) break;  // the closing empty line ends the data
        const auto folder = reader.next();
        const auto slot = reader.next();
        index.routeName.push_back(name->text);
        index.routeFolder.push_back(folder ? folder->text : std::string());
        index.routeSlot.push_back(slot ? slot->text : std::string());
        if (!slot) break;
    }
    return index;
}

}  // namespace ferrolund::routes
