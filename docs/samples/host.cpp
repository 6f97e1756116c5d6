// A host in one file: makes the add-in's objects, hands them its App object, and raises a host
// event, as a host does when the user opens the menu of an entry in a donor's history.
//
//   x86_64-w64-mingw32-g++ -std=c++20 -static host.cpp -o host.exe -lole32 -loleaut32 -luuid
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include <oleauto.h>

namespace {

/// An object that the add-in calls by name: each member is a function of its arguments.
class HostObject final : public IDispatch {
public:
    using Arguments = std::vector<VARIANT*>;
    using Member = std::function<HRESULT(const Arguments& arguments, VARIANT* result)>;

    HostObject& on(const wchar_t* name, Member member)
    {
        members_.emplace_back(name, std::move(member));
        return *this;
    }
    /// A member that gives another object. The object given keeps itself alive in `this`.
    HostObject& gives(const wchar_t* name, IDispatch* object)
    {
        object->AddRef();
        held_.push_back(object);
        return on(name, [object](const Arguments&, VARIANT* result) {
            object->AddRef();
            result->vt = VT_DISPATCH;
            result->pdispVal = object;
            return S_OK;
        });
    }
    HostObject& gives(const wchar_t* name, std::wstring text)
    {
        return on(name, [text = std::move(text)](const Arguments&, VARIANT* result) {
            result->vt = VT_BSTR;
            result->bstrVal = SysAllocString(text.c_str());
            return result->bstrVal ? S_OK : E_OUTOFMEMORY;
        });
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        const bool known = id == IID_IUnknown || id == IID_IDispatch;
        *object = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override
    {
        for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
        for (std::size_t i = 0; i < members_.size(); ++i) {
            if (_wcsicmp(members_[i].first.c_str(), names[0]) == 0) {
                ids[0] = static_cast<DISPID>(i) + 1;
            }
        }
        return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given,
                                     VARIANT* result, EXCEPINFO*, UINT*) override
    {
        if (id < 1 || static_cast<std::size_t>(id) > members_.size()) return DISP_E_MEMBERNOTFOUND;
        // They come last one first; those that may carry a result back are references to variants.
        Arguments arguments;
        for (UINT i = given->cArgs; i > 0; --i) {
            VARIANT* argument = &given->rgvarg[i - 1];
            if (argument->vt == (VT_BYREF | VT_VARIANT)) argument = argument->pvarVal;
            arguments.push_back(argument);
        }
        VARIANT unwanted;
        VariantInit(&unwanted);
        if (result) VariantInit(result);
        const auto& member = members_[static_cast<std::size_t>(id) - 1].second;
        const HRESULT outcome = member(arguments, result ? result : &unwanted);
        VariantClear(&unwanted);
        return outcome;
    }

private:
    ~HostObject()
    {
        for (auto* object : held_) object->Release();
    }

    ULONG references_ = 0;
    std::vector<std::pair<std::wstring, Member>> members_;
    std::vector<IDispatch*> held_;
};

/// Calls `object.name(argument)`; prints what the add-in says when it fails.
HRESULT callWith(IDispatch* object, const wchar_t* name, IDispatch* argument)
{
    DISPID id = DISPID_UNKNOWN;
    auto* text = const_cast<LPOLESTR>(name);
    HRESULT outcome = object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(outcome)) return outcome;
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_DISPATCH;
    value.pdispVal = argument; // lent for the time of the call
    DISPPARAMS parameters = {&value, nullptr, 1, 0};
    EXCEPINFO failure = {};
    outcome = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                             nullptr, &failure, nullptr);
    if (outcome == DISP_E_EXCEPTION) {
        std::printf("%ls failed: %ls (from %ls)\n", name,
                    failure.bstrDescription ? failure.bstrDescription : L"",
                    failure.bstrSource ? failure.bstrSource : L"");
        SysFreeString(failure.bstrDescription);
        SysFreeString(failure.bstrSource);
        SysFreeString(failure.bstrHelpFile);
    }
    return outcome;
}

IDispatch* create(const wchar_t* progId)
{
    CLSID id;
    void* object = nullptr;
    HRESULT outcome = CLSIDFromProgID(progId, &id);
    if (SUCCEEDED(outcome)) {
        outcome = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &object);
    }
    if (FAILED(outcome)) {
        std::printf("%ls cannot be made: 0x%08lX\n", progId, static_cast<unsigned long>(outcome));
        std::exit(1);
    }
    return static_cast<IDispatch*>(object);
}

int run()
{
    // The add-in's objects, and App.Modules.Events.Objects(name), which gives them.
    std::map<std::wstring, IDispatch*> made;
    for (const auto* name : {L"Events", L"Workflow", L"Handler", L"Security"}) {
        made[name] = create((L"QMEvents." + std::wstring(name)).c_str());
    }
    auto* eventsModule = new HostObject;
    eventsModule->on(L"Objects", [&made](const HostObject::Arguments& arguments, VARIANT* result) {
        if (arguments.size() != 1 || arguments[0]->vt != VT_BSTR) return DISP_E_TYPEMISMATCH;
        const auto found = made.find(arguments[0]->bstrVal);
        if (found == made.end()) return DISP_E_BADINDEX;
        found->second->AddRef();
        result->vt = VT_DISPATCH;
        result->pdispVal = found->second;
        return S_OK;
    });
    auto* modules = new HostObject;
    modules->gives(L"Events", eventsModule);
    auto* app = new HostObject;
    app->AddRef();
    app->gives(L"Modules", modules);

    // "Events" first: the others look it up through App.
    for (const auto* name : {L"Events", L"Workflow", L"Handler", L"Security"}) {
        if (FAILED(callWith(made[name], L"OnInitialize", app))) return 1;
    }

    // The event "interaction-menu" about an entry that belongs to an event.
    auto* menu = new HostObject;
    menu->on(L"AppendItem", [](const HostObject::Arguments& arguments, VARIANT*) {
        if (arguments.size() == 3 && arguments[1]->vt == VT_BSTR) {
            std::printf("Menu entry: %ls\n", arguments[1]->bstrVal);
        }
        return S_OK;
    });
    auto* entry = new HostObject;
    entry->gives(L"group", L"Event");
    auto* data = new HostObject;
    data->gives(L"Interaction", entry).gives(L"ContextMenu", menu);
    auto* event = new HostObject;
    event->AddRef();
    event->gives(L"Key", L"interaction-menu").gives(L"Data", data);
    const HRESULT outcome = callWith(made[L"Handler"], L"EventHandler", event);

    event->Release();
    for (const auto& [name, object] : made) object->Release();
    app->Release();
    return SUCCEEDED(outcome) ? 0 : 1;
}

} // namespace

int main()
{
    // The add-in's objects live in the apartment of the thread that makes them.
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    const int outcome = run();
    CoUninitialize();
    return outcome;
}
