#pragma once

#include <string>
#include <string_view>

#include "automation/error.h"
#include "automation/object.h"

namespace qmevents {

/// The two references that the whole add-in shares, one pair per thread (apartment): the host's
/// application object and the add-in's own `Events` root as the host registered it. Both are set by
/// the first `OnInitialize` that arrives and stay until the add-in is released.
class Context {
public:
    static Context& current();

    /// Keeps `app` unless one is kept already.
    void initialize(const Ref<Object>& app);
    /// The host's application object; error 91 before `OnInitialize`.
    const Ref<Object>& app() const;
    /// The `Events` root, looked up once through `App.Modules.Events.Objects("Events")`.
    const Ref<Object>& root();
    void release();

private:
    Ref<Object> app_;
    Ref<Object> root_;
};

/// One of the root's parts ("EventsManage", "Dialogs", ...) as the class that this add-in made.
/// Error 13 when the host's root gives something else.
template <typename T>
Ref<T> rootPart(std::string_view name)
{
    auto part = refCast<T>(getObject(Context::current().root(), name));
    if (!part) {
        throw Error::with(ErrorNumber::typeMismatch,
                          "the Events root's " + std::string(name) + " is not the add-in's own");
    }
    return part;
}

} // namespace qmevents
