#include "com/active_script.h"

#include <atomic>

#include "com/platform.h"

#include <activscp.h>

#include "automation/describe.h"
#include "com/apartment.h"
#include "com/bridge.h"
#include "com/errors.h"
#include "com/text.h"

namespace qmevents::com {
namespace {

/// Why the last scriptlet failed; number 0 when it did not.
class ScriptFailure : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "ScriptError";
    const Members& members() const override
    {
        static const Members table =
            describe<ScriptFailure>("Why the last scriptlet failed.")
                .readOnly("Number", &ScriptFailure::Number, "The error's number, or 0.")
                .readOnly("Description", &ScriptFailure::Description, "The error's text.")
                .readOnly("Line", &ScriptFailure::Line, "The line, counted from 1.");
        return table;
    }

    std::int32_t Number = 0;
    std::string Description;
    std::int32_t Line = 0;
};

using NamedObjects = std::unordered_map<std::string, Ref<Object>, text::NameHash, text::NameEqual>;

// What the engine asks and tells its host. Shared with the engine, which may outlive our object for
// a moment.
class ScriptSite final : public IActiveScriptSite {
public:
    explicit ScriptSite(Ref<ScriptFailure> failure) : failure_(std::move(failure)) {}

    NamedObjects objects;

    STDMETHODIMP QueryInterface(REFIID id, void** result) override
    {
        if (!result) return E_POINTER;
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IActiveScriptSite);
        *result = known ? static_cast<IActiveScriptSite*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
        ++references_;
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; } // the user's
    STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** item, ITypeInfo** info) override
    {
        if (info) *info = nullptr;
        if (item) *item = nullptr;
        if (!(mask & SCRIPTINFO_IUNKNOWN) || !item || !name) return TYPE_E_ELEMENTNOTFOUND;
        return guarded(nullptr, nullptr, [&]() -> HRESULT {
            const auto found = objects.find(utf8(std::wstring_view(name)));
            if (found == objects.end()) return TYPE_E_ELEMENTNOTFOUND;
            *item = exported(found->second).detach();
            return S_OK;
        });
    }
    STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
    STDMETHODIMP OnScriptError(IActiveScriptError* error) override
    {
        if (!error) return E_POINTER;
        return guarded(nullptr, nullptr, [&] {
            ReceivedException info;
            error->GetExceptionInfo(&info);
            DWORD context = 0;
            ULONG line = 0;
            LONG column = 0;
            error->GetSourcePosition(&context, &line, &column);
            const Error told = errorOf(DISP_E_EXCEPTION, info, "Script", "line", {});
            failure_->Number = told.number();
            failure_->Description = told.description();
            failure_->Line = static_cast<std::int32_t>(line) + 1;
            return S_OK;
        });
    }
    STDMETHODIMP OnEnterScript() override { return S_OK; }
    STDMETHODIMP OnLeaveScript() override { return S_OK; }

private:
    Ref<ScriptFailure> failure_;
    std::atomic<ULONG> references_ = 0;
};

class ActiveScript : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "ScriptEngine";
    const Members& members() const override
    {
        static const Members table =
            describe<ActiveScript>("A script engine of the system.")
                .property("Language", &ActiveScript::language, &ActiveScript::setLanguage,
                          "The engine's name; assigning it starts the engine.")
                .method("AddObject", &ActiveScript::addObject, {arg("Name"), arg("Object")},
                        "Makes an object known to the scripts by a name.")
                .method("AddCode", &ActiveScript::addCode, {arg("Code")},
                        "Runs a script; procedures in it stay for later ones.")
                .method("Reset", &ActiveScript::reset, "Forgets all objects and scripts.")
                .readOnly("Error", &ActiveScript::failure, "Why the last script failed.");
        return table;
    }
    ~ActiveScript() override { close(); }

    std::string language() const { return language_; }
    void setLanguage(const std::string& language)
    {
        close();
        language_ = language;
        start();
    }
    void addObject(const std::string& name, const Ref<Object>& object)
    {
        site().objects[name] = object;
        check(engine_->AddNamedItem(wide(name).c_str(), SCRIPTITEM_ISVISIBLE), "AddObject");
    }
    void addCode(const std::string& code)
    {
        site();
        failure_->Number = 0;
        failure_->Description.clear();
        failure_->Line = 0;
        ReceivedException info;
        const HRESULT result =
            parser_->ParseScriptText(wide(code).c_str(), nullptr, nullptr, nullptr, 0, 0,
                                     SCRIPTTEXT_ISVISIBLE, nullptr, &info);
        if (failure_->Number != 0) {
            throw Error(failure_->Number, language_, failure_->Description);
        }
        if (FAILED(result)) throw errorOf(result, info, language_, "AddCode", {});
    }
    void reset()
    {
        close();
        start();
    }
    Ref<ScriptFailure> failure() const { return failure_; }

private:
    void start()
    {
        CLSID classId{};
        if (FAILED(CLSIDFromProgID(wide(language_).c_str(), &classId)) ||
            FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                                    engine_.outAny()))) {
            throw Error(429, "QMEvents", "The script language \"" + language_ + "\" is not there");
        }
        parser_ = engine_.as<IActiveScriptParse>(__uuidof(IActiveScriptParse));
        check(parser_ ? S_OK : E_NOINTERFACE, "IActiveScriptParse");
        site_ = ComPtr<ScriptSite>(std::make_unique<ScriptSite>(failure_).release());
        check(engine_->SetScriptSite(site_.get()), "SetScriptSite");
        check(parser_->InitNew(), "InitNew");
        check(engine_->SetScriptState(SCRIPTSTATE_CONNECTED), "SetScriptState");
    }
    void close()
    {
        parser_ = {};
        if (engine_) engine_->Close();
        engine_ = {};
        site_ = {};
    }
    ScriptSite& site()
    {
        if (!site_) throw Error(ErrorNumber::invalidCall, "The script engine has no language yet");
        return *site_.get();
    }
    void check(HRESULT result, const char* what) const
    {
        if (SUCCEEDED(result)) return;
        ReceivedException none;
        throw errorOf(result, none, language_, what, {});
    }

    std::string language_;
    ComPtr<IActiveScript> engine_;
    ComPtr<IActiveScriptParse> parser_;
    Ref<ScriptFailure> failure_ = makeRef<ScriptFailure>();
    ComPtr<ScriptSite> site_;
};

} // namespace

Ref<Object> newActiveScript() { return makeRef<ActiveScript>(); }

} // namespace qmevents::com
