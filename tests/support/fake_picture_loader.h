// Pictures that come when the test says so.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/picture_loader.h"

namespace tresmor {

class FakePictureLoader final : public PictureLoader {
 public:
  struct Request {
    std::string file;
    std::int32_t width = 0;
    std::int32_t height = 0;
  };

  void Load(const std::string& file, std::int32_t width, std::int32_t height, Done done) override {
    asked.push_back({file, width, height});
    done_ = std::move(done);
  }
  void Drop() override { done_ = nullptr; }
  bool IsStuck() const override { return isStuck; }

  bool IsLoading() const { return done_ != nullptr; }
  // The load under way has ended.
  void Finish(SharedImage picture) { std::exchange(done_, nullptr)(std::move(picture)); }
  void Fail() { Finish(nullptr); }

  static SharedImage Dot() { return std::make_shared<const PixelImage>(PixelImage{1, 1, {0xFF000000}}); }

  std::vector<Request> asked;
  bool isStuck = false;

 private:
  Done done_;
};

}  // namespace tresmor
