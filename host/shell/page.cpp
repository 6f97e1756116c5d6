#include "host/shell/page.h"

#include "automation/describe.h"
#include "automation/error.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::makeRef;
using qmevents::Members;

const Members& PageElement::members() const
{
    static const Members table =
        describe<PageElement>("An element of the page shown.")
            .readOnly("id", &PageElement::id, "The element's id.")
            .property("value", &PageElement::value, "What a field holds.")
            .property("innerText", &PageElement::innerText, "The text shown.")
            .property("innerHTML", &PageElement::innerHTML, "The markup shown.")
            .property("disabled", &PageElement::disabled, "Whether it takes no input.");
    return table;
}

const Members& PageDocument::members() const
{
    static const Members table = describe<PageDocument>("The document of the page shown.")
                                     .method("getElementById", &PageDocument::getElementById,
                                             {arg("Id")}, "The element with this id.");
    return table;
}

qmevents::Ref<PageElement> PageDocument::getElementById(const std::string& id)
{
    if (id.empty()) {
        throw qmevents::Error::with(qmevents::ErrorNumber::invalidCall,
                                    "a page element needs an id");
    }
    auto& element = elements_[id];
    if (!element) element = makeRef<PageElement>(id);
    return element;
}

const Members& Page::members() const
{
    static const Members table =
        describe<Page>("The page that the main view shows.")
            .readOnly("Document", &Page::document, "Its elements.")
            .method("SetModified", &Page::SetModified,
                    "Marks the page as changed, so that leaving it asks whether to save.");
    return table;
}

Page::Page(FrontEnd& frontEnd) : frontEnd_(frontEnd), document_(makeRef<PageDocument>()) {}

void Page::SetModified() { frontEnd_.setPageModified(); }

const Members& Toolbar::members() const
{
    static const Members table =
        describe<Toolbar>("The toolbar of the page shown.")
            .readOnly("Buttons", &Toolbar::buttons, "Its buttons, by key.");
    return table;
}

Toolbar::Toolbar() : buttons_(makeRef<qmevents::Collection>()) {}

} // namespace refhost
