#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "automation/collection.h"
#include "automation/members.h"
#include "host/shell/front_end.h"

namespace refhost {

/// An element of the page shown, as commands may read and fill it.
class PageElement : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "PageElement";
    const qmevents::Members& members() const override;

    explicit PageElement(std::string elementId) : id(std::move(elementId)) {}

    std::string id;
    qmevents::Value value;
    std::string innerText;
    std::string innerHTML;
    bool disabled = false;
};

/// The elements of the page shown, by id. The host keeps them until the next navigation; what a
/// command leaves there, a page can read.
class PageDocument : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "PageDocument";
    const qmevents::Members& members() const override;

    qmevents::Ref<PageElement> getElementById(const std::string& id);
    void clear() { elements_.clear(); }

private:
    std::unordered_map<std::string, qmevents::Ref<PageElement>> elements_;
};

/// The page that the main view shows (`App.Shell.Page`).
class Page : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Page";
    const qmevents::Members& members() const override;

    explicit Page(FrontEnd& frontEnd);

    qmevents::Ref<PageDocument> document() const { return document_; }
    void SetModified();

private:
    FrontEnd& frontEnd_;
    qmevents::Ref<PageDocument> document_;
};

/// The toolbar of the page shown (`App.Shell.Toolbar`).
class Toolbar : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Toolbar";
    const qmevents::Members& members() const override;

    Toolbar();

    qmevents::Ref<qmevents::Collection> buttons() const { return buttons_; }

private:
    qmevents::Ref<qmevents::Collection> buttons_;
};

} // namespace refhost
