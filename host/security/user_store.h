#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/sql_session.h"

namespace refhost {

/// A user of the database.
struct User {
    std::int32_t id = 0;
    std::string name;
};

/// What it costs to hash a password: as much as a person signing in bears, or hardly anything.
enum class PasswordCost { interactive, minimal };

/// The right to give rights: at least one user keeps it.
inline constexpr const char* rightToGiveRights = "security/edit";

/// The names of all rights that the host and the add-in ask for.
std::span<const std::string_view> knownRights();

/// The users of a database, with their passwords and rights. Names are matched without regard to
/// case.
class UserStore {
public:
    explicit UserStore(SqlSession& sql, PasswordCost cost = PasswordCost::interactive);

    /// Error 457 when the name is taken, 5 when it is blank. Without a password nobody can sign in
    /// by that name.
    User create(const std::string& name, const std::optional<std::string>& password = {});
    void setPassword(std::int32_t userId, const std::string& password);
    /// The user, when the password is right. A wrong one takes as long as an unknown name.
    std::optional<User> signIn(const std::string& name, const std::string& password);

    std::optional<User> find(const std::string& name);
    std::optional<User> find(std::int32_t id);
    std::vector<User> all(); ///< By name.

    /// Error 5 for a right that nobody asks for.
    void grant(std::int32_t userId, const std::string& right);
    void grantAll(std::int32_t userId);
    /// Gives a right that a module has declared, as it is spelled there.
    void give(std::int32_t userId, const std::string& right);
    /// False when it is the right to give rights and nobody else has it: then nothing changes.
    bool revoke(std::int32_t userId, const std::string& right);
    bool hasRight(std::int32_t userId, const std::string& right);
    std::vector<std::string> rightsOf(std::int32_t userId);

private:
    std::string hashOf(const std::string& password) const;

    SqlSession& sql_;
    PasswordCost cost_;
};

} // namespace refhost
