#pragma once

namespace refhost::script {

/// Whether this thread's stack is nearly used up, however it came to that: a script may run inside
/// a host call of another script.
bool stackIsLow();

} // namespace refhost::script
