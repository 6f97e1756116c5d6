#include "core/script_engine.h"

#include <atomic>

#include "core/host.h"

namespace qmevents {
namespace {

std::atomic<ScriptEngineFactory> engineFactory = nullptr;

} // namespace

void setScriptEngineFactory(ScriptEngineFactory factory) { engineFactory = factory; }

Ref<Object> newScriptEngine()
{
    const ScriptEngineFactory factory = engineFactory;
    return factory ? factory() : host().createObject("ScriptControl");
}

} // namespace qmevents
