// The port to pictures in files, of the formats that the preview knows.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/pixel_image.h"

namespace tresmor {

class PictureLoader {
 public:
  // Gets the picture, or none if the file holds none that could be read within the limits of time and memory.
  using Done = std::function<void(SharedImage picture)>;

  virtual ~PictureLoader() = default;

  // Interface thread. Begins to load a file's picture, scaled down where it has more than `width` or `height` pixels,
  // and returns at once; `done` is called later from the event queue. A load that is still under way is dropped, and
  // its `done` never called. No file, however damaged or hostile, can harm the program.
  virtual void Load(const std::string& file, std::int32_t width, std::int32_t height, Done done) = 0;

  // Interface thread. Drops a load that is under way.
  virtual void Drop() = 0;

  // Interface thread. Whether so many dropped loads hang on their files, as on a disk that doesn't answer, that only
  // files of the program's own had better be loaded.
  virtual bool IsStuck() const = 0;
};

}  // namespace tresmor
