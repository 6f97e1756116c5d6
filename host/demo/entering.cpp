#include "host/demo/entering.h"

#include "automation/clock.h"

namespace refhost::demo {

extern const char* const enteringScript; // made from entering.vbs

Entering::Entering(const qmevents::Ref<qmevents::Object>& app)
{
    engine_.addObject("App", app);
    engine_.addCode(enteringScript);
}

qmevents::Value Entering::call(std::string_view procedure, std::vector<qmevents::Value> arguments)
{
    return engine_.run(procedure, arguments);
}

void Entering::on(qmevents::Date day)
{
    constexpr long long halfPastTen = 10 * 3600 + 1800;
    qmevents::Clock::pin(day.datePart().plusSeconds(halfPastTen));
}

} // namespace refhost::demo
