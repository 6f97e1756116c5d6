#include <memory>
#include <vector>

#include "automation/error.h"
#include "com/apartment.h"
#include "com/bridge.h"
#include "com/errors.h"
#include "com/variant.h"

namespace qmevents::com {
namespace {

// One of our walks as the host sees it. Our walks only go forward: starting over and copying take a
// new walk from the collection, a copy then going as far as the original has.
class ExportedWalk final : public IEnumVARIANT, public ApartmentObject {
public:
    ExportedWalk(Ref<Enumerator> walk, Ref<Object> source)
        : walk_(std::move(walk)), source_(std::move(source))
    {
    }

    STDMETHODIMP QueryInterface(REFIID id, void** result) override
    {
        if (!result) return E_POINTER;
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IEnumVARIANT);
        *result = known ? static_cast<IEnumVARIANT*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
        addReference();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return addReference(); }
    STDMETHODIMP_(ULONG) Release() override { return release(); }

    STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* given) override
    {
        if (given) *given = 0;
        if (!items || (count != 1 && !given)) return E_INVALIDARG;
        return inCall([&] {
            std::vector<Variant> found;
            Value item;
            while (found.size() < count && take(item)) found.push_back(toVariant(item));
            for (std::size_t i = 0; i < found.size(); ++i) items[i] = found[i].detach();
            if (given) *given = static_cast<ULONG>(found.size());
            return found.size() == count ? S_OK : S_FALSE;
        });
    }
    STDMETHODIMP Skip(ULONG count) override
    {
        return inCall([&] {
            Value item;
            while (count > 0 && take(item)) --count;
            return count == 0 ? S_OK : S_FALSE;
        });
    }
    STDMETHODIMP Reset() override
    {
        return inCall([&]() -> HRESULT {
            if (!source_) return E_NOTIMPL;
            walk_ = source_->enumerate();
            taken_ = 0;
            return S_OK;
        });
    }
    STDMETHODIMP Clone(IEnumVARIANT** copy) override
    {
        if (!copy) return E_POINTER;
        *copy = nullptr;
        return inCall([&]() -> HRESULT {
            if (!source_) return E_NOTIMPL;
            auto twin = std::make_unique<ExportedWalk>(source_->enumerate(), source_);
            Value item;
            while (twin->taken_ < taken_ && twin->take(item)) {}
            *copy = ComPtr<IEnumVARIANT>(twin.release()).detach();
            return S_OK;
        });
    }

private:
    template <typename Operation>
    HRESULT inCall(Operation operation)
    {
        if (!apartment().isCurrent()) return refusedOnThisThread();
        const IncomingCall call(*this);
        return guarded(nullptr, nullptr, operation);
    }
    bool take(Value& item)
    {
        if (!walk_->next(item)) return false;
        ++taken_;
        return true;
    }

    Ref<Enumerator> walk_;
    Ref<Object> source_;
    std::size_t taken_ = 0;
};

} // namespace

ComPtr<IUnknown> exportedWalk(Ref<Enumerator> walk, Ref<Object> source)
{
    auto wrapper = std::make_unique<ExportedWalk>(std::move(walk), std::move(source));
    return ComPtr<IUnknown>(static_cast<IEnumVARIANT*>(wrapper.release()));
}

} // namespace qmevents::com
