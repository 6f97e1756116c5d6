#pragma once

#include <string>

#include "host/app/session_context.h"
#include "host/xml/xml_document.h"

namespace refhost {

/// `App.Utils`: helpers for scripts and add-ins.
class Utils : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Utils";
    const Members& members() const override;

    explicit Utils(SharedContext context) : context_(std::move(context)) {}
    Ref<XmlDocument> NewXmlDocument() const;
    std::string GetGuid() const; ///< A new random one, "{8-4-4-4-12}" in capitals.
    void DoEvents() const;       ///< Lets the front end handle what waits.

private:
    SharedContext context_;
};

/// What `App.CreateObject("OBFSL.FileSystemLib")` gives.
class FileSystem : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "FileSystemLib";
    const Members& members() const override;

    bool FileExists(const std::string& path) const;
};

} // namespace refhost
