#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace qmevents {

/// Base of what `Ref` counts. The count is not atomic: an object stays on the thread (apartment)
/// that made it.
class Counted {
public:
    Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    void addReference() const noexcept { ++references_; }
    void release() const noexcept
    {
        if (--references_ == 0) delete this;
    }

protected:
    virtual ~Counted() = default;

private:
    mutable std::uint32_t references_ = 0;
};

/// A counted reference to a `T`, or nothing.
template <typename T>
class Ref {
public:
    using Target = T;

    Ref() noexcept = default;
    Ref(std::nullptr_t) noexcept {}
    explicit Ref(T* target) noexcept : target_(target)
    {
        if (target_) target_->addReference();
    }
    Ref(const Ref& other) noexcept : Ref(other.target_) {}
    Ref(Ref&& other) noexcept : target_(std::exchange(other.target_, nullptr)) {}
    template <typename U>
    requires(std::is_convertible_v<U*, T*> && !std::is_same_v<U, T>) Ref(const Ref<U>& other)
    noexcept : Ref(other.get()) {}
    template <typename U>
    requires(std::is_convertible_v<U*, T*> && !std::is_same_v<U, T>) Ref(Ref<U>&& other)
    noexcept : target_(other.detach()) {}
    ~Ref()
    {
        if (target_) target_->release();
    }
    Ref& operator=(Ref other) noexcept
    {
        std::swap(target_, other.target_);
        return *this;
    }

    T* get() const noexcept { return target_; }
    T* operator->() const noexcept { return target_; }
    T& operator*() const noexcept { return *target_; }
    explicit operator bool() const noexcept { return target_ != nullptr; }
    /// Gives the reference away: the caller must release it.
    T* detach() noexcept { return std::exchange(target_, nullptr); }

    friend bool operator==(const Ref& a, const Ref& b) noexcept { return a.target_ == b.target_; }
    friend bool operator==(const Ref& a, std::nullptr_t) noexcept { return a.target_ == nullptr; }

private:
    T* target_ = nullptr;
};

template <typename T, typename... Arguments>
Ref<T> makeRef(Arguments&&... arguments)
{
    return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

/// `from` as a `T`, or nothing when it is none.
template <typename T, typename U>
Ref<T> refCast(const Ref<U>& from)
{
    return Ref<T>(dynamic_cast<T*>(from.get()));
}

} // namespace qmevents
