#pragma once

#include "automation/object.h"

namespace qmevents {

/// Makes a script engine: an object with Language, AddObject(name, object), AddCode(text), Reset()
/// and Error, whose Number, Description and Line tell why the last AddCode failed.
using ScriptEngineFactory = Ref<Object> (*)();

/// Where the engines for scriptlets come from, in the whole process; null for the host's own
/// ("ScriptControl"), which is the rule where nobody says otherwise.
void setScriptEngineFactory(ScriptEngineFactory factory);

Ref<Object> newScriptEngine();

} // namespace qmevents
