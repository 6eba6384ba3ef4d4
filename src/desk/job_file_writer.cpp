#include "desk/job_file_writer.h"

#include "desk/run_job.h"

namespace tresmor {

Errors JobFileWriter::Replace(const std::string& path, std::string_view bytes) const {
  Errors failure = Errors::None;
  RunJob(events_, [&] { failure = writer_.Replace(path, bytes); });
  return failure;
}

}  // namespace tresmor
