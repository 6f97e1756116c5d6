#pragma once

#include <optional>
#include <string>

#include "automation/collection.h"
#include "host/app/session_context.h"

namespace refhost {

/// What data/addin.xml of the add-in says about itself.
class Configuration : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Configuration";
    const Members& members() const override;

    explicit Configuration(SharedContext context) : context_(std::move(context)) {}
    /// The value under `key`; an error naming the file when there is none.
    std::string getValue(const std::string& key) const;

private:
    SharedContext context_;
};

/// `App.Modules.Events`: the add-in as the host knows it.
class EventsModule : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "EventsModule";
    const Members& members() const override;

    explicit EventsModule(SharedContext context);

    void registerObject(const std::string& name, const Ref<Object>& object);
    void forgetObjects() { objects_->clear(); }
    /// A root object of the add-in as it was registered; error 5 when there is none.
    Ref<Object> rootObject(const std::string& name) const;

    // The late-bound face.
    std::string Path() const { return context_->addInPath; }
    Ref<Configuration> configuration() const;
    /// Where the window stands is the front end's choice, whatever `left` and `top` say.
    void ShowDialog(const std::string& contentFile, const std::optional<std::int32_t>& left,
                    const std::optional<std::int32_t>& top,
                    const std::optional<std::int32_t>& height,
                    const std::optional<std::int32_t>& width) const;
    void LoadDialog(const std::string& contentFile) const;

private:
    SharedContext context_;
    Ref<qmevents::Collection> objects_;
};

} // namespace refhost
