#pragma once

#include <string>

#include "core/host_document.h"
#include "core/host_modules.h"
#include "core/host_provider.h"
#include "core/host_security.h"
#include "core/host_shell.h"

namespace qmevents {

/// The host's application object, typed: the only place that spells the host's member names.
class Host : public HostPart {
public:
    using HostPart::HostPart;

    Document document() const { return Document(part("Document")); }
    Provider provider() const { return Provider(part("Provider")); }
    Shell shell() const { return Shell(part("Shell")); }
    HostSecurity security() const { return HostSecurity(part("Security")); }
    Modules modules() const { return Modules(part("Modules")); }

    /// A value kept for the length of the host session; objects are kept by reference.
    Value session(const std::string& key) const { return get("Session", key); }
    void setSession(const std::string& key, Value value) const
    {
        put("Session", key, std::move(value));
    }
    Ref<Object> newXmlDocument() const
    {
        return toObject(qmevents::call(utils(), "NewXmlDocument"));
    }
    /// A new globally unique text.
    std::string newGuid() const { return toText(qmevents::call(utils(), "GetGuid")); }
    /// Lets the host handle pending input during a long loop.
    void yield() const { qmevents::call(utils(), "DoEvents"); }
    Ref<Object> createObject(const std::string& classId) const
    {
        return toObject(call("CreateObject", classId));
    }
    bool fileExists(const std::string& path) const
    {
        return toBool(qmevents::call(createObject("OBFSL.FileSystemLib"), "FileExists", path));
    }
    bool isModuleLoaded(const std::string& name) const
    {
        return toBool(call("IsModuleLoaded", name));
    }

private:
    Ref<Object> utils() const { return part("Utils"); }
};

/// The host of this thread; error 91 before the host has handed over its application object.
Host host();

} // namespace qmevents
