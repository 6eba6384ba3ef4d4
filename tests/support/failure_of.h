#pragma once

#include <functional>

#include "base/failure.h"

namespace tresmor::tests {

// What an action fails with, None if it doesn't.
inline Errors FailureOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return Errors::None;
}

}  // namespace tresmor::tests
