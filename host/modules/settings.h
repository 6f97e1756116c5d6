#pragma once

#include <string>

#include "automation/collection.h"
#include "automation/date.h"
#include "host/app/session_context.h"

namespace refhost {

/// The first day of the fiscal year that holds today; they begin on 1 January when the settings
/// name no day.
qmevents::Date fiscalYearStart(const SharedContext& context);

/// An entry among the settings.
class SettingCategory : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SettingCategory";
    const Members& members() const override;

    std::string Key, Name, Description, Iconimage;
    std::string Script;    ///< The line that opens it.
    std::string Operation; ///< The right that a user needs; empty for none.
};

/// `App.Modules.Quillmere.Settings`.
class Settings : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Settings";
    const Members& members() const override;

    explicit Settings(SharedContext context) : context_(std::move(context)) {}
    Ref<qmevents::Collection> Categories = qmevents::makeRef<qmevents::Collection>();
    Ref<SettingCategory> GetNewCategory() const;
    /// The host's entries and those that the modules add, anew: what the user may open.
    Ref<qmevents::Collection> Load();
    /// Runs the line of an entry. Error 5 when there is no such entry, or none that the user may
    /// open.
    void Open(const std::string& key);

    std::int32_t fiscalYearMonth() const; ///< 1 when it was never set.
    std::int32_t fiscalYearDay() const;
    qmevents::Date yearStart() const { return fiscalYearStart(context_); }
    /// Sets where fiscal years begin: a day that every year has. Error 5 for another, 70 without
    /// the right "settings/edit".
    void SetFiscalYearStart(std::int32_t month, std::int32_t day) const;

private:
    std::int32_t numberSetting(const char* name) const;

    SharedContext context_;
};

} // namespace refhost
