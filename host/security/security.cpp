#include "host/security/security.h"

#include <algorithm>

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

namespace {

constexpr std::size_t longestName = 100;
constexpr std::size_t shortestPassword = 8;
constexpr std::size_t longestPassword = 200;

std::string passwordFault(const std::string& password)
{
    const std::size_t length = qmevents::text::length(password);
    if (length >= shortestPassword && length <= longestPassword) return {};
    return "A password has between " + std::to_string(shortestPassword) + " and " +
           std::to_string(longestPassword) + " characters.";
}

} // namespace

const Members& UserObject::members() const
{
    static const Members table =
        describe<UserObject>("A user of the database.")
            .readOnly("Id", &UserObject::Id, "The number in the audit columns.")
            .readOnly("Name", &UserObject::Name, "The name under which the user signs in.")
            .asDefault()
            .readOnly("Rights", &UserObject::Rights,
                      "The names of the user's rights, separated by commas.");
    return table;
}

std::string UserObject::Rights() const
{
    if (user_.id != context_->user.id) {
        Security(context_).require(rightToGiveRights, "see the rights of others");
    }
    std::string names;
    for (const std::string& right : UserStore(context_->sql()).rightsOf(user_.id)) {
        names += (names.empty() ? "" : ",") + right;
    }
    return names;
}

const Members& Users::members() const
{
    static const Members table =
        describe<Users>("The users of the database, by name.")
            .method("FromId", &Users::FromId, {arg("Id")}, "The user with this id, or Nothing.")
            .readOnly("Count", &Users::Count, "Number of users.")
            .enumerator("NewEnum", &Users::NewEnum);
    return table;
}

Ref<UserObject> Users::FromId(std::int32_t id) const
{
    const auto user = UserStore(context_->sql()).find(id);
    return user ? makeRef<UserObject>(context_, *user) : Ref<UserObject>();
}

std::int32_t Users::Count() const
{
    return static_cast<std::int32_t>(UserStore(context_->sql()).all().size());
}

Ref<qmevents::Enumerator> Users::NewEnum()
{
    const auto users = makeRef<qmevents::Collection>();
    for (const User& user : UserStore(context_->sql()).all()) {
        users->append(Value(makeRef<UserObject>(context_, user)));
    }
    return users->NewEnum();
}

const Members& Security::members() const
{
    static const Members table =
        describe<Security>("Who is signed in, and what that user may do.")
            .method("IsAllowed", &Security::IsAllowed, {arg("Right")},
                    "Whether the signed-in user holds the right.")
            .readOnly("CurrentUser", &Security::CurrentUser, "The signed-in user.")
            .readOnly("Users", &Security::users, "The users of the database.")
            .method("LoadZones", &Security::LoadZones, "All rights, by zones.")
            .method(
                "SetRight", &Security::SetRight, {arg("UserId"), arg("Right"), arg("IsHeld")},
                "Gives a user a right, or takes it; gives why that cannot be, or an empty text.")
            .method("AddUser", &Security::AddUser, {arg("Name"), arg("Password")},
                    "Adds a user; gives why that cannot be, or an empty text.")
            .method("SetPassword", &Security::SetPassword, {arg("UserId"), arg("Password")},
                    "Sets a user's password; gives why that cannot be, or an empty text.");
    return table;
}

bool Security::IsAllowed(const std::string& right) const
{
    if (right.empty()) return true;
    if (!context_->rights) return UserStore(context_->sql()).hasRight(context_->user.id, right);
    return std::any_of(context_->rights->begin(), context_->rights->end(),
                       [&](const auto& held) { return qmevents::text::sameName(held, right); });
}

Ref<UserObject> Security::CurrentUser() const
{
    return makeRef<UserObject>(context_, context_->user);
}

Ref<Users> Security::users() const { return makeRef<Users>(context_); }

std::vector<std::string> Security::heldRights() const
{
    return context_->rights ? *context_->rights
                            : UserStore(context_->sql()).rightsOf(context_->user.id);
}

void Security::require(const std::string& right, const std::string& deed) const
{
    if (!IsAllowed(right)) {
        throw Error::with(ErrorNumber::permissionDenied, "you may not " + deed);
    }
}

Ref<SecurityZones> Security::zones() const
{
    require(rightToGiveRights, "give rights");
    const auto payload = makeRef<SecurityZones>();
    context_->raise("security-zones-load", Value(payload));
    payload->addHostZones();
    return payload;
}

Ref<qmevents::Collection> Security::LoadZones() const { return zones()->Zones; }

void Security::requireUser(std::int32_t userId) const
{
    if (!UserStore(context_->sql()).find(userId)) {
        throw Error::with(ErrorNumber::invalidCall,
                          "there is no user with the id " + std::to_string(userId));
    }
}

std::string Security::SetRight(std::int32_t userId, const std::string& right, bool isHeld) const
{
    const std::string spelled = zones()->spelled(right);
    requireUser(userId);
    if (spelled.empty()) {
        throw Error::with(ErrorNumber::invalidCall, "there is no right called " + right);
    }
    UserStore users(context_->sql());
    if (isHeld) {
        users.give(userId, spelled);
    } else if (!users.revoke(userId, spelled)) {
        return "Somebody must be able to give rights, and nobody else can.";
    }
    return {};
}

std::string Security::AddUser(const std::string& name, const std::string& password) const
{
    require(rightToGiveRights, "add users");
    const std::string trimmed(qmevents::text::trim(name));
    if (trimmed.empty()) return "A user needs a name.";
    if (qmevents::text::length(trimmed) > longestName) {
        return "A name has at most " + std::to_string(longestName) + " characters.";
    }
    if (std::string fault = passwordFault(password); !fault.empty()) return fault;
    UserStore users(context_->sql());
    if (users.find(trimmed)) return "There is a user called " + trimmed + " already.";
    users.create(trimmed, password);
    return {};
}

std::string Security::SetPassword(std::int32_t userId, const std::string& password) const
{
    require(rightToGiveRights, "set passwords");
    requireUser(userId);
    std::string fault = passwordFault(password);
    if (fault.empty()) UserStore(context_->sql()).setPassword(userId, password);
    return fault;
}

} // namespace refhost
