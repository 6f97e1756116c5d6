#pragma once

#include <utility>

#include "com/platform.h"

namespace qmevents::com {

/// A counted reference to a COM interface, or nothing.
template <typename T>
class ComPtr {
public:
    ComPtr() noexcept = default;
    /// Shares `target` with its present owner.
    explicit ComPtr(T* target) noexcept : target_(target)
    {
        if (target_) target_->AddRef();
    }
    /// Takes over a reference that the caller owns.
    static ComPtr adopt(T* target) noexcept
    {
        ComPtr result;
        result.target_ = target;
        return result;
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.target_) {}
    ComPtr(ComPtr&& other) noexcept : target_(std::exchange(other.target_, nullptr)) {}
    ~ComPtr()
    {
        if (target_) target_->Release();
    }
    ComPtr& operator=(ComPtr other) noexcept
    {
        std::swap(target_, other.target_);
        return *this;
    }

    T* get() const noexcept { return target_; }
    T* operator->() const noexcept { return target_; }
    explicit operator bool() const noexcept { return target_ != nullptr; }
    /// Gives the reference away: the caller must release it.
    T* detach() noexcept { return std::exchange(target_, nullptr); }
    /// Where a function writes a reference that it hands over; what was held is released first.
    T** out() noexcept
    {
        *this = ComPtr();
        return &target_;
    }
    void** outAny() noexcept { return reinterpret_cast<void**>(out()); }

    /// The same object's interface `id`, or nothing when it has none.
    template <typename U>
    ComPtr<U> as(REFIID id) const
    {
        ComPtr<U> result;
        if (!target_ || FAILED(target_->QueryInterface(id, result.outAny()))) return {};
        return result;
    }

private:
    T* target_ = nullptr;
};

} // namespace qmevents::com
