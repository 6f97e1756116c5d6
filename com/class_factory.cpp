#include "com/class_factory.h"

#include <atomic>
#include <memory>

#include "com/active_script.h"
#include "com/apartment.h"
#include "com/bridge.h"
#include "com/class_ids.h"
#include "com/errors.h"
#include "com/guid.h"
#include "core/root_objects.h"
#include "core/script_engine.h"

namespace qmevents::com {
namespace {

class ClassFactory final : public IClassFactory {
public:
    explicit ClassFactory(std::string_view progId) : progId_(progId) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override
    {
        if (!result) return E_POINTER;
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory);
        *result = known ? static_cast<IClassFactory*>(this) : nullptr;
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

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** result) override
    {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        return guarded(nullptr, nullptr, [&] {
            return exported(createRootObject(progId_))->QueryInterface(id, result);
        });
    }
    // The count of locks is that of ModuleUse's, without an object that stands for one.
    STDMETHODIMP LockServer(BOOL lock) override
    {
        ModuleUse::count += lock ? 1 : -1;
        return S_OK;
    }

private:
    std::string_view progId_;
    std::atomic<ULONG> references_ = 0;
    ModuleUse use_;
};

} // namespace

HRESULT classFactory(REFCLSID classId, REFIID id, void** result)
{
    if (!result) return E_POINTER;
    *result = nullptr;
    return guarded(nullptr, nullptr, [&]() -> HRESULT {
        setScriptEngineFactory(newActiveScript);
        for (const auto& entry : creatableClasses) {
            if (!IsEqualCLSID(classId, guidOf(entry.classId))) continue;
            auto factory = std::make_unique<ClassFactory>(entry.progId);
            return ComPtr<ClassFactory>(factory.release())->QueryInterface(id, result);
        }
        return CLASS_E_CLASSNOTAVAILABLE;
    });
}

} // namespace qmevents::com
