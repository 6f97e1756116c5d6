#pragma once

#include <string_view>

#include "automation/object.h"
#include "com/com_ptr.h"

// The two directions of an object across the boundary. Identity is kept: an object of one side
// that comes back from the other is the same object, and shows the same IUnknown for as long as
// someone holds it.
namespace qmevents::com {

/// `object` as the host sees it: a host's own object as itself, one of ours behind its one wrapper.
/// Nothing gives null.
ComPtr<IDispatch> exported(const Ref<Object>& object);
/// An enumerator as the host sees it. `source` is the collection that it walks, if it is known:
/// without one the walk can neither be started over nor copied.
ComPtr<IUnknown> exportedWalk(Ref<Enumerator> walk, Ref<Object> source);

/// `dispatch` as the add-in sees it: one of ours as itself, a host's behind its one proxy, which
/// calls itself `label` when the object has no type name. Null gives Nothing.
Ref<Object> imported(IDispatch* dispatch, std::string_view label = {});

} // namespace qmevents::com
