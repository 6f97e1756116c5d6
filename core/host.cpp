#include "core/host.h"

#include "core/context.h"

namespace qmevents {

Host host() { return Host(Context::current().app()); }

} // namespace qmevents
