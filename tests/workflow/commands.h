#pragma once

#include "tests/store/late_store.h"

namespace qmevents::testing {

inline const std::string activityColumns =
    "Id FKEventId Name Description ListPrice Cost QuantityAvailable Sponsorship ReservationInfo "
    "QuantityType FKFundId FKCampaignId FKAppealId";

/// The commands, reached by name alone, in a host with event 5 and one record of each kind with key
/// 8 at it. What is asked for key 99 does not exist.
class Commands : public LateStore {
protected:
    Commands()
    {
        host.answer("eep.Id = <3:8>",
                    rowsOf("Id FKEventId FKDonorId Status Notes Attended", {{8, 5, 9, 1, "", 0}}));
        host.answer("eer.Id = <3:8>",
                    rowsOf("Id FKEventId FKDonorId ReservationDate Description AmountPaid",
                           {{8, 5, 9, Date::of(2026, 11, 20), "", 0}}));
        host.answer("eee.Id = <3:8>", rowsOf("Id FKEventId ExpenseDate Description Amount",
                                             {{8, 5, Date::of(2026, 11, 1), "Hall", 300}}));
        host.answer("eet.Id = <3:8>",
                    rowsOf("Id FKEventId Name Notes DueDateTime Completed FKAssignedToId",
                           {{8, 5, "Book", "", Date::of(2026, 11, 1), false, 0}}));
        offer(8, 10, {});
        host.log.clear();
    }
    /// What a command does, from start to end.
    template <typename... A>
    Log run(const std::string& command, A&&... arguments)
    {
        host.log.clear();
        call(host.commands(), command, std::forward<A>(arguments)...);
        return host.takeLog();
    }
    /// The same for a command with results in its arguments.
    Log runInPlace(const std::string& command, std::vector<Value>& arguments)
    {
        host.log.clear();
        invokeNamed(host.commands(), command, CallKind::method, arguments);
        return host.takeLog();
    }
    /// Has every dialog page set `values` and confirm.
    void confirmWith(const std::map<std::string, Value>& values = {})
    {
        host.dialogPage = [this, values] {
            for (const auto& [name, value] : values) host.dialogValues[name] = value;
            return Value(true);
        };
    }
    /// Has the event offer an activity to reserve.
    void offerActivity()
    {
        host.answer("FROM events_event_activities WHERE FKEventId=<2:5>",
                    rowsOf(activityColumns, {{3, 5, "Seat", null, null, null, 10, null, null, 0,
                                              null, null, null}}));
    }
    void cancel() { host.dialogPage = nullptr; }
    /// What showing a dialog logs: its values as "name = value", then its page.
    static Log dialog(const std::string& key, const Log& values)
    {
        Log log;
        for (const auto& value : values) log.push_back("Dialog " + value);
        log.push_back("ShowDialog " + key + " missing missing 468 550");
        log.emplace_back("Dialog.ClearClipboard");
        return log;
    }
    static Log joined(std::initializer_list<Log> parts)
    {
        Log log;
        for (const auto& part : parts) log.insert(log.end(), part.begin(), part.end());
        return log;
    }
    static Log underLock(const Log& log)
    {
        return joined({{"Lock event 5"}, log, {"Unlock event 5"}});
    }
    /// The search of an event that a command begins with.
    static Log search(const std::string& title, const std::string& heading,
                      const std::string& description)
    {
        return dialog("findevent",
                      {"title = " + title, "heading = " + heading, "description = " + description,
                       "navigateurl = ", "nextpage = "});
    }
};

inline const std::string hint =
    "Enter part or all of the event name you would like to find, then Click Next below.";

} // namespace qmevents::testing
