#pragma once

#include <chrono>
#include <memory>

#include <httplib.h>

#include "host/web/browser_session.h"

namespace refhost {

/// Answers with a stream of what the page `view` is told, which ends after `length`; the browser
/// then asks again. `counted` is kept as long as the stream.
void streamEvents(const httplib::Request& request, httplib::Response& response,
                  const std::shared_ptr<BrowserSession>& session, const std::string& view,
                  std::chrono::milliseconds length, std::shared_ptr<void> counted);

} // namespace refhost
