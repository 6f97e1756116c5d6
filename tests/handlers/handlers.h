#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/scripted_host.h"

namespace qmevents::testing {

/// An object of the host's that takes any property; what was assigned is kept in that order.
class Sheet : public Object {
public:
    std::string_view className() const override { return "Sheet"; }
    MemberId memberId(std::string_view member) const override
    {
        if (std::ranges::find(names_, member) == names_.end()) names_.emplace_back(member);
        return static_cast<MemberId>(std::ranges::find(names_, member) - names_.begin()) + 1;
    }
    Value invoke(MemberId id, CallKind kind, std::span<Value> arguments) override
    {
        const std::string& name = names_[static_cast<std::size_t>(id) - 1];
        if (kind == CallKind::get) return values_[name];
        if (!arguments.back().isObject()) {
            said += (said.empty() ? "" : "|") + name + "=" + toText(arguments.back());
        }
        values_[name] = arguments.back();
        return {};
    }
    std::string said; ///< "Key=a|Width=100"

private:
    mutable std::vector<std::string> names_;
    std::map<std::string, Value> values_;
};

/// A host with the add-in in it, which answers the events that it is sent.
class Handlers : public ::testing::Test {
protected:
    void raise(const std::string& key, Value data = {}) const
    {
        auto event = puppet("Event");
        event->holds("Key", key).holds("Data", std::move(data));
        call(host_.root("Handler"), "EventHandler", event);
    }
    /// The host's core module, to which a test adds what its event needs.
    Puppet& quillmere() const
    {
        const auto modules = getObject(host_.app(), "Modules");
        return *refCast<Puppet>(getObject(modules, "Quillmere"));
    }
    /// An object with the function `makes`, which gives sheets.
    static Ref<Puppet> maker(const std::string& makes)
    {
        auto object = puppet("Maker");
        object->on(makes, [](std::span<Value>) { return Value(makeRef<Sheet>()); });
        return object;
    }
    /// What was said to each sheet in the collection, which holds it under its own key.
    static Log saidTo(const Ref<Collection>& sheets)
    {
        Log all;
        Value item;
        for (const auto walk = sheets->NewEnum(); walk->next(item);) {
            all.push_back(refCast<Sheet>(item.object())->said);
            EXPECT_EQ(sheets->Item(get(item.object(), "Key")).object(), item.object());
        }
        return all;
    }

    ScriptedHost host_;
};

} // namespace qmevents::testing
