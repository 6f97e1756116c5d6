#include "handlers/smart_list_handler.h"

#include "core/reporting.h"
#include "handlers/smart_list_columns.h"

namespace qmevents {
namespace {

void appendFields()
{
    const Host app = host();
    const std::string lists = app.modules().events().path() + "cache/lists/builder-";
    const char* ending = app.provider().isSqlServer() ? "-sql.xml" : ".xml";
    for (const std::string type : {"donors", "donations"}) {
        // What is wrong with one file is told and keeps no other from being read.
        reported([&] {
            app.modules().quillmere().smartLists().appendSchema(type, "Events", "events",
                                                                lists + type + ending);
        });
    }
}

} // namespace

const Members& SmartListHandler::members() const
{
    static const Members table = answererMembers<SmartListHandler>("Answers the smart lists.");
    return table;
}

void SmartListHandler::EventHandler(const Ref<Object>& Ev)
{
    const HostEvent event(Ev);
    const std::string key = event.key();
    if (key == "smartlist-modifytypes") {
        appendFields();
    } else if (key == "smartlist-columns") {
        addEventColumns(SmartListColumns(event.data()));
    }
}

} // namespace qmevents
