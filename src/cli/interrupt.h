// Ctrl-C and the request to end, as a flag.
#pragma once

namespace tresmor {

// The signals are caught from now on, unless the program was started with them ignored: the first sets the flag, a
// second ends the program at once.
void CatchInterrupts();
bool Interrupted();
// From now on the first signal ends the program at once.
void ReleaseInterrupts();

}  // namespace tresmor
