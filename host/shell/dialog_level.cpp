#include "host/shell/dialog_level.h"

#include <algorithm>
#include <string_view>

#include "automation/error.h"

namespace refhost {

using qmevents::Error;
using qmevents::ErrorNumber;

namespace {

constexpr std::string_view scheme = "obsidian://";
constexpr std::string_view dialogsFolder = "dialogs/";

bool isPlainName(std::string_view name)
{
    const auto mayStand = [](char c) { return static_cast<unsigned char>(c) > ' ' && c != '\\'; };
    return !name.empty() && name.front() != '/' && std::ranges::all_of(name, mayStand) &&
           name.find("..") == std::string_view::npos;
}

} // namespace

std::string DialogPage::address() const
{
    return std::string(scheme) + module + "/" + std::string(dialogsFolder) + name;
}

DialogPage DialogPage::parse(const std::string& text, const std::string& module)
{
    DialogPage page{module, qmevents::text::replaceAll(text, "\\", "/")};
    if (qmevents::text::sameName(page.name.substr(0, scheme.size()), scheme)) {
        const std::string path = page.name.substr(scheme.size());
        const std::size_t slash = std::min(path.find('/'), path.size());
        page.module = path.substr(0, slash);
        page.name = path.substr(std::min(slash + 1, path.size()));
        if (qmevents::text::sameName(page.name.substr(0, dialogsFolder.size()), dialogsFolder))
            page.name.erase(0, dialogsFolder.size());
    }
    if (!isPlainName(page.module) || !isPlainName(page.name))
        throw Error::with(ErrorNumber::invalidCall, "\"" + text + "\" is not a dialog page");
    return page;
}

void DialogLevel::turnTo(DialogPage next)
{
    history.push_back(std::move(page));
    page = std::move(next);
    pageChanged = true;
}

const RestorePoint& DialogLevel::restorePoint(const std::string& cookie) const
{
    const auto found = std::find_if(restorePoints.rbegin(), restorePoints.rend(),
                                    [&](const auto& point) { return point.cookie == cookie; });
    if (found == restorePoints.rend()) {
        throw Error::with(ErrorNumber::invalidCall,
                          "there is no restore point called \"" + cookie + "\"");
    }
    return *found;
}

void DialogLevel::restore(const std::string& cookie)
{
    const auto index = static_cast<std::size_t>(&restorePoint(cookie) - restorePoints.data());
    RestorePoint point = std::move(restorePoints[index]);
    restorePoints.resize(index);
    for (auto& [name, value] : point.values) {
        if (!value.isEmpty()) values[name] = std::move(value);
    }
    handler = std::move(point.handler);
    page = std::move(point.page);
    history.resize(point.pagesBefore);
    pageChanged = true;
    isPreparingInnerPage = false;
    awaitsInnerHandler = false;
}

} // namespace refhost
