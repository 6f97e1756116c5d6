#include "com/apartment.h"

#include <new>

#include "com/regional.h"
#include "core/context.h"
#include "core/root_objects.h"

namespace qmevents::com {

// Ends the apartment with its thread. The thread's add-in is made before and so unmade after.
class ThreadMembership {
public:
    ThreadMembership()
    {
        Context::current();
        Locale::current() = userLocale();
        apartment = std::make_shared<Apartment>(GetCurrentThreadId());
    }
    ThreadMembership(const ThreadMembership&) = delete;
    ThreadMembership& operator=(const ThreadMembership&) = delete;
    ~ThreadMembership() { apartment->end(); }

    std::shared_ptr<Apartment> apartment;
};

const std::shared_ptr<Apartment>& Apartment::current()
{
    static thread_local ThreadMembership membership;
    return membership.apartment;
}

void Apartment::releaseLater(ApartmentObject* object) noexcept
{
    try {
        const std::lock_guard lock(mutex_);
        releases_.push_back(object);
        hasReleases_ = true;
    } catch (const std::bad_alloc&) {
        // The object stays for good, which harms nobody.
    }
}

void Apartment::makeUpReleases() noexcept
{
    if (!hasReleases_) return;
    std::vector<ApartmentObject*> late;
    {
        const std::lock_guard lock(mutex_);
        late.swap(releases_);
        hasReleases_ = false;
    }
    for (ApartmentObject* object : late) object->release();
}

void Apartment::beginCall() noexcept
{
    ++calls_;
    makeUpReleases();
}

void Apartment::endCall() noexcept
{
    --calls_;
    releaseAddInIfUnused();
}

void Apartment::rootVanished() noexcept
{
    --roots_;
    releaseAddInIfUnused();
}

void Apartment::releaseAddInIfUnused() noexcept
{
    if (calls_ == 0 && roots_ == 0) releaseAddIn();
}

ULONG ApartmentObject::release() noexcept
{
    if (!apartment_->isCurrent()) {
        const ULONG left = references_;
        apartment_->releaseLater(this);
        return left > 0 ? left - 1 : 0;
    }
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

} // namespace qmevents::com
