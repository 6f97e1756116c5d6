#include "host/demo/codes.h"

#include <span>

#include "host/security/user_store.h"

namespace refhost::demo {
namespace {

struct Code {
    std::string_view name, description;
};

constexpr Code funds[] = {{"General Fund", "Where it is needed most."},
                          {"Food Programme", "Meals for families, all year."},
                          {"Music Lessons", "Instruments and teachers for children."},
                          {"Building Fund", "Roof, kitchen and ramp of the Community Centre."},
                          {"Emergency Relief", "Kept for floods and fires."}};

constexpr Code campaigns[] = {{"Annual Appeal 2023", ""},
                              {"Annual Appeal 2024", ""},
                              {"Annual Appeal 2025", ""},
                              {"Annual Appeal 2026", ""},
                              {"A Roof by Winter", "For the Community Centre, 2024 to 2026."},
                              {"Events", "All that is raised at events."}};

constexpr Code sources[] = {{"Direct Mail", ""},  {"Web Page", ""},
                            {"Telephone", ""},    {"At an Event", ""},
                            {"Board Member", ""}, {"Newspaper", "Advertisements and articles."},
                            {"In Memory", ""}};

std::int32_t insertCode(RowWriter& rows, std::string_view table, const Code& code, int order)
{
    return rows.insert(table, {text("value", code.name), text("description", code.description),
                               yesNo("visible", true), key("order", order)});
}

std::vector<std::int32_t> insertCodes(RowWriter& rows, std::string_view table,
                                      std::span<const Code> codes)
{
    std::vector<std::int32_t> ids;
    for (const Code& code : codes) {
        ids.push_back(insertCode(rows, table, code, static_cast<int>(ids.size()) + 1));
    }
    return ids;
}

std::int32_t userId(RowWriter& rows, std::string_view name)
{
    const auto user = UserStore(rows.sql()).find(std::string(name));
    return user ? user->id : 0;
}

} // namespace

Codes makeCodes(RowWriter& rows)
{
    Codes codes;
    codes.funds = insertCodes(rows, "donor_funds", funds);
    codes.campaigns = insertCodes(rows, "donor_campaigns", campaigns);
    codes.sources = insertCodes(rows, "donor_list_gifts_sources", sources);
    for (const std::string_view name : {"Anna", "Ben", "Front desk"}) {
        codes.assignees.push_back(rows.insert(
            "donor_list_assignedto", {text("value", name), yesNo("visible", true),
                                      key("order", static_cast<int>(codes.assignees.size()) + 1),
                                      key("FKuserId", userId(rows, name))}));
    }
    return codes;
}

const std::vector<DemoUser>& demoUsers()
{
    static const std::vector<DemoUser> users = {
        {.name = "anna",
         .password = "harbour lights",
         .hash = "$argon2id$v=19$m=65536,t=2,p=1$TAL20jbxh6EjcMuNA48M6g$Vy5VSq"
                 "NRJDWsHYO5CYio0/L8u7HXTo+BsKDjcgehyPc",
         .rights = {}},
        {.name = "ben",
         .password = "paper boats",
         .hash = "$argon2id$v=19$m=65536,t=2,p=1$8OZ80tH3cexJ01IzQtSPRA$O/piQq"
                 "M2PobvE8fCyYYF5uV93czvROxxjpzixNryUjU",
         .rights = {"events/view", "events/edit", "donations/view", "mailings/send"}},
        {.name = "viewer",
         .password = "just looking",
         .hash = "$argon2id$v=19$m=65536,t=2,p=1$Ct35PG91C312yTA/VxEV0A$3HRxn5"
                 "gPz403XvNS4cN+6Zy4JGythFRnm1+r1oqYqTw",
         .rights = {"events/view"}},
    };
    return users;
}

void makeUsers(SqlSession& sql)
{
    UserStore store(sql);
    for (const DemoUser& demo : demoUsers()) {
        const User user = store.create(std::string(demo.name));
        sql.hostExecute("UPDATE host_users SET password = ? WHERE id = ?",
                        {std::string(demo.hash), std::int64_t{user.id}});
        if (demo.rights.empty()) store.grantAll(user.id);
        for (const std::string_view right : demo.rights) store.grant(user.id, std::string(right));
    }
}

} // namespace refhost::demo
