// SPDX-License-Identifier: MIT
#include "notepad/page_total.h"

#include <QCoreApplication>

#include "notepad/page.h"
#include "notepad/texts.h"

namespace vemo::notepad {

QString totalText(Page& page) {
    const auto tr = [](const char* text) { return QCoreApplication::translate("Total", text); };
    const auto& answer = page.calculated().answer();
    if (!answer || answer->result.lines.size() < 2) return {};
    const LineList::Facts& facts = page.lines().facts();
    const FormattedValue* formatted = answer->result.context->grandTotalFormatted();
    const bool failed = facts.reasons > 0 || answer->result.context->isGrandTotalPartial();
    if (!formatted || !formatted->regular) return failed ? tr("No total: a line has no result") : QString();
    // Durations are added to a date that comes first; any other date begins the total anew.
    const bool datesOnly = facts.dates > 0 && facts.values > 1 && !(facts.dates == 1 && page.lines().beginsWithDate());
    return (failed || datesOnly ? tr("Total of some lines: %1") : tr("Total: %1")).arg(toQt(*formatted->regular));
}

}  // namespace vemo::notepad
