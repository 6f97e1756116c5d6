#include "workflow/dialog.h"

#include <map>

#include "automation/describe.h"
#include "automation/error.h"
#include "core/host.h"

namespace qmevents {
namespace {

constexpr std::string_view findEventKey = "findevent";

constexpr DialogValue title{"Title", "title", Exchange::input};
constexpr DialogValue heading{"Heading", "heading", Exchange::input};
constexpr DialogValue description{"Description", "description", Exchange::input};

// All values of a dialog: its headings first, then its own.
std::vector<DialogValue> valuesOf(const DialogDescription& dialog)
{
    std::vector<DialogValue> values{title};
    if (dialog.headings != Headings::titleOnly) values.push_back(heading);
    if (dialog.headings == Headings::all || dialog.headings == Headings::noDescription) {
        values.push_back(description);
    }
    values.insert(values.end(), dialog.values.begin(), dialog.values.end());
    return values;
}

bool isSent(const DialogDescription& dialog, const DialogValue& value)
{
    if (value.exchange == Exchange::output) return false;
    return dialog.headings != Headings::noDescription || value.pageName != "description";
}
bool isObject(Exchange exchange)
{
    return exchange == Exchange::object || exchange == Exchange::requiredObject;
}
bool isRequired(Exchange exchange)
{
    return exchange == Exchange::requiredInput || exchange == Exchange::requiredObject;
}
bool isReadBack(Exchange exchange)
{
    return exchange == Exchange::output || exchange == Exchange::inputOutput;
}

// What a value becomes of what a caller assigns. An identifier is always a number.
Value asAssigned(const DialogValue& value, Value given)
{
    if (isObject(value.exchange)) return toObject(given);
    if (value.isId) return toInt32(given);
    return given;
}

Members describeDialog(const DialogDescription& dialog)
{
    Members members(std::string(dialog.className), std::string(dialog.purpose));
    for (const auto& value : valuesOf(dialog)) {
        Member member;
        member.name = value.property;
        member.documentation =
            "Value \"" + std::string(value.pageName) + "\" of the page" +
            (isReadBack(value.exchange) ? ", read when the user has confirmed." : ".");
        if (value.isId) member.type.tag = MemberType::Tag::int32;
        if (isObject(value.exchange)) member.type.tag = MemberType::Tag::object;
        member.get = [name = value.property](Object& self, std::span<Value>) {
            return static_cast<Dialog&>(self).get(name);
        };
        if (value.exchange != Exchange::output) {
            member.put = [value](Object& self, std::span<Value> arguments) {
                auto& owner = static_cast<Dialog&>(self);
                owner.set(value.property,
                          detail::namingArgument(owner.members(), value.property, {}, [&] {
                              return asAssigned(value, std::move(arguments.back()));
                          }));
            };
        }
        members.add(std::move(member));
    }
    if (dialog.key == findEventKey) {
        Member kind;
        kind.name = "DonationType";
        kind.documentation = "Always \"event\".";
        kind.type.tag = MemberType::Tag::text;
        kind.get = [](Object&, std::span<Value>) { return Value("event"); };
        members.add(std::move(kind));
    }
    Member create;
    create.name = "Create";
    create.documentation = "Shows the dialog; True when the user confirmed.";
    create.isMethod = true;
    create.get = [](Object& self, std::span<Value>) { return static_cast<Dialog&>(self).Create(); };
    members.add(std::move(create));
    Member load;
    load.name = "Load";
    load.documentation = "Opens the dialog as a further page of the open window.";
    load.isMethod = true;
    load.type.tag = MemberType::Tag::boolean;
    load.parameters = {optional("Cookie", "subdialog")};
    load.get = [](Object& self, std::span<Value> arguments) {
        return Value(static_cast<Dialog&>(self).Load(arguments[0]));
    };
    members.add(std::move(load));
    return members;
}

const Members& membersOf(const DialogDescription& dialog)
{
    static const auto tables = [] {
        std::map<const DialogDescription*, Members> all;
        for (const auto& each : dialogCatalog()) all.emplace(&each, describeDialog(each));
        all.emplace(&eventsResultsDialog(), describeDialog(eventsResultsDialog()));
        return all;
    }();
    return tables.at(&dialog);
}

const DialogDescription* descriptionOf(std::string_view key)
{
    for (const auto& dialog : dialogCatalog()) {
        if (dialog.key == key) return &dialog;
    }
    return nullptr;
}

Ref<Dialog> makeDialog(const DialogDescription& dialog)
{
    if (dialog.key == findEventKey) return makeRef<FindEventDialog>();
    return makeRef<Dialog>(dialog);
}

} // namespace

Dialog::Dialog(const DialogDescription& description) : description_(description)
{
    for (const auto& value : valuesOf(description_)) {
        values_.push_back(value.isId                 ? Value(0)
                          : isObject(value.exchange) ? Value::nothing()
                                                     : Value());
    }
}

const Members& Dialog::members() const { return membersOf(description_); }

Value& Dialog::slot(std::string_view property)
{
    const auto values = valuesOf(description_);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i].property == property) return values_[i];
    }
    throw Error::with(ErrorNumber::noSuchMember,
                      std::string(className()) + "." + std::string(property));
}

