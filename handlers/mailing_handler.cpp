#include "handlers/mailing_handler.h"

#include <vector>

#include "core/host.h"
#include "handlers/mailing_values.h"
#include "store/events_manage.h"

namespace qmevents {
namespace {

constexpr const char* fieldFile = "cache\\mailings\\event-fields.xml";

void addFields(const HostEvent& event)
{
    const Modules modules = host().modules();
    modules.quillmere().appendMailingFields("Events", "events",
                                            modules.events().path() + fieldFile);
    const Value listKey = get(event.data(), "ListKey");
    if (!listKey.isText() || listKey.text().empty()) return;
    if (const auto started = eventsManage()->startedMailing(listKey.text())) {
        put(event.data(), "Reference", started->text());
        put(event.data(), "MailingType", started->type);
    }
}

std::vector<std::int32_t> donorsOf(const Ref<Object>& data)
{
    std::vector<std::int32_t> donors;
    for (const Value& donor : get(data, "DonorIds").array()->items)
        donors.push_back(toInt32(donor));
    return donors;
}

void supplyValues(const HostEvent& event)
{
    const auto data = event.data();
    const Value reference = get(data, "Reference");
    if (!reference.isText()) return;
    const auto mailing = StartedMailing::parse(reference.text());
    if (!mailing) return; // another module's, or one that goes to no event's people
    readMailingValues(*mailing, donorsOf(data),
                      [&](std::int32_t donor, const char* field, const Value& value) {
                          call(data, "SetValue", donor, field, value);
                      });
}

struct Answer {
    std::string_view key;
    void (*run)(const HostEvent&);
};
constexpr Answer answers[] = {{"mailing-fields", addFields}, {"mailing-data", supplyValues}};

} // namespace

void MailingHandler::EventHandler(const Ref<Object>& hostEvent)
{
    const HostEvent event(hostEvent);
    const std::string key = event.key();
    for (const auto& answer : answers) {
        if (answer.key == key) answer.run(event);
    }
}

const Members& MailingHandler::members() const
{
    static const Members table =
        answererMembers<MailingHandler>("Answers mailings' requests for fields and values.");
    return table;
}

} // namespace qmevents
