#include "core/links.h"

#include "automation/describe.h"

namespace qmevents {

const Members& ApplicationLink::members() const
{
    static const Members table =
        describe<ApplicationLink>("A link that the host shows and runs.")
            .property("Key", &ApplicationLink::Key, "Names the link.")
            .property("Title", &ApplicationLink::Title, "What the link shows.")
            .property("Description", &ApplicationLink::Description, "What the link leads to.")
            .property("Language", &ApplicationLink::Language, "Language of the script.")
            .property("Script", &ApplicationLink::Script, "The host script line that it runs.")
            .property("Operation", &ApplicationLink::Operation,
                      "The right that a user needs to see it.");
    return table;
}

const Members& EntityKeyLock::members() const
{
    static const Members described =
        describe<EntityKeyLock>("Names one record by table, key column and key value.")
            .property("table", &EntityKeyLock::table, "The table.")
            .property("Keyfield", &EntityKeyLock::Keyfield, "The key column.")
            .property("keyvalue", &EntityKeyLock::keyvalue, "The key.")
            .method("Init", &EntityKeyLock::Init, {arg("table"), arg("Keyfield")},
                    "Sets table and key column, and empties the key.");
    return described;
}

void EntityKeyLock::Init(const std::string& keyTable, const std::string& keyField)
{
    table = keyTable;
    Keyfield = keyField;
    keyvalue.clear();
}

} // namespace qmevents
