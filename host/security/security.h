#pragma once

#include <string>

#include "automation/members.h"
#include "host/app/session_context.h"

namespace refhost {

/// A user as scripts see it.
class UserObject : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "User";
    const Members& members() const override;

    explicit UserObject(User user) : user_(std::move(user)) {}
    std::int32_t Id() const { return user_.id; }
    std::string Name() const { return user_.name; }

private:
    User user_;
};

/// The users of the database, by name.
class Users : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Users";
    const Members& members() const override;

    explicit Users(SharedContext context) : context_(std::move(context)) {}
    Ref<UserObject> FromId(std::int32_t id) const; ///< Nothing when there is no such user.
    std::int32_t Count() const;
    Ref<qmevents::Enumerator> NewEnum();

private:
    SharedContext context_;
};

/// `App.Security`: who is signed in, and what that user may do.
class Security : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Security";
    const Members& members() const override;

    explicit Security(SharedContext context) : context_(std::move(context)) {}
    /// Whether the signed-in user holds the right at this moment. What asks for no right, an empty
    /// name, is allowed to all.
    bool IsAllowed(const std::string& right) const;
    Ref<UserObject> CurrentUser() const;
    Ref<Users> users() const;

private:
    SharedContext context_;
};

} // namespace refhost
