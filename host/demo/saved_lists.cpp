#include "host/demo/saved_lists.h"

#include <string>
#include <vector>

namespace refhost::demo {
namespace {

using qmevents::Array;
using qmevents::Value;

struct SavedFilter {
    const char *key, *operation, *value;
};
struct SavedList {
    const char *type, *name;
    std::vector<Value> columns;
    const char* sort; ///< The largest first.
    std::vector<SavedFilter> filters;
};

const std::vector<SavedList>& lists()
{
    static const std::vector<SavedList> all{
        {"donors",
         "Invited, never came",
         {"donorname", "donorcity", "donoremail", "eventslatestinvitedname",
          "eventslatestinviteddate"},
         "eventslatestinviteddate",
         {{"eventsinvitedvalue", "is", "Yes"}, {"eventsattendedvalue", "is", "No"}}},
        {"donors",
         "Reservations not paid in full",
         {"donorname", "donoremail", "donorphone", "eventsamountexpected", "eventsamount",
          "eventsamountdue"},
         "eventsamountdue",
         {{"eventsamountdue", "atleast", "0.01"}}},
        {"donors",
         "Sponsors",
         {"donorname", "eventslatestsponsoredname", "eventslatestsponsoreddate",
          "eventssponsorshipamount"},
         "eventssponsorshipamount",
         {{"eventssponsoredvalue", "is", "Yes"}}},
        {"donations",
         "Gifts for events",
         {"giftdonor", "giftdate", "giftamount", "giftfund", "donationEventOrReservationName"},
         "giftdate",
         {{"donationHasEventOrReservation", "is", "Yes"}}},
    };
    return all;
}

} // namespace

void saveLists(const qmevents::Ref<qmevents::Object>& app)
{
    const auto modules = getObject(app, "Modules");
    const auto smartLists = getObject(getObject(modules, "Quillmere"), "Smartlists");
    for (const auto& [type, name, columns, sort, filters] : lists()) {
        const auto list = toObject(call(smartLists, "GetNewList", type));
        put(list, "Name", name);
        put(list, "Columns", Array::list(columns));
        put(list, "Sort", sort);
        put(list, "Descending", true);
        for (const auto& [key, operation, value] : filters) {
            call(list, "AddFilter", key, operation, value);
        }
        call(smartLists, "Save", list);
    }
}

} // namespace refhost::demo
