#include "desk/job_file_writer.h"

#include "desk/run_job.h"

namespace tresmor {

Errors JobFileWriter::Replace(const std::string& path, std::string_view bytes) const {
  Errors failure = Errors::None;
  StopToken stop;  // nobody asks: half a file is none
  RunJob<NoNotice>(
      events_, stop, [&](JobLine<NoNotice>&) { failure = writer_.Replace(path, bytes); }, [](NoNotice&&) {});
  return failure;
}

}  // namespace tresmor
