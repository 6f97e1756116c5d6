#pragma once

#include <string>
#include <vector>

#include "automation/collection.h"
#include "host/security/security_zones.h"

namespace refhost {

/// A user as scripts see it.
class UserObject : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "User";
    const Members& members() const override;

    UserObject(SharedContext context, User user)
        : context_(std::move(context)), user_(std::move(user))
    {
    }
    std::int32_t Id() const { return user_.id; }
    std::string Name() const { return user_.name; }
    /// The names of the user's rights, separated by commas. Error 70 for those of others without
    /// the right to give them.
    std::string Rights() const;

private:
    SharedContext context_;
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
    /// What the signed-in user holds at this moment.
    std::vector<std::string> heldRights() const;
    /// Error 70, "you may not ...", when the signed-in user lacks the right.
    void require(const std::string& right, const std::string& deed) const;

    // What follows is error 70 without the right to give rights.

    /// The rights that the host and its modules know, by zones, asked for anew.
    Ref<qmevents::Collection> LoadZones() const;
    /// Gives a right or takes it, at once for those who are signed in; gives why that cannot be, or
    /// an empty text. Error 5 for an unknown user or right.
    std::string SetRight(std::int32_t userId, const std::string& right, bool isHeld) const;
    /// Adds a user without rights; gives why that cannot be, or an empty text.
    std::string AddUser(const std::string& name, const std::string& password) const;
    /// Sets a user's password; gives why that cannot be, or an empty text.
    std::string SetPassword(std::int32_t userId, const std::string& password) const;

private:
    Ref<SecurityZones> zones() const;
    void requireUser(std::int32_t userId) const;

    SharedContext context_;
};

} // namespace refhost
