// Which system calls the picture helper may make.
#pragma once

namespace tresmor {

// From now on this process can do little but take memory, read files, write to what is open already and run threads:
// it reaches no network, starts no program, and changes no file and no other process. Any other call fails as if the
// system didn't know it. LowerLimits comes first. Does nothing on processors and systems that don't support it.
void AllowFewCalls();

}  // namespace tresmor
