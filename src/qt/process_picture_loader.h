// Pictures by a process of their own, which may crash, hang or lie without harm.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/picture_loader.h"

namespace tresmor {

// As PictureLoader. Needs Qt's application object and event loop, on the interface thread.
class ProcessPictureLoader final : public PictureLoader {
 public:
  // `helper` is the path of tresmor-picture; one that takes longer than `limit` is ended. A helper that can't be
  // started makes every picture one that can't be read.
  explicit ProcessPictureLoader(std::string helper, std::chrono::milliseconds limit = std::chrono::seconds(15));
  ~ProcessPictureLoader() override;

  // Sides below 1 count as 1.
  void Load(const std::string& file, std::int32_t width, std::int32_t height, Done done) override;
  void Drop() override;

 private:
  struct Run;

  void Begin();
  void TakeOutput();
  void End(SharedImage picture);

  const std::string helper_;
  const std::chrono::milliseconds limit_;
  std::unique_ptr<Run> run_;  // the load that is under way
};

}  // namespace tresmor
