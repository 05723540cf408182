#include "app/app_context.h"

#include "app/error_log.h"
#include "archives/batch_7za.h"

namespace ferrolund::app {

AppContext::AppContext() { archives::ServeBatchArchives(); }

std::string AppContext::langText(int n, const std::string& fallback, const std::string& module) {
    if (auto text = lang.text(n)) return *text;
    report(base::err::SubscriptOutOfRange(), module);
    return fallback;
}

void AppContext::report(const base::RunError& error, const std::string& module) {
    ReportUnexpectedError(*this, error.description, currentRoutine, error.number, module);
}

}  // namespace ferrolund::app
