// Opening files while others have all descriptors in use.
#pragma once

#include <chrono>
#include <thread>

#include "base/failure.h"
#include "base/stop_token.h"

namespace tresmor {

// What `open` gives, which is null with the reason in `failure` if it can't. A lack of descriptors is waited out, after
// `giveBack` has closed what the caller can do without: threads that keep theirs while they wait would wait for each
// other. So null with TooManyFiles means that `stop` was stopped.
template <class Open, class GiveBack>
auto OpenOnceThereAreDescriptors(Open&& open, const Errors& failure, const StopToken& stop, GiveBack&& giveBack) {
  auto opened = open();
  while (!opened && failure == Errors::TooManyFiles && !stop.Stopped()) {
    giveBack();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    opened = open();
  }
  return opened;
}

}  // namespace tresmor
