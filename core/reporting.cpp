#include "core/reporting.h"

namespace qmevents {

void showUnexpected(const Error& failure)
{
    try {
        host().shell().errorUnexpected(failure.description());
    } catch (const Error&) {
        throw Error(failure);
    }
}

} // namespace qmevents
