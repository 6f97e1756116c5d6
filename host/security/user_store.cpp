#include "host/security/user_store.h"

#include <stdexcept>

#include <sodium.h>

#include "automation/error.h"
#include "automation/text.h"

namespace refhost {
namespace {

using qmevents::Error;
using qmevents::ErrorNumber;

constexpr std::string_view rights[] = {"events/view",   "events/edit",    "events/delete",
                                       "mailings/send", "donations/view", "events/settings",
                                       "settings/edit", rightToGiveRights};

User userOf(const HostRow& row)
{
    return {static_cast<std::int32_t>(std::get<std::int64_t>(row[0])),
            std::get<std::string>(row[1])};
}

std::optional<User> firstOf(const std::vector<HostRow>& rows)
{
    if (rows.empty()) return std::nullopt;
    return userOf(rows.front());
}

std::int64_t number(std::int32_t id) { return id; }

} // namespace

std::span<const std::string_view> knownRights() { return rights; }

UserStore::UserStore(SqlSession& sql, PasswordCost cost) : sql_(sql), cost_(cost)
{
    if (sodium_init() < 0) throw std::runtime_error("the cryptographic library does not start");
}

std::string UserStore::hashOf(const std::string& password) const
{
    const bool minimal = cost_ == PasswordCost::minimal;
    char hash[crypto_pwhash_STRBYTES];
    const auto operations =
        minimal ? crypto_pwhash_OPSLIMIT_MIN : crypto_pwhash_OPSLIMIT_INTERACTIVE;
    const auto memory = minimal ? crypto_pwhash_MEMLIMIT_MIN : crypto_pwhash_MEMLIMIT_INTERACTIVE;
    if (crypto_pwhash_str(hash, password.data(), password.size(), operations, memory) != 0) {
        throw Error(ErrorNumber::outOfMemory);
    }
    return hash;
}

User UserStore::create(const std::string& name, const std::optional<std::string>& password)
{
    if (qmevents::text::trim(name).empty()) {
        throw Error::with(ErrorNumber::invalidCall, "a user needs a name");
    }
    if (find(name)) throw Error::with(ErrorNumber::duplicateKey, name);
    const HostValue hash = password ? HostValue(hashOf(*password)) : HostValue(nullptr);
    sql_.hostExecute("INSERT INTO host_users (name, password) VALUES (?, ?)", {name, hash});
    return find(name).value();
}

void UserStore::setPassword(std::int32_t userId, const std::string& password)
{
    sql_.hostExecute("UPDATE host_users SET password = ? WHERE id = ?",
                     {hashOf(password), number(userId)});
}

std::optional<User> UserStore::signIn(const std::string& name, const std::string& password)
{
    const auto rows =
        sql_.hostQuery("SELECT id, name, password FROM host_users WHERE name = ?", {name});
    const bool known = !rows.empty() && std::holds_alternative<std::string>(rows.front()[2]);
    if (!known) {
        hashOf(password); // takes as long, so that time does not tell who has an account
        return std::nullopt;
    }
    const auto& hash = std::get<std::string>(rows.front()[2]);
    if (crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) != 0) {
        return std::nullopt;
    }
    return userOf(rows.front());
}

std::optional<User> UserStore::find(const std::string& name)
{
    return firstOf(sql_.hostQuery("SELECT id, name FROM host_users WHERE name = ?", {name}));
}

std::optional<User> UserStore::find(std::int32_t id)
{
    return firstOf(sql_.hostQuery("SELECT id, name FROM host_users WHERE id = ?", {number(id)}));
}

std::vector<User> UserStore::all()
{
    std::vector<User> users;
    for (const HostRow& row : sql_.hostQuery("SELECT id, name FROM host_users ORDER BY name")) {
        users.push_back(userOf(row));
    }
    return users;
}

void UserStore::grant(std::int32_t userId, const std::string& right)
{
    for (const std::string_view known : rights) {
        if (!qmevents::text::sameName(known, right)) continue;
        return give(userId, std::string(known));
    }
    throw Error::with(ErrorNumber::invalidCall, "there is no right called " + right);
}

void UserStore::grantAll(std::int32_t userId)
{
    for (const std::string_view right : rights) grant(userId, std::string(right));
}

void UserStore::give(std::int32_t userId, const std::string& right)
{
    sql_.hostExecute("INSERT OR IGNORE INTO host_user_rights (user_id, name) VALUES (?, ?)",
                     {number(userId), right});
}

bool UserStore::revoke(std::int32_t userId, const std::string& right)
{
    // One statement, so that two users who take it from each other cannot both succeed.
    sql_.hostExecute("DELETE FROM host_user_rights WHERE user_id = ?1 AND name = ?2 AND "
                     "(name <> ?3 OR EXISTS (SELECT 1 FROM host_user_rights other "
                     "WHERE other.name = ?3 AND other.user_id <> ?1))",
                     {number(userId), right, std::string(rightToGiveRights)});
    return !hasRight(userId, right);
}

bool UserStore::hasRight(std::int32_t userId, const std::string& right)
{
    return !sql_.hostQuery("SELECT 1 FROM host_user_rights WHERE user_id = ? AND name = ?",
                           {number(userId), right})
                .empty();
}

std::vector<std::string> UserStore::rightsOf(std::int32_t userId)
{
    std::vector<std::string> names;
    for (const HostRow& row :
         sql_.hostQuery("SELECT name FROM host_user_rights WHERE user_id = ? ORDER BY name",
                        {number(userId)})) {
        names.push_back(std::get<std::string>(row[0]));
    }
    return names;
}

} // namespace refhost
