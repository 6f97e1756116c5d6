#include "core/context.h"

#include "automation/error.h"

namespace qmevents {

Context& Context::current()
{
    static thread_local Context context;
    return context;
}

void Context::initialize(const Ref<Object>& app)
{
    if (app_) return;
    if (!app) throw Error::with(ErrorNumber::objectNotSet, "OnInitialize needs the application");
    app_ = app;
}

const Ref<Object>& Context::app() const
{
    if (!app_) throw Error::with(ErrorNumber::objectNotSet, "OnInitialize has not been called");
    return app_;
}

const Ref<Object>& Context::root()
{
    if (!root_) {
        const auto module = getObject(getObject(app(), "Modules"), "Events");
        root_ = toObject(call(module, "Objects", "Events"));
    }
    return root_;
}

void Context::release()
{
    root_ = {};
    app_ = {};
}

} // namespace qmevents
