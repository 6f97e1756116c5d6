#include "host/app/utils.h"

#include <array>

#include <sodium.h>

#include "automation/describe.h"
#include "host/app/file_finder.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;

const Members& Utils::members() const
{
    static const Members table =
        describe<Utils>("Helpers for scripts and add-ins.")
            .method("NewXmlDocument", &Utils::NewXmlDocument, "A new empty XML document.")
            .method("GetGuid", &Utils::GetGuid, "A new globally unique identifier in braces.")
            .method("DoEvents", &Utils::DoEvents, "Lets pending input run during a long loop.");
    return table;
}

Ref<XmlDocument> Utils::NewXmlDocument() const { return qmevents::makeRef<XmlDocument>(); }

std::string Utils::GetGuid() const
{
    std::array<unsigned char, 16> bytes{};
    randombytes_buf(bytes.data(), bytes.size());
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40); // version 4: random
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    std::string guid = "{";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) guid += '-';
        constexpr const char* digits = "0123456789ABCDEF";
        guid += {digits[bytes[i] >> 4], digits[bytes[i] & 0x0F]};
    }
    return guid + "}";
}

void Utils::DoEvents() const { context_->doEvents(); }

const Members& FileSystem::members() const
{
    static const Members table = describe<FileSystem>("The host's view of the file system.")
                                     .method("FileExists", &FileSystem::FileExists, {arg("Path")},
                                             "Whether there is such a file; the case of its "
                                             "name and the kind of its separators do not matter.");
    return table;
}

bool FileSystem::FileExists(const std::string& path) const { return findFile(path).has_value(); }

} // namespace refhost
