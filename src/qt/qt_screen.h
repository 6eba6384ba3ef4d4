#pragma once

#include "platform/screen.h"
#include "qt/twips.h"

namespace tresmor {

// The screen that the desktop calls its first; how fine it is, is told of the one on which the program's window stands.
class QtScreen : public Screen {
 public:
  explicit QtScreen(const Twips& twips) : twips_(twips) {}
  WorkArea GetWorkArea() const override;

 private:
  const Twips twips_;
};

}  // namespace tresmor
