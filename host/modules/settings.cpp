#include "host/modules/settings.h"

#include <array>
#include <vector>

#include "automation/clock.h"
#include "automation/describe.h"
#include "host/document/objects/document.h"
#include "host/script/script_control.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::Date;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

namespace {

constexpr const char* monthSetting = "fiscal-year-month";
constexpr const char* daySetting = "fiscal-year-day";

struct HostEntry {
    const char *key, *name, *description, *page, *operation;
};
constexpr HostEntry hostEntries[] = {
    {"host-rights", "Users and rights", "Who signs in, and what each of them may do.", "rights",
     "security/edit"},
    {"host-codes", "Funds, campaigns, appeals and assignees",
     "What gifts and events are assigned to.", "codes", "settings/edit"},
};

} // namespace

Date fiscalYearStart(const SharedContext& context)
{
    const Document document(context);
    const auto number = [&](const char* setting) {
        const auto value = qmevents::parseNumber(document.setting(setting));
        return value && *value >= 1 && *value <= 31 ? static_cast<int>(*value) : 0;
    };
    const Date today = qmevents::Clock::today();
    const int year = today.civil().year;
    int month = number(monthSetting);
    int day = number(daySetting);
    if (!Date::isValidDay(year, month, day)) month = day = 1;
    const Date start = Date::of(year, month, day);
    return start > today ? start.plusMonths(-12) : start;
}

const Members& SettingCategory::members() const
{
    static const Members table =
        describe<SettingCategory>("An entry among the settings.")
            .property("Key", &SettingCategory::Key, "The key among the entries.")
            .property("Name", &SettingCategory::Name, "What the user sees.")
            .property("Description", &SettingCategory::Description, "What it is about.")
            .property("Iconimage", &SettingCategory::Iconimage, "Path of its icon.")
            .property("Script", &SettingCategory::Script, "The line that opens it.")
            .property("Operation", &SettingCategory::Operation, "The right that a user needs.");
    return table;
}

const Members& Settings::members() const
{
    static const Members table =
        describe<Settings>("The settings of the host and of its modules.")
            .readOnly("Categories", &Settings::Categories, "The entries, by their keys.")
            .method("GetNewCategory", &Settings::GetNewCategory, "A new entry, to be added.")
            .method("Load", &Settings::Load, "The entries that the user may open, anew.")
            .method("Open", &Settings::Open, {arg("Key")}, "Opens an entry.")
            .readOnly("FiscalYearMonth", &Settings::fiscalYearMonth,
                      "The month in which fiscal years begin.")
            .readOnly("FiscalYearDay", &Settings::fiscalYearDay, "The day of that month.")
            .method("SetFiscalYearStart", &Settings::SetFiscalYearStart, {arg("Month"), arg("Day")},
                    "Sets where fiscal years begin.");
    return table;
}

Ref<SettingCategory> Settings::GetNewCategory() const { return makeRef<SettingCategory>(); }

Ref<Collection> Settings::Load()
{
    Categories->clear();
    for (const HostEntry& entry : hostEntries) {
        const auto category = GetNewCategory();
        category->Key = entry.key;
        category->Name = entry.name;
        category->Description = entry.description;
        category->Script = std::string("App.Shell.Navigate \"obsidian://host/") + entry.page + '"';
        category->Operation = entry.operation;
        Categories->append(Value(category), entry.key);
    }
    context_->raise("settings-categories", Value(Categories));
    const Security security(context_);
    for (std::size_t position = Categories->size(); position > 0; --position) {
        const auto category = qmevents::refCast<SettingCategory>(Categories->at(position).object());
        if (!category || !security.IsAllowed(category->Operation)) Categories->take(position);
    }
    return Categories;
}

void Settings::Open(const std::string& key)
{
    const auto entries = Load();
    if (!entries->contains(key)) {
        throw Error::with(ErrorNumber::invalidCall, "there is no settings entry called " + key);
    }
    const auto entry =
        qmevents::refCast<SettingCategory>(entries->at(std::string_view(key)).object());
    const auto script = makeScriptControl();
    put(script, "Language", "vbscript");
    call(script, "AddObject", "App", context_->app());
    call(script, "ExecuteStatement", entry->Script);
}

std::int32_t Settings::numberSetting(const char* name) const
{
    const Value kept(Document(context_).setting(name));
    return qmevents::isNumeric(kept) ? qmevents::toInt32(kept) : 1;
}

std::int32_t Settings::fiscalYearMonth() const { return numberSetting(monthSetting); }

std::int32_t Settings::fiscalYearDay() const { return numberSetting(daySetting); }

void Settings::SetFiscalYearStart(std::int32_t month, std::int32_t day) const
{
    Security(context_).require("settings/edit", "change settings");
    // A year that began on 29 February would begin nowhere in most years.
    constexpr std::array days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isMonth = month >= 1 && month <= 12;
    if (!isMonth || day < 1 || day > days[static_cast<std::size_t>(month) - 1]) {
        throw Error::with(ErrorNumber::invalidCall, "not every year has a day " +
                                                        std::to_string(day) + " of the month " +
                                                        std::to_string(month));
    }
    Document document(context_);
    Transaction transaction(context_->sql());
    document.setSetting(monthSetting, std::to_string(month));
    document.setSetting(daySetting, std::to_string(day));
    transaction.commit();
}

} // namespace refhost
