#include "fileops/frm_file_progress.h"

#include <algorithm>

#include "base/text.h"

namespace tresmor {
namespace {

// A file takes time whatever its length, as much as so many bytes do.
constexpr double kFileWeight = 65536;

float Percent(const OperationProgress& progress) {
  const auto weigh = [](std::int64_t bytes, std::int64_t files) {
    return static_cast<double>(bytes) + kFileWeight * static_cast<double>(files);
  };
  const double all = weigh(progress.allBytes, progress.allFiles);
  if (all <= 0) return 0;
  return static_cast<float>(std::clamp(100 * weigh(progress.bytes, progress.files) / all, 0.0, 100.0));
}

}  // namespace

void FrmFileProgress::Show(const OperationProgress& progress) {
  lblMsg.Caption =
      std::to_string(progress.files) + " of " + std::to_string(progress.allFiles) + "\r\n" + WithinALine(progress.path);
  pbDone.Value = Percent(progress);
}

}  // namespace tresmor
