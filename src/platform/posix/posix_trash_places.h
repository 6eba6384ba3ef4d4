// Where the trash is on this machine.
#pragma once

#include "platform/trash_places.h"

namespace tresmor {

class PosixTrashPlaces final : public TrashPlaces {
 public:
  // `homeTrash` is the user's own, as HomeTrash tells it; may be empty.
  explicit PosixTrashPlaces(std::string homeTrash);

  // Of one place at the most. `topFolder` has no links on it and, unless it is "/", no separator at its end.
  std::vector<TrashPlace> Places(const std::string& path, TrashFailure& why) override;

 private:
  const std::string homeTrash_;
};

}  // namespace tresmor
