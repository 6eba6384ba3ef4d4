#include "desk/action_dispatch.h"

#include <optional>

#include "desk/report_failure.h"

namespace tresmor {
namespace {

std::optional<Failure> FailureOf(const ActionDispatch::Handler& handler) {
  try {
    handler();
    return std::nullopt;
  } catch (...) {
    return CaughtFailure();
  }
}

}  // namespace

void ActionDispatch::Run(const Handler& action) {
  if (action_.IsRunning()) return;
  action_.Run([&] { Guard(action, hooks_.restore); });
  if (hooks_.atRest) hooks_.atRest();
}

void ActionDispatch::RunPassive(const Handler& handler) { Guard(handler, nullptr); }

void ActionDispatch::Guard(const Handler& handler, const Handler& restore) {
  const std::optional<Failure> failure = FailureOf(handler);
  if (!failure) return;
  if (restore) FailureOf(restore);
  ReportRunTimeError(dialogs_, *failure);
}

}  // namespace tresmor
