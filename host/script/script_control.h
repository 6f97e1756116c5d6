#pragma once

#include "automation/object.h"

namespace refhost {

/// A script engine as an object that is called by name, with the members of the usual script
/// control: Language, AddObject, AddCode, ExecuteStatement, Eval, Run, Reset, Timeout and Error.
/// A failing AddCode raises an Error and leaves Error filled in.
qmevents::Ref<qmevents::Object> makeScriptControl();

} // namespace refhost
