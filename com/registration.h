#pragma once

#include "com/platform.h"

// What the registry says about the component. Everything stands below one key, so that it can be
// written for the machine or for one user, and leaves nothing behind when it is removed. Both may
// be repeated.
namespace qmevents::com {

enum class Scope { machine, user };

/// Enters the classes and the type library of the component that lies at `path`. When a part cannot
/// be written, what was is removed again.
HRESULT registerComponent(Scope scope, const wchar_t* path);

/// Takes out what registerComponent enters; names shared with a component of the other word size
/// stay for as long as that is registered. S_OK when there was nothing.
HRESULT unregisterComponent(Scope scope);

} // namespace qmevents::com
