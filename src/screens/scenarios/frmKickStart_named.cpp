// The Scenario Editor's "Save as Named Consist".
#include <QTableWidget>

#include "consists/named_consist.h"
#include "screens/scenarios/frmKickStart.h"

namespace ferrolund::screens {

void frmKickStart::saveNamedConsist() {
    // The consist is counted by its row in the list, as the other row-counting commands do.
    const bool chosen = consists_->selectionModel()->hasSelection();
    consists::SaveNamedConsist(ctx_, texts_.scenarioXml, chosen ? consists_->currentRow() : -1);
}

}  // namespace ferrolund::screens
