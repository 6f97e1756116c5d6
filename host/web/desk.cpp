#include "host/web/desk.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/conversions.h"
#include "host/web/addresses.h"
#include "host/web/chain.h"
#include "host/web/table_reader.h"
#include "host/web/wire_value.h"

namespace refhost {

using nlohmann::json;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::Object;
using qmevents::Ref;
using qmevents::Value;

namespace {

constexpr std::size_t mostColumns = 64;
constexpr std::size_t mostRows = 50'000;
constexpr std::size_t farthestRow = 1'000'000'000;
constexpr std::size_t mostCalls = 200;

const json& member(const json& body, const char* name)
{
    const auto found = body.find(name);
    if (found == body.end()) throw BadRequest(std::string("\"") + name + "\" is missing");
    return *found;
}

std::size_t countIn(const json& body, const char* name, std::size_t usual, std::size_t highest)
{
    const auto found = body.find(name);
    if (found == body.end()) return usual;
    if (!found->is_number_unsigned())
        throw BadRequest(std::string("\"") + name + "\" must be a whole number from 0 on");
    return std::min<std::size_t>(found->get<std::uint64_t>(), highest);
}

int windowIn(const json& body)
{
    const json& window = member(body, "window");
    constexpr std::int64_t highest = 1'000'000'000;
    if (!window.is_number_integer() || window.get<std::int64_t>() < 0 ||
        window.get<std::int64_t>() > highest)
        throw BadRequest("\"window\" must be the number of a window");
    return window.get<int>();
}

std::string textIn(const json& body, const char* name)
{
    const auto found = body.find(name);
    if (found == body.end() || found->is_null()) return {};
    if (!found->is_string()) throw BadRequest(std::string("\"") + name + "\" must be a text");
    return found->get<std::string>();
}

std::vector<Column> columnsIn(const json& body)
{
    const json& names = member(body, "columns");
    if (!names.is_array() || names.size() > mostColumns)
        throw BadRequest("\"columns\" must be an array of few names");
    std::vector<Column> columns;
    for (const json& name : names) {
        if (!name.is_string()) throw BadRequest("each of \"columns\" must be a text");
        columns.emplace_back(name.get_ref<const std::string&>());
    }
    return columns;
}

/// Says for a scope who holds the objects that go out. Calls that a waiting command lets in have
/// other holders.
class HolderScope {
public:
    HolderScope(HeldObjects::Holder& holder, HeldObjects::Holder inScope)
        : holder_(holder), outer_(std::exchange(holder, std::move(inScope)))
    {
    }
    HolderScope(const HolderScope&) = delete;
    HolderScope& operator=(const HolderScope&) = delete;
    ~HolderScope() { holder_ = std::move(outer_); }

private:
    HeldObjects::Holder& holder_;
    HeldObjects::Holder outer_;
};

} // namespace

void appendError(std::string& out, const Error& error)
{
    out.append(R"({"error":{"number":)").append(std::to_string(error.number()));
    out += R"(,"source":)";
    appendText(out, error.source());
    out += R"(,"description":)";
    appendText(out, error.description());
    out += "}}";
}

struct Desk::Entry {
    std::string_view kind;
    Operation operation;
    bool isCall;  ///< Runs as a call of the page: in the dialog of its window.
    bool inBatch; ///< May stand in a batch.
};

const Desk::Entry* Desk::find(const std::string& kind)
{
    static constexpr std::array entries{
        Entry{"call", &Desk::call, true, true},
        Entry{"list", &Desk::list, true, true},
        Entry{"read", &Desk::read, true, true},
        Entry{"write", &Desk::write, true, true},
        Entry{"batch", &Desk::batch, true, false},
        Entry{"release", &Desk::release, false, false},
        Entry{"dialog-close", &Desk::closeDialog, false, false},
        Entry{"dialog-back", &Desk::goBack, false, false},
    };
    const auto found = std::ranges::find(entries, kind, &Entry::kind);
    return found == entries.end() ? nullptr : found;
}

Desk::Desk(Ref<Object> app, WebFrontEnd& frontEnd)
    : app_(std::move(app)), shell_(qmevents::refCast<Shell>(getObject(app_, "Shell"))),
      frontEnd_(frontEnd)
{
    if (!shell_) throw Error(ErrorNumber::internal, "the shell of this session shows no dialogs");
    frontEnd_.onDialogClosed = [this](int window) { held_.releaseWindow(window); };
}

Desk::~Desk()
{
    frontEnd_.onDialogClosed = nullptr;
    held_.clear();
}

bool Desk::knows(const std::string& kind) { return find(kind) != nullptr; }

std::string Desk::answer(const std::string& kind, const json& body,
                         const std::shared_ptr<View>& view)
{
    const Entry* entry = find(kind);
    if (!entry) throw BadRequest("there is no request \"" + kind + "\"");
    std::optional<int> window;
    if (entry->isCall && body.contains("window")) window = windowIn(body);

    const WebFrontEnd::Call scope(frontEnd_, view);
    const HolderScope holding(holder_, {view ? view->id : "", window.value_or(0)});
    std::string out;
    try {
        if (entry->isCall)
            engine().runPageCall(window, [&] { perform(entry->operation, body, out); });
        else
            perform(entry->operation, body, out);
    } catch (const Error& error) {
        out.clear();
        appendError(out, error);
    }
    return out;
}

bool Desk::perform(Operation operation, const json& body, std::string& out)
{
    const std::size_t begun = out.size();
    try {
        (this->*operation)(body, out);
        return true;
    } catch (const Error& error) {
        out.resize(begun);
        appendError(out, error);
    } catch (const BadRequest&) {
        throw;
    } catch (const std::exception& fault) {
        out.resize(begun);
        appendError(out, Error(ErrorNumber::internal,
                               std::string("the host failed unexpectedly: ") + fault.what()));
    }
    return false;
}

// --- Requests

void Desk::call(const json& body, std::string& out)
{
    const json& steps = member(body, "chain");
    Chain chain(steps, held_);
    const Value result = chain.run(app_);
    out += R"({"value":)";
    appendValue(out, result, held_, holder_);
    out += R"(,"out":[)";
    for (std::size_t i = 0; i < chain.arguments().size(); ++i) {
        if (i > 0) out += ',';
        // An object that the page passed is one it holds already.
        if (chain.isUnchangedObject(i))
            out += steps.back()["args"][i].dump();
        else
            appendValue(out, chain.arguments()[i], held_, holder_);
    }
    out += "]}";
}

void Desk::list(const json& body, std::string& out)
{
    Chain chain(member(body, "chain"), held_);
    auto columns = columnsIn(body);
    const std::string items = textIn(body, "items");
    const std::size_t start = countIn(body, "start", 0, farthestRow);
    const std::size_t count = countIn(body, "count", 100, mostRows);

    const auto all = itemsOf(chain.run(app_), items == "enumerate" ? "" : items);
    out.append(R"({"total":)").append(std::to_string(all.size())).append(R"(,"rows":[)");
    const std::size_t end = std::min(all.size(), start + count);
    for (std::size_t row = start; row < end; ++row) {
        out += row > start ? ",[" : "[";
        const Ref<Object> item = qmevents::toObject(all[row]);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (i > 0) out += ',';
            appendValue(out, columns[i].read(item), held_, holder_);
        }
        out += ']';
    }
    out += "]}";
}

