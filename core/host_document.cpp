#include "core/host_document.h"

#include "automation/error.h"

namespace qmevents {

Transaction::~Transaction()
{
    if (!begun_) return;
    try {
        document_.rollbackTrans();
    } catch (const Error&) {
        // The failure that led here is on its way to the user; a database that cannot even roll
        // back does so when it is next opened.
    }
}

} // namespace qmevents
