#pragma once

#include <string>
#include <unordered_map>

#include "automation/text.h"
#include "host/app/session_context.h"
#include "host/app/utils.h"
#include "host/document/objects/document.h"
#include "host/document/objects/provider.h"
#include "host/modules/modules.h"
#include "host/security/security.h"

namespace refhost {

/// What scripts, pages and add-ins call App: the root of the host's objects.
class App : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "App";
    const Members& members() const override;

    explicit App(SharedContext context);

    const Ref<Document>& document() const { return document_; }
    const Ref<Provider>& provider() const { return provider_; }
    const Ref<Security>& security() const { return security_; }
    const Ref<Modules>& modules() const { return modules_; }
    const Ref<Utils>& utils() const { return utils_; }
    Ref<Shell> shell() const { return context_->shell(); }
    void forgetSessionValues() { sessionValues_.clear(); }

    // The late-bound face.
    Value sessionValue(const std::string& key) const; ///< Empty when it was never set.
    void setSessionValue(const std::string& key, const Value& value);
    /// "OBFSL.FileSystemLib" or "ScriptControl"; error 429 for any other class.
    Ref<Object> CreateObject(const std::string& classId) const;
    bool IsModuleLoaded(const std::string& name) const { return modules_->isLoaded(name); }

private:
    SharedContext context_;
    Ref<Document> document_;
    Ref<Utils> utils_;
    Ref<Provider> provider_;
    Ref<Security> security_;
    Ref<Modules> modules_;
    std::unordered_map<std::string, Value, qmevents::text::NameHash, qmevents::text::NameEqual>
        sessionValues_;
};

} // namespace refhost
