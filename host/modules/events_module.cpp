#include "host/modules/events_module.h"

#include "automation/describe.h"
#include "host/xml/xml_document.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;
using qmevents::optional;

namespace {

constexpr const char* moduleKey = "events";
constexpr const char* configurationFile = "data/addin.xml";

} // namespace

const Members& Configuration::members() const
{
    static const Members table = describe<Configuration>("What the add-in says about itself.")
                                     .method("getValue", &Configuration::getValue, {arg("Key")},
                                             "The value under a key, for example \"schema\".");
    return table;
}

std::string Configuration::getValue(const std::string& key) const
{
    const std::string path = context_->addInPath + configurationFile;
    const auto document = makeRef<XmlDocument>();
    if (!document->Load(path)) {
        throw Error::with(ErrorNumber::invalidCall, path + ": " + document->parseError()->reason());
    }
    for (const pugi::xml_node value :
         document->node().child("addin").child("configuration").children("value")) {
        if (qmevents::text::sameName(value.attribute("key").value(), key)) {
            return std::string(qmevents::text::trim(value.text().get()));
        }
    }
    throw Error::with(ErrorNumber::invalidCall, path + " has no value for \"" + key + "\"");
}

const Members& EventsModule::members() const
{
    static const Members table =
        describe<EventsModule>("The Events add-in as the host knows it.")
            .readOnly("Objects", &EventsModule::rootObject, {arg("Name")},
                      "A root object of the add-in: \"Events\", \"Workflow\", \"Handler\" or "
                      "\"Security\".")
            .readOnly("Path", &EventsModule::Path,
                      "The installation folder, a separator at its end.")
            .readOnly("Configuration", &EventsModule::configuration,
                      "What the add-in says about itself.")
            .method("ShowDialog", &EventsModule::ShowDialog,
                    {arg("ContentFile"), optional("Left"), optional("Top"), optional("Height"),
                     optional("Width")},
                    "Shows a dialog page and returns after it has closed.")
            .method("LoadDialog", &EventsModule::LoadDialog, {arg("ContentFile")},
                    "Replaces the page of the open dialog; does not wait.");
    return table;
}

EventsModule::EventsModule(SharedContext context)
    : context_(std::move(context)), objects_(makeRef<qmevents::Collection>())
{
}

void EventsModule::registerObject(const std::string& name, const Ref<Object>& object)
{
    objects_->append(Value(object), name);
}

Ref<Object> EventsModule::rootObject(const std::string& name) const
{
    if (objects_->contains(name)) return objects_->at(std::string_view(name)).object();
    throw Error::with(ErrorNumber::invalidCall,
                      "the Events module has no object called \"" + name + "\"");
}

Ref<Configuration> EventsModule::configuration() const { return makeRef<Configuration>(context_); }

void EventsModule::ShowDialog(const std::string& contentFile, const std::optional<std::int32_t>&,
                              const std::optional<std::int32_t>&,
                              const std::optional<std::int32_t>& height,
                              const std::optional<std::int32_t>& width) const
{
    context_->shell()->dialogEngine().show(moduleKey, contentFile, height, width);
}

void EventsModule::LoadDialog(const std::string& contentFile) const
{
    context_->shell()->dialogEngine().loadPage(moduleKey, contentFile);
}

} // namespace refhost