Value Dialog::get(std::string_view property) const
{
    return const_cast<Dialog*>(this)->slot(property);
}

void Dialog::set(std::string_view property, Value value) { slot(property) = std::move(value); }

Value Dialog::Create() { return template_->Invoke(Ref<Object>(this), false, "default"); }

bool Dialog::Load(const Value& cookie)
{
    return toBool(template_->Invoke(Ref<Object>(this), true, cookie));
}

void Dialog::onHandleInputValues()
{
    for (const auto& value : valuesOf(description_)) {
        if (!isSent(description_, value)) continue;
        const std::string property(value.property);
        const std::string pageName(value.pageName);
        if (value.whenNothing && get(property).isNothing()) set(property, value.whenNothing());
        if (isObject(value.exchange)) {
            template_->SetInputValueByRef(get(property).object(), property, pageName,
                                          isRequired(value.exchange));
        } else {
            template_->SetInputValue(get(property), property, pageName, isRequired(value.exchange));
        }
    }
    template_->ContentFile = description_.key;
}

void Dialog::onHandleReturnValue(const Value& returnValue)
{
    if (!isConfirmed(returnValue)) return;
    for (const auto& value : valuesOf(description_)) {
        if (!isReadBack(value.exchange)) continue;
        // What the page was given stays unless it says otherwise; a mere output is its word alone.
        const Value before =
            value.exchange == Exchange::inputOutput ? get(value.property) : Value();
        const Value page = template_->GetOutputValue(std::string(value.pageName), before);
        set(value.property, value.isId ? Value(toInt32(page)) : page);
    }
}

void Dialog::onDialogChildComplete(const Ref<Object>&, const Value&, bool&) {}

FindEventDialog::FindEventDialog() : Dialog(*descriptionOf(findEventKey)) {}

void FindEventDialog::onDialogChildComplete(const Ref<Object>&, const Value& cookie,
                                            bool& allowClose)
{
    if (cookie.isEmpty()) return;
    const Shell shell = host().shell();
    set("EventId", toInt32(shell.dialogValue("eventid")));
    const Value nextPage = get("NextPage");
    const bool hasNext = !nextPage.isEmpty() && !nextPage.isNull() && !toText(nextPage).empty();
    const DialogEngine engine = shell.dialog();
    if (!hasNext || !isConfirmed(engine.returnValue())) return;
    allowClose = false;
    engine.setNextPage(nextPage);
    engine.goNext();
}

const Members& Dialogs::members() const
{
    static const Members table =
        describe<Dialogs>("The factory of dialogs.")
            .method("NewDialog", &Dialogs::NewDialog, {arg("DialogClass")},
                    "A new dialog by its key; Empty for an unknown key, which is reported.");
    return table;
}

Value Dialogs::NewDialog(const std::string& DialogClass)
{
    const std::string lowered = text::lower(DialogClass);
    const std::string_view key = text::trim(lowered);
    if (const auto* dialog = descriptionOf(key)) return makeDialog(*dialog);
    host().shell().errorUnexpected("A valid dialog key must be provided.");
    return {};
}

Ref<Dialog> newDialog(std::string_view key)
{
    const auto* dialog = descriptionOf(key);
    if (!dialog) throw Error::with(ErrorNumber::invalidCall, "no dialog " + std::string(key));
    return makeDialog(*dialog);
}

std::vector<const Members*> dialogMembers()
{
    std::vector<const Members*> tables;
    for (const auto& dialog : dialogCatalog()) tables.push_back(&membersOf(dialog));
    tables.push_back(&membersOf(eventsResultsDialog()));
    return tables;
}

} // namespace qmevents
