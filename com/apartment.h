#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "automation/object.h"
#include "com/com_ptr.h"

namespace qmevents::com {

class ApartmentObject;
class ExportedObject;
class ImportedObject;

/// What keeps the component loaded: objects that a host holds, class factories, server locks.
class ModuleUse {
public:
    ModuleUse() noexcept { ++count; }
    ModuleUse(const ModuleUse&) = delete;
    ModuleUse& operator=(const ModuleUse&) = delete;
    ~ModuleUse() { --count; }

    static inline std::atomic<long> count = 0;
};

/// What one thread of the host shares with the add-in: the objects that crossed the boundary there.
/// Objects stay on the thread that made them. Only `isCurrent` and `releaseLater` may be called
/// from others.
///
/// The life of the App reference. The add-in keeps App, and App, as the host builds it, keeps the
/// add-in's root objects and whatever else the add-in gave it (a dialog's handler, session values).
/// Counting all of these as the host's interest would be a circle that nobody opens. So the rule
/// is: the App reference lives as long as the host holds one of the objects that take it, those
/// with OnInitialize. When the last of these goes and no call is running, the add-in lets go of
/// App, App lets go of the rest, and the component can be unloaded. A host ends its add-in by
/// releasing the root objects, as it made them.
class Apartment {
public:
    /// This thread's apartment.
    static const std::shared_ptr<Apartment>& current();

    explicit Apartment(DWORD thread) : thread_(thread) {}
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

    bool isCurrent() const noexcept { return !ended_ && thread_ == GetCurrentThreadId(); }
    /// Takes a release that came on a wrong thread. The apartment makes up for it at its next call:
    /// counts of our objects are no matter for two threads.
    void releaseLater(ApartmentObject* object) noexcept;

    void beginCall() noexcept;
    void endCall() noexcept;
    void rootAppeared() noexcept { ++roots_; }
    void rootVanished() noexcept;

    /// Our objects that the host holds, by object and by the pointer that the host knows.
    std::unordered_map<const Object*, ExportedObject*> exportedObjects;
    std::unordered_map<const IUnknown*, ExportedObject*> exportedPointers;
    /// The host's objects that the add-in holds, by their identity.
    std::unordered_map<const IUnknown*, ImportedObject*> importedObjects;

private:
    friend class ThreadMembership;
    // The thread ends with objects still held. COM is gone by then and the loader is at work, so
    // the host's objects cannot be released any more: they are left alone.
    void end() noexcept { ended_ = true; }
    void makeUpReleases() noexcept;
    void releaseAddInIfUnused() noexcept;

    const DWORD thread_;
    std::atomic<bool> ended_ = false;
    long calls_ = 0;
    long roots_ = 0;
    std::atomic<bool> hasReleases_ = false;
    std::mutex mutex_; // guards releases_
    std::vector<ApartmentObject*> releases_;
};

/// Base of the COM objects that live in one apartment: counts references, keeps the component
/// loaded, and makes a release on a wrong thread harmless.
class ApartmentObject {
public:
    ApartmentObject() : apartment_(Apartment::current()) {}
    ApartmentObject(const ApartmentObject&) = delete;
    ApartmentObject& operator=(const ApartmentObject&) = delete;
    virtual ~ApartmentObject() = default;

    Apartment& apartment() const noexcept { return *apartment_; }
    ULONG addReference() noexcept { return ++references_; }
    ULONG release() noexcept;

private:
    std::shared_ptr<Apartment> apartment_;
    std::atomic<ULONG> references_ = 0;
    ModuleUse use_;
};

/// The scope of a call into the apartment: keeps the object that was called until the call is over,
/// and App until the outermost call is.
class IncomingCall {
public:
    explicit IncomingCall(ApartmentObject& called) noexcept : called_(called)
    {
        called_.addReference();
        called_.apartment().beginCall();
    }
    IncomingCall(const IncomingCall&) = delete;
    IncomingCall& operator=(const IncomingCall&) = delete;
    ~IncomingCall()
    {
        called_.apartment().endCall();
        called_.release();
    }

private:
    ApartmentObject& called_;
};

} // namespace qmevents::com
