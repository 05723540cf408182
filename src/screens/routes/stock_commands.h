#pragma once
// The stock commands of the route browser: the scenarios of all routes, the items of the
// selected scenarios, the stock lists of a route and of all routes, the wagon numbers,
// the missing stock screen and "Find loco in routes".

namespace ferrolund::screens {

class frmDelRoute;

// Adds the commands to the screen, after those it has.
void AddStockCommands(frmDelRoute& form);

}  // namespace ferrolund::screens
