#pragma once

#include <vector>

#include "host/demo/row_writer.h"

namespace refhost::demo {

/// Keys of the host's lists that gifts and events refer to.
struct Codes {
    std::vector<std::int32_t> funds, campaigns, sources, assignees;
};

/// Writes the funds, campaigns, gift sources and the people whom work is given to.
Codes makeCodes(RowWriter& rows);

/// A user of the demonstration, as documented for those who try it.
struct DemoUser {
    std::string_view name, password;
    /// Libsodium's text form of the hash. A new hash would carry a new salt and make every
    /// database differ, so these are written down; the passwords are no secret.
    std::string_view hash;
    std::vector<std::string_view> rights; ///< All when empty.
};
const std::vector<DemoUser>& demoUsers();
void makeUsers(SqlSession& sql);

} // namespace refhost::demo
