// Programs that go on by themselves.
#pragma once

#include <string>
#include <vector>

namespace tresmor {

// A program, looked up in PATH unless it is a path, and its arguments.
using Command = std::vector<std::string>;

// Starts the first of `commands` that can be started, without a shell, in `folder`, with nothing to read and nowhere to
// write. Doesn't wait for it and leaves nothing to be cleared away when it ends. Says nothing of a failure. Any thread.
void RunDetached(const std::vector<Command>& commands, const std::string& folder);

}  // namespace tresmor
