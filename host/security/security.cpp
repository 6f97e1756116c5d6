#include "host/security/security.h"

#include <algorithm>

#include "automation/collection.h"
#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::makeRef;

const Members& UserObject::members() const
{
    static const Members table =
        describe<UserObject>("A user of the database.")
            .readOnly("Id", &UserObject::Id, "The number in the audit columns.")
            .readOnly("Name", &UserObject::Name, "The name under which the user signs in.")
            .asDefault();
    return table;
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
    return user ? makeRef<UserObject>(*user) : Ref<UserObject>();
}

std::int32_t Users::Count() const
{
    return static_cast<std::int32_t>(UserStore(context_->sql()).all().size());
}

Ref<qmevents::Enumerator> Users::NewEnum()
{
    const auto users = makeRef<qmevents::Collection>();
    for (const User& user : UserStore(context_->sql()).all()) {
        users->append(Value(makeRef<UserObject>(user)));
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
            .readOnly("Users", &Security::users, "The users of the database.");
    return table;
}

bool Security::IsAllowed(const std::string& right) const
{
    if (right.empty()) return true;
    if (!context_->rights) return UserStore(context_->sql()).hasRight(context_->user.id, right);
    return std::any_of(context_->rights->begin(), context_->rights->end(),
                       [&](const auto& held) { return qmevents::text::sameName(held, right); });
}

Ref<UserObject> Security::CurrentUser() const { return makeRef<UserObject>(context_->user); }

Ref<Users> Security::users() const { return makeRef<Users>(context_); }

} // namespace refhost
