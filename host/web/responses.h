#pragma once

#include <string>

#include <httplib.h>

#include "host/web/page_files.h"

namespace refhost {

/// What every answer tells the browser to refuse: frames of others, foreign scripts, guessed types.
const httplib::Headers& securityHeaders();

void sendFile(httplib::Response& response, int status, PageFile file);
/// `text` is JSON.
void sendJson(httplib::Response& response, int status, std::string text);
/// {"error":reason}
void sendFailure(httplib::Response& response, int status, const std::string& reason);

} // namespace refhost
