// Other programs.
#pragma once

#include <string>
#include <vector>

namespace tresmor {

// A program, looked up in PATH unless it is a path, and its arguments. With a NUL in one of these nothing is started.
using Command = std::vector<std::string>;

// Starts the first of `commands` that can be started, without a shell, in `folder`, with nothing to read and nowhere to
// write and the limit of open files that this one was started with. Doesn't wait for it and leaves nothing to be
// cleared away when it ends. Says nothing of a failure. Any thread.
void RunDetached(const std::vector<Command>& commands, const std::string& folder);

// Starts one in the same way and waits for its end: true if it ended with status 0. One that takes longer than
// `seconds` is ended. Any thread but the interface thread, which it would hold up.
bool RunToEnd(const std::vector<Command>& commands, const std::string& folder, unsigned seconds);

}  // namespace tresmor
