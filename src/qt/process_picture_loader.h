// Pictures by a process of their own, which may crash, hang or lie without harm.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/picture_loader.h"

class QProcess;

namespace tresmor {

inline constexpr std::chrono::seconds kLongestPictureLoad{15};
// As many that are still there that long after they were ended make the loader stuck.
inline constexpr std::size_t kMostHangingHelpers = 8;
inline constexpr std::chrono::seconds kLongestHelperEnd{1};

// As PictureLoader. Needs Qt's application object and event loop, on the interface thread. Neither the loader nor the
// application waits at its end for helpers that hang.
class ProcessPictureLoader final : public PictureLoader {
 public:
  // `helper` is the path of tresmor-picture; one that takes longer than `limit` is ended, and one that isn't gone
  // `ending` later hangs. A helper that can't be started makes every picture one that can't be read.
  explicit ProcessPictureLoader(std::string helper, std::chrono::milliseconds limit = kLongestPictureLoad,
                                std::chrono::milliseconds ending = kLongestHelperEnd);
  ~ProcessPictureLoader() override;

  // Sides below 1 count as 1.
  void Load(const std::string& file, std::int32_t width, std::int32_t height, Done done) override;
  void Drop() override;
  bool IsStuck() const override;

 private:
  struct Run;
  struct Dropped {
    QPointer<QProcess> process;
    QElapsedTimer since;
  };

  void Begin();
  void TakeOutput();
  void End(SharedImage picture);

  const std::string helper_;
  const std::chrono::milliseconds limit_;
  const std::chrono::milliseconds ending_;
  std::unique_ptr<Run> run_;      // the load that is under way
  std::vector<Dropped> dropped_;  // the processes of loads before
};

}  // namespace tresmor