void Desk::read(const json& body, std::string& out)
{
    Chain chain(member(body, "chain"), held_);
    auto columns = columnsIn(body);
    const Ref<Object> object = chain.runToObject(app_);
    out += R"({"values":{)";
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i > 0) out += ',';
        appendText(out, columns[i].path());
        out += ':';
        appendValue(out, columns[i].read(object), held_, holder_);
    }
    out += "}}";
}

void Desk::write(const json& body, std::string& out)
{
    Chain chain(member(body, "chain"), held_);
    const json& values = member(body, "values");
    if (!values.is_object() || values.size() > mostColumns)
        throw BadRequest("\"values\" must be an object with few members");
    std::vector<std::pair<Column, Value>> assignments;
    for (const auto& [name, value] : values.items())
        assignments.emplace_back(Column(name), fromWire(value, held_));

    const Ref<Object> object = chain.runToObject(app_);
    json failed = json::object();
    for (auto& [column, value] : assignments) {
        try {
            column.write(object, std::move(value));
        } catch (const Error& error) {
            failed[column.path()] = {{"number", error.number()},
                                     {"description", error.description()}};
        }
    }
    out += R"({"failed":)";
    out += failed.dump(-1, ' ', false, json::error_handler_t::replace);
    out += '}';
}

void Desk::batch(const json& body, std::string& out)
{
    const json& calls = member(body, "calls");
    if (!calls.is_array() || calls.size() > mostCalls)
        throw BadRequest("\"calls\" must be an array of few requests");
    const auto goOn = body.find("continue");
    const bool continues = goOn != body.end() && *goOn == true;
    std::vector<std::pair<Operation, const json*>> requests;
    for (const json& request : calls) {
        const bool isOne = request.is_object() && request.size() == 1;
        const Entry* entry = isOne ? find(request.begin().key()) : nullptr;
        if (!entry || !entry->inBatch || !request.begin()->is_object())
            throw BadRequest("each of \"calls\" must be a call, list, read or write");
        requests.emplace_back(entry->operation, &*request.begin());
    }
    out += R"({"results":[)";
    for (std::size_t i = 0; i < requests.size(); ++i) {
        if (i > 0) out += ',';
        const auto& [operation, request] = requests[i];
        bool succeeded = false;
        try {
            succeeded = perform(operation, *request, out);
        } catch (const BadRequest& fault) {
            // What ran before has taken effect, so its results must not be lost.
            appendError(out, Error(ErrorNumber::invalidCall, fault.what()));
        }
        if (!succeeded && !continues) break;
    }
    out += "]}";
}

void Desk::release(const json& body, std::string& out)
{
    const json& refs = member(body, "refs");
    if (!refs.is_array()) throw BadRequest("\"refs\" must be an array of numbers");
    for (const json& ref : refs) {
        if (!ref.is_number_integer()) throw BadRequest("\"refs\" must be an array of numbers");
        held_.release(ref.get<int>());
    }
    out += R"({"ok":true})";
}

void Desk::closeDialog(const json& body, std::string& out)
{
    const json& returnValue = member(body, "returnValue");
    if (!returnValue.is_boolean()) throw BadRequest("\"returnValue\" must be true or false");
    const bool closed = engine().closePage(windowIn(body), returnValue.get<bool>(),
                                           hostAddress(textIn(body, "url")));
    out += closed ? R"({"ok":true,"closed":true})" : R"({"ok":true,"closed":false})";
}

void Desk::goBack(const json& body, std::string& out)
{
    const std::string url = textIn(body, "url");
    engine().goBack(windowIn(body), hostAddress(url.substr(0, url.find('?'))));
    out += R"({"ok":true})";
}

} // namespace refhost
