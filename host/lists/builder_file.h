#pragma once

#include <string>
#include <vector>

#include "host/lists/list_fields.h"

namespace refhost {

/// What a list-builder file defines. What is wrong with a part leaves that part out and is told in
/// `faults`, with the file and the line; a file that cannot be read defines nothing.
struct BuilderFile {
    ListOffer offer;
    std::vector<std::string> faults;
};

/// Reads the file `path`, which messages call `shownAs`, for lists of `type`.
BuilderFile readBuilderFile(const std::string& path, const std::string& shownAs,
                            const std::string& type);

} // namespace refhost
